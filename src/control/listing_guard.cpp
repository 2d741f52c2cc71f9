#include "nxfv/control/listing_guard.h"

namespace nxfv {

ListingGuard::ListingGuard(ViewerCore& core) : core_(core), acquired_(!core.busy) {
  if (!acquired_) return;
  core_.busy = true;
  core_.platform.Ui().LockWindowUpdate(true);
  core_.listView.BeginBatch();
}

ListingGuard::~ListingGuard() {
  if (!acquired_) return;
  core_.listView.SetVisible(true);
  try {
    core_.listView.EndBatch();  // observers hear the reset
  } catch (...) {
    // An observer's failure must not keep the control busy.
  }
  core_.busy = false;
  core_.platform.Ui().LockWindowUpdate(false);
}

}  // namespace nxfv
