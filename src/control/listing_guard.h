// Holds the control busy for one listing and puts everything back on every
// exit path, exceptions included: the busy flag, the window-update lock, the
// mouse pointer, the list view's visibility and its batch of changes (its
// observers hear one reset when the listing ends).
#pragma once

#include "nxfv/control/ui_pointer.h"
#include "nxfv/control/viewer_core.h"

namespace nxfv {

class ListingGuard {
 public:
  // Does nothing when a listing already runs (Acquired() is then false).
  explicit ListingGuard(ViewerCore& core);
  ~ListingGuard();
  ListingGuard(const ListingGuard&) = delete;
  ListingGuard& operator=(const ListingGuard&) = delete;

  bool Acquired() const { return acquired_; }

 private:
  ViewerCore& core_;
  bool acquired_;
};

}  // namespace nxfv
