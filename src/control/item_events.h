// The control's side of the items' xselitemx event: setting Selected or
// Checked on an item, or asking it to scroll into view, acts on the row
// with the item's key. The control listens to one item at a time: the item
// it last handed to the host.
#pragma once

#include <memory>

#include "nxfv/model/file_list_item.h"

namespace nxfv {

class ListView;

class ItemEvents {
 public:
  explicit ItemEvents(ListView& view);
  ~ItemEvents();
  ItemEvents(const ItemEvents&) = delete;
  ItemEvents& operator=(const ItemEvents&) = delete;

  // Points the one subscription at item; the previous item's events go
  // unhandled from then on.
  void Subscribe(const std::shared_ptr<NxFileListItem>& item);
  // Drops the subscription (the view's items are going).
  void Unsubscribe() { Subscribe(nullptr); }

 private:
  class Listener;
  void Handle(eventbefs mybef, const Variant& itemvalue, const std::shared_ptr<NxFileListItem>& xitem);

  ListView& view_;
  std::shared_ptr<Listener> listener_;
  std::shared_ptr<NxFileListItem> subscribed_;
};

}  // namespace nxfv
