#include "nxfv/model/file_list_item.h"

#include "nxfv/model/file_collection.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

void NxFileListItem::Raise(eventbefs mybef, Variant& itemvalue, Variant& Parameter, bool& operationok) {
  auto listener = RareOrNull() ? RareOrNull()->listener.lock() : nullptr;
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
static bool WriteBack(const Variant& itemvalue, bool field) {
  const ErrorState before = CurrentError();
  try {
    return itemvalue.AsBool();
  } catch (const std::exception&) {
    // Not a Boolean or a number: the field keeps the value it was set to,
    // and the conversion's failure leaves no trace in the error state.
    CurrentError() = before;
    return field;
  }
}

void NxFileListItem::setSelected(bool v) {
  selected_ = v;
  Variant itemvalue(v), parameter{std::string()};
  bool ok = false;
  Raise(eventbefs::doselect, itemvalue, parameter, ok);
  selected_ = WriteBack(itemvalue, selected_);
}

void NxFileListItem::setChecked(bool v) {
  checked_ = v;
  Variant itemvalue(v), parameter{std::string()};
  bool ok = false;
  Raise(eventbefs::docheck, itemvalue, parameter, ok);
  checked_ = WriteBack(itemvalue, checked_);
}

NxFileListItem::~NxFileListItem() { ReleaseCommon(common_); }

AInfo NxFileListItem::ArchivInfo() const {
  if (!extras_) return AInfo{};
  const ArchiveRecord& r = extras_->archive;
  return AInfo{r.inArchive,    r.archiveExt.str(), r.uncompressed, r.compressed, r.ratio.str(),
               r.hexCRC.str(), r.flags,            r.crc,          r.encoded,    r.method.str(),
               r.subPath.str(), r.comments.str(),  r.signature.str()};
}

NxFileListItem::Common& NxFileListItem::OwnCommon() {
  if (common_ && common_->refs.load(std::memory_order_acquire) == 1) return *common_;
  auto* own = new Common;
  if (common_) {
    own->owner = common_->owner;
    own->path = common_->path;
    own->fileTyp = common_->fileTyp;
    own->extension = common_->extension;
    own->caseMapper = common_->caseMapper;
    ReleaseCommon(common_);
  }
  common_ = own;
  return *own;
}

void NxFileListItem::ReleaseCommon(Common* c) {
  if (c && c->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) delete c;
}

void NxFileListItem::Internal::ShareCommon(NxFileListItem& item, const NxFileListItem& model) {
  if (&item == &model || item.common_ == model.common_) return;
  item.FreezeDosName();  // its case mapping may change
  if (model.common_) model.common_->refs.fetch_add(1, std::memory_order_relaxed);
  ReleaseCommon(item.common_);
  item.common_ = model.common_;
}

Variant NxFileListItem::DosName() const {
  if (dosFromName_) {
    std::string name = fileName_.str();
    Platform* mapper = common_ ? common_->caseMapper.get() : nullptr;
    return Variant(mapper ? mapper->Locale().CharUpper(name) : std::move(name));
  }
  return RareOrNull() ? RareOrNull()->dosName : Variant();
}

void NxFileListItem::setDosName(Variant v) {
  dosFromName_ = false;
  if (!RareOrNull() && v.IsEmpty()) return;
  MakeRare().dosName = std::move(v);
}

void NxFileListItem::FreezeDosName() {
  if (dosFromName_) setDosName(DosName());
}

void NxFileListItem::Internal::DosNameFromName(NxFileListItem& item) {
  item.dosFromName_ = true;
  if (Rare* rare = item.RareOrNull()) rare->dosName = Variant();
}

const std::string& NxFileListItem::EmptyText() {
  static const std::string empty;
  return empty;
}

void NxFileListItem::DetachFromName() {
  if (keyIsName_) {
    if (!fileName_.empty()) MakeRare().key = fileName_.str();
    keyIsName_ = false;
  }
  if (displayIsName_) {
    if (!fileName_.empty()) MakeRare().displayname = fileName_.str();
    displayIsName_ = false;
  }
}

void NxFileListItem::setFileName(std::string_view v) { Internal::ShareFileName(*this, SharedText(v)); }

void NxFileListItem::Internal::ShareFileName(NxFileListItem& item, SharedText name) {
  if (name.view() != item.fileName_.view()) {
    item.DetachFromName();
    item.FreezeDosName();
  }
  item.fileName_ = std::move(name);
  if (!item.nameFixed_) item.nameChanged_ = true;
}

void NxFileListItem::setDisplayname(std::string_view v) {
  displayIsName_ = !v.empty() && v == fileName_.view();
  if (displayIsName_ || (v.empty() && !RareOrNull())) {
    if (Rare* rare = RareOrNull()) rare->displayname.clear();
  } else {
    MakeRare().displayname = std::string(v);
  }
}

void NxFileListItem::setUserDataA(std::string v) {
  if (!RareOrNull() && v.empty()) return;
  MakeRare().userDataA = std::move(v);
}

void NxFileListItem::setUserDataB(std::string v) {
  if (!RareOrNull() && v.empty()) return;
  MakeRare().userDataB = std::move(v);
}

void NxFileListItem::Internal::SetKey(NxFileListItem& item, std::string_view key) {
  item.keyIsName_ = !key.empty() && key == item.fileName_.view();
  if (item.keyIsName_ || (key.empty() && !item.RareOrNull())) {
    if (Rare* rare = item.RareOrNull()) rare->key.clear();
  } else {
    item.MakeRare().key = std::string(key);
  }
}

bool NxFileListItem::ExecuteShellCommand(ItemFileCommands ShellCommand, Variant& Parameter) {
  // Commands are not run on virtual folders or on entries inside archives.
  if (listItemTyp_ == typeoffitem::VirtualFolder || IsInArchive()) return false;
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
  if (Owner(item) == nullptr) item.OwnCommon().owner = identity;
}

void NxFileListItem::Internal::SetOwner(NxFileListItem& item, const std::shared_ptr<NxFileCollection>& collection) {
  if (Owner(item) != nullptr || !collection) return;
  item.OwnCommon().owner = collection.get();
}

void NxFileListItem::Internal::StoreObject(NxFileListItem& item, ItemVariantField field, ObjectRef object) {
  Variant v(std::move(object));
  switch (field) {
    case ItemVariantField::DateModified: item.SetDateField(kDateModified, std::move(v)); break;
    case ItemVariantField::TimeModified: item.SetDateField(kTimeModified, std::move(v)); break;
    case ItemVariantField::DateCreated: item.SetDateField(kDateCreated, std::move(v)); break;
    case ItemVariantField::TimeCreated: item.SetDateField(kTimeCreated, std::move(v)); break;
    case ItemVariantField::LastAccessed: item.SetDateField(kLastAccessed, std::move(v)); break;
    case ItemVariantField::DosName: item.setDosName(std::move(v)); break;
  }
}

Variant NxFileListItem::DateField(int slot) const {
  switch (DateKindOf(slot)) {
    case kBareDate: return Variant(DateValue{dates_[slot]});
    case kOtherValue: return extras_->otherDates[slot];
    default: return Variant();
  }
}

void NxFileListItem::SetDateField(int slot, Variant v) {
  DateKind kind = kNoDate;
  if (v.kind() == Variant::Kind::Date) {
    kind = kBareDate;
    dates_[slot] = v.AsDouble();
  } else if (!v.IsEmpty()) {
    kind = kOtherValue;
  }
  // A value set aside before goes now (it may be an object reference).
  if (kind == kOtherValue) MakeExtras().otherDates[slot] = std::move(v);
  else if (DateKindOf(slot) == kOtherValue) extras_->otherDates[slot] = Variant();
  if (kind != kBareDate) dates_[slot] = 0;
  dateKinds_ = static_cast<uint16_t>((dateKinds_ & ~(3u << (2 * slot))) | (static_cast<unsigned>(kind) << (2 * slot)));
}

void NxFileListItem::Internal::AnnounceKeyChange(NxFileListItem& item) {
  auto owner = LiveCollection(Owner(item));
  if (!owner) return;
  NxFileCollection::Internal(*owner).AnnounceKeyChange(item.Key(), &item);
}

}  // namespace nxfv
