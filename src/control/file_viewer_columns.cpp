// The control's column set: header options and the list view's columns.
#include "control/file_viewer.h"
#include "control/instance_table.h"
#include "platform/error_state.h"

namespace nxfv {

int16_t FileViewer::SubItemIndexOf(const std::string& Key) const {
  // Column 0 is the row's own text; column k > 0 is sub-item k.
  return static_cast<int16_t>(listView_.ColumnIndex(Key));
}

void FileViewer::CompleteHeaderOptions() { nxfv::CompleteHeaderOptions(*headerOptions_, captions_); }

void FileViewer::BuildColumns(bool WidthsOnly) {
  const std::string locked = nxfv::BuildColumns(listView_, *headerOptions_, viewOptions_, insideArchive_, WidthsOnly);
  InstanceTable::ForThisThread().Row(instanceSlot_).lockedColumns = locked;
}

Variant FileViewer::HeaderOptionsNew() {
  headerOptions_ = std::make_shared<kCollection>(platform_);
  return {};
}

Variant FileViewer::HeaderOptionsAdd(headerdatas& HeaderOption) {
  try {
    AddHeaderOption(*headerOptions_, HeaderOption);
  } catch (const std::exception& e) {
    RecordException(e);  // the caller reads it from the error state
  }
  return {};
}

Variant FileViewer::HeaderOptionsActivate() {
  try {
    CompleteHeaderOptions();
    RefreshView(true);
  } catch (const std::exception& e) {
    RecordException(e);
  }
  return {};
}

Variant FileViewer::HeaderModifying(headerdatas& HeaderOption) {
  headerdatas* found = nullptr;
  if (!FindHeaderOption(*headerOptions_, HeaderOption.ShowHeaderItem, found)) return {};
  if (!HeaderOption.HeaderText.empty()) found->HeaderText = HeaderOption.HeaderText;
  if (HeaderOption.HeaderWidth != 0) found->HeaderWidth = HeaderOption.HeaderWidth;
  found->HeaderSizeable = HeaderOption.HeaderSizeable;
  return {};
}

void FileViewer::setViewOptions(int32_t mask) {
  // At design time the mask is deliberately left alone.
  if (!userMode_) return;
  viewOptions_ = mask;
  PropertyChanged("ViewOptions");
  try {
    BuildColumns(true);
  } catch (const std::exception& e) {
    RecordException(e);
  }
}

}  // namespace nxfv
