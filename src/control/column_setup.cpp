#include "nxfv/control/column_setup.h"

namespace nxfv {

int16_t SubItemIndexOf(const ViewerCore& core, const std::string& key) {
  return static_cast<int16_t>(core.listView.ColumnIndex(key));
}

void ApplyColumns(ViewerCore& core, bool widthsOnly) {
  core.Slot().lockedColumns =
      BuildColumns(core.listView, *core.headerOptions, core.settings.viewOptions, core.insideArchive, widthsOnly);
}

}  // namespace nxfv
