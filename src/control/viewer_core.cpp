#include "nxfv/control/viewer_core.h"

#include "nxfv/control/file_commands.h"

namespace nxfv {

ViewerCore::ViewerCore(PlatformRef ref)
    : platformRef(std::move(ref)),
      platform(*platformRef),
      items(NxFileCollection::Create(platformRef)),
      headerOptions(std::make_shared<kCollection>(platformRef)),
      fileTypes(platform),
      itemEvents(*this),
      instanceSlot(InstanceTable::ForThisThread().TakeSlot()) {
  settings.startingFolder = platform.DefaultStartFolder();
}

ViewerCore::~ViewerCore() = default;

void ViewerCore::ClearItems() {
  itemEvents.Unsubscribe();
  NxFileCollection::Internal(*items).Clear();
}

}  // namespace nxfv
