#include "nxfv/model/file_list_item.h"

#include "nxfv/model/file_collection.h"
#include "nxfv/platform/error_state.h"

namespace nxfv {

void NxFileListItem::Raise(eventbefs mybef, Variant& itemvalue, Variant& Parameter, bool& operationok) {
  auto listener = extras_ ? extras_->listener.lock() : nullptr;
  if (!listener) return;
  std::shared_ptr<NxFileListItem> self = weak_from_this().lock();
  try {
    listener->xselitemx(mybef, itemvalue, self, Parameter, operationok);
  } catch (const std::exception& e) {
    // The listener is the control's own handler and reports its failures;
    // whatever still escapes stops here, because an item's lets never fail.
    RecordException(e);
  } catch (...) {
    RecordUnknownException();
  }
}

// The handler sees the new value in itemvalue and may answer with another;
// that answer is what the field keeps.
static void WriteBack(const Variant& itemvalue, bool& field) {
  const ErrorState before = CurrentError();
  try {
    field = itemvalue.AsBool();
  } catch (const std::exception&) {
    // Not a Boolean or a number: the field keeps the value it was set to,
    // and the conversion's failure leaves no trace in the error state.
    CurrentError() = before;
  }
}

void NxFileListItem::setSelected(bool v) {
  selected_ = v;
  Variant itemvalue(v), parameter{std::string()};
  bool ok = false;
  Raise(eventbefs::doselect, itemvalue, parameter, ok);
  WriteBack(itemvalue, selected_);
}

void NxFileListItem::setChecked(bool v) {
  checked_ = v;
  Variant itemvalue(v), parameter{std::string()};
  bool ok = false;
  Raise(eventbefs::docheck, itemvalue, parameter, ok);
  WriteBack(itemvalue, checked_);
}

const std::string& NxFileListItem::EmptyText() {
  static const std::string empty;
  return empty;
}

void NxFileListItem::DetachFromName() {
  if (keyIsName_) {
    if (!fileName_.empty()) MakeExtras().key = fileName_.str();
    keyIsName_ = false;
  }
  if (displayIsName_) {
    if (!fileName_.empty()) MakeExtras().displayname = fileName_.str();
    displayIsName_ = false;
  }
}

void NxFileListItem::setFileName(std::string_view v) { Internal::ShareFileName(*this, SharedText(v)); }

void NxFileListItem::Internal::ShareFileName(NxFileListItem& item, SharedText name) {
  if (name.view() != item.fileName_.view()) item.DetachFromName();
  item.fileName_ = std::move(name);
  if (!item.nameFixed_) item.nameChanged_ = true;
}

void NxFileListItem::setDisplayname(std::string_view v) {
  displayIsName_ = !v.empty() && v == fileName_.view();
  if (displayIsName_ || (v.empty() && !extras_)) {
    if (extras_) extras_->displayname.clear();
  } else {
    MakeExtras().displayname = std::string(v);
  }
}

void NxFileListItem::setUserDataA(std::string v) {
  if (!extras_ && v.empty()) return;
  MakeExtras().userDataA = std::move(v);
}

void NxFileListItem::setUserDataB(std::string v) {
  if (!extras_ && v.empty()) return;
  MakeExtras().userDataB = std::move(v);
}

void NxFileListItem::Internal::SetKey(NxFileListItem& item, std::string_view key) {
  item.keyIsName_ = !key.empty() && key == item.fileName_.view();
  if (item.keyIsName_ || (key.empty() && !item.extras_)) {
    if (item.extras_) item.extras_->key.clear();
  } else {
    item.MakeExtras().key = std::string(key);
  }
}

bool NxFileListItem::ExecuteShellCommand(ItemFileCommands ShellCommand, Variant& Parameter) {
  // Commands are not run on virtual folders or on entries inside archives.
  if (listItemTyp_ == typeoffitem::VirtualFolder || (extras_ && extras_->archivInfo.IsInArchive)) return false;
  Variant itemvalue(static_cast<int32_t>(ShellCommand));
  bool ok = false;
  Raise(eventbefs::doexebef, itemvalue, Parameter, ok);
  return ok;
}

bool NxFileListItem::ExecuteShellCommand(ItemFileCommands ShellCommand) {
  Variant parameter;  // the optional argument left out
  return ExecuteShellCommand(ShellCommand, parameter);
}

Variant NxFileListItem::EnsureVisible() {
  if (listItemTyp_ == typeoffitem::None) return Variant();
  Variant itemvalue{std::string()}, parameter{std::string()};
  bool ok = false;
  Raise(eventbefs::doensurevisible, itemvalue, parameter, ok);
  return Variant();
}

void NxFileListItem::Internal::SetOwner(NxFileListItem& item, const void* identity) {
  if (item.owner_ == nullptr) item.owner_ = identity;
}

void NxFileListItem::Internal::SetOwner(NxFileListItem& item, const std::shared_ptr<NxFileCollection>& collection) {
  if (item.owner_ != nullptr || !collection) return;
  item.owner_ = collection.get();
}

void NxFileListItem::Internal::StoreObject(NxFileListItem& item, ItemVariantField field, ObjectRef object) {
  Variant v(std::move(object));
  switch (field) {
    case ItemVariantField::DateModified: item.dateModified_ = std::move(v); break;
    case ItemVariantField::TimeModified: item.timeModified_ = std::move(v); break;
    case ItemVariantField::DateCreated: item.dateCreated_ = std::move(v); break;
    case ItemVariantField::TimeCreated: item.timeCreated_ = std::move(v); break;
    case ItemVariantField::LastAccessed: item.lastAccessed_ = std::move(v); break;
    case ItemVariantField::DosName: item.dosName_ = std::move(v); break;
  }
}

void NxFileListItem::Internal::AnnounceKeyChange(NxFileListItem& item) {
  auto owner = LiveCollection(item.owner_);
  if (!owner) return;
  NxFileCollection::Internal(*owner).AnnounceKeyChange(item.Key(), &item);
}

}  // namespace nxfv
