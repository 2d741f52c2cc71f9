#include "nxfv/control/item_events.h"

#include "nxfv/control/file_commands.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/selection.h"
#include "nxfv/control/viewer_core.h"
#include "nxfv/control/virtual_list.h"
#include "nxfv/platform/list_view.h"

namespace nxfv {

// Bridges an item's xselitemx to the control without keeping it alive: the
// item holds the listener, the listener is told when the control goes.
class ItemEvents::Listener : public NxFileListItemEvents {
 public:
  explicit Listener(ItemEvents* owner) : owner_(owner) {}
  void xselitemx(eventbefs& mybef, Variant& itemvalue, std::shared_ptr<NxFileListItem>& xitem, Variant& Parameter,
                 bool& operationok) override {
    if (owner_) owner_->Handle(mybef, itemvalue, xitem, Parameter, operationok);
  }
  void Detach() { owner_ = nullptr; }

 private:
  ItemEvents* owner_;
};

ItemEvents::ItemEvents(ViewerCore& core) : core_(core), listener_(std::make_shared<Listener>(this)) {}

ItemEvents::~ItemEvents() {
  listener_->Detach();
  if (subscribed_) subscribed_->ClearListener();
}

void ItemEvents::Subscribe(const std::shared_ptr<NxFileListItem>& item) {
  if (subscribed_ == item) return;
  if (subscribed_) subscribed_->ClearListener();
  subscribed_ = item;
  if (subscribed_) subscribed_->SetListener(listener_);
}

void ItemEvents::Handle(eventbefs mybef, Variant& itemvalue, const std::shared_ptr<NxFileListItem>& xitem,
                        Variant& Parameter, bool& operationok) {
  if (!xitem) return;
  // The item's setter is the host's call: a failure stays in the error state.
  RunRecorded([&] {
    if (mybef == eventbefs::doexebef) {
      if (RefusesShellCommands(*xitem) || !itemvalue.IsNumber()) return;  // a virtual folder is nothing the shell knows
      const int32_t command = itemvalue.AsLong();
      if (command < 0 || command > static_cast<int32_t>(ItemFileCommands::IcEdit)) return;
      operationok = core_.fileCommands->ItemCommand(xitem, static_cast<ItemFileCommands>(command), Parameter);
      return;
    }
    ListRow* row = selection::RowOfItem(core_, *xitem);
    if (!row) return;
    switch (mybef) {
      case eventbefs::doselect: row->SetSelected(itemvalue.AsBool()); break;
      case eventbefs::docheck: row->SetChecked(itemvalue.AsBool()); break;
      case eventbefs::doensurevisible: core_.listView.EnsureVisible(row->Index()); break;
      case eventbefs::doexebef: break;
    }
  });
}

}  // namespace nxfv
