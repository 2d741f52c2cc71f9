// The control's side of the items' xselitemx event: setting Selected or
// Checked on an item, or asking it to scroll into view, acts on the first
// row whose item has the same Key (selection::RowOfItem); IcRename renames
// the item (label_edit.h); the other commands answer False until the file
// operations exist.
//
// The control listens to one item at a time: the item it last handed to
// the host (the selection lookups and ListItem re-point it). An item handed
// out earlier still raises its event, but nobody handles it, so its lets
// change only the item itself.
#pragma once

#include <memory>

#include "nxfv/model/file_list_item.h"

namespace nxfv {

struct ViewerCore;

class ItemEvents {
 public:
  explicit ItemEvents(ViewerCore& core);
  ~ItemEvents();
  ItemEvents(const ItemEvents&) = delete;
  ItemEvents& operator=(const ItemEvents&) = delete;

  // Points the one subscription at item; the previous item's events go
  // unhandled from then on.
  void Subscribe(const std::shared_ptr<NxFileListItem>& item);
  // Drops the subscription (the view's items are going).
  void Unsubscribe() { Subscribe(nullptr); }
  const std::shared_ptr<NxFileListItem>& Subscribed() const { return subscribed_; }

 private:
  class Listener;
  void Handle(eventbefs mybef, Variant& itemvalue, const std::shared_ptr<NxFileListItem>& xitem, Variant& Parameter,
              bool& operationok);

  ViewerCore& core_;
  std::shared_ptr<Listener> listener_;
  std::shared_ptr<NxFileListItem> subscribed_;
};

}  // namespace nxfv
