// NxFileListItem: the object behind every entry the viewer shows (file,
// folder, drive, virtual folder, archive entry), with its archive record
// AInfo.
//
// The item never touches the list view. Setting Selected or Checked, and
// calling EnsureVisible or ExecuteShellCommand, raise the item's one event,
// xselitemx, on its listener; the control that listens applies the change to
// the row with the item's Key. An item nobody listens to still stores the
// new values, so a detached item keeps working as a plain property bag.
//
// Fields the host may only read (Key, ArchivInfo) and the marks the control
// keeps per item are written through NxFileListItem::Internal, which is for
// the component's own code only.
//
// Items are always created through Create(), because the event hands the
// item itself (a shared_ptr) to the listener.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "nxfv/platform/shared_text.h"
#include "nxfv/platform/variant.h"

namespace nxfv {

class NxFileCollection;
class NxFileListItem;
class Platform;

enum class typeoffitem : int32_t { None = 0, file = 1, Folder = 2, Drive = 3, VirtualFolder = 4 };

// A bit set: the item stores whatever 32-bit value it is given.
enum File_Attribute : int32_t {
  FILE_ATTRIBUTE_READONLY = 1,
  FILE_ATTRIBUTE_HIDDEN = 2,
  FILE_ATTRIBUTE_SYSTEM = 4,
  FILE_ATTRIBUTE_DIRECTORY = 16,
  FILE_ATTRIBUTE_ARCHIVE = 32,
  FILE_ATTRIBUTE_NORMAL = 128,
  FILE_ATTRIBUTE_TEMPORARY = 256,
  FILE_ATTRIBUTE_COMPRESSED = 2048,
};

enum class ItemFileCommands : int32_t {
  IcCopy = 0,
  IcCut = 1,
  IcDelete = 2,
  IcPaste = 3,
  IcRename = 4,
  IcCreateShortcut = 5,
  IcExplore = 6,
  IcFind = 7,
  IcOpen = 8,
  IcPrint = 9,
  IcProperties = 10,
  IcEdit = 11,
};

// What an xselitemx event asks the listener to do.
enum class eventbefs : int32_t { doselect = 0, doexebef = 1, doensurevisible = 2, docheck = 3 };

// Archive data of one entry; only the archive listing fills it.
struct AInfo {
  bool IsInArchive = false;
  std::string ArchiveExt;
  int32_t UncompressedSize = 0;
  int32_t CompressedSize = 0;
  std::string Ratio;   // already formatted for display
  std::string HexCRC;  // the CRC as hexadecimal text
  int32_t flags = 0;
  int32_t CRC = 0;
  int32_t Encoded = 0;
  std::string Method;  // already formatted for display
  std::string ArchiveSubPath;
  std::string Comments;
  std::string Signature;
  bool operator==(const AInfo&) const = default;
};

// The listener of one item. Every argument is by reference so that the
// handler can answer:
// - itemvalue: the field the event is about (the new Selected or Checked
//   value, the command of ExecuteShellCommand, "" for EnsureVisible). For
//   doselect and docheck, whatever the handler leaves in itemvalue is
//   written back to the item's Selected / Checked field after the event (a
//   value that is not a Boolean or number leaves the field as it was).
// - Parameter: the caller's own Parameter of ExecuteShellCommand ("" for
//   the others); a handler's change reaches the caller.
// - operationok: starts False; ExecuteShellCommand returns what the handler
//   leaves in it.
class NxFileListItemEvents {
 public:
  virtual ~NxFileListItemEvents() = default;
  virtual void xselitemx(eventbefs& mybef, Variant& itemvalue, std::shared_ptr<NxFileListItem>& xitem,
                         Variant& Parameter, bool& operationok) = 0;
};

class NxFileListItem : public Object, public std::enable_shared_from_this<NxFileListItem> {
  struct Passkey {};

 public:
  explicit NxFileListItem(Passkey) : selected_(false), checked_(false), nameFixed_(false), nameChanged_(false),
      listed_(false), foundInPass_(false), keyIsName_(false), displayIsName_(false), dosFromName_(false) {}
  ~NxFileListItem() override;
  NxFileListItem(const NxFileListItem&) = delete;
  NxFileListItem& operator=(const NxFileListItem&) = delete;
  // A new item is all-zero: empty strings, 0, False, Empty variants,
  // ListItemTyp None.
  static std::shared_ptr<NxFileListItem> Create() { return std::make_shared<NxFileListItem>(Passkey{}); }

  // The one listener; held without keeping it alive. Pointing it elsewhere
  // (or at nothing) silently drops the previous one.
  void SetListener(std::weak_ptr<NxFileListItemEvents> listener) { MakeRare().listener = std::move(listener); }
  // A listener is only lent to one item at a time (the control's current
  // one): an item that held nothing else gives its extras back, so a listing
  // with a listening host costs no extra block per row.
  void ClearListener() {
    if (Rare* rare = RareOrNull()) {
      rare->listener.reset();
      if (rare->HoldsNothing()) extras_->rare.reset();
    }
    if (extras_ && extras_->HoldsNothing()) extras_.reset();
  }

  typeoffitem ListItemTyp() const { return listItemTyp_; }
  void setListItemTyp(typeoffitem v) { listItemTyp_ = v; }
  std::string_view FileTyp() const { return common_ ? common_->fileTyp.view() : std::string_view(); }
  void setFileTyp(std::string_view v) { OwnCommon().fileTyp = SharedText(v); }

  bool Selected() const { return selected_; }
  // Stores v and raises xselitemx(doselect) on every let, also when the
  // value does not change: the view re-applies the state.
  void setSelected(bool v);

  std::string_view Displayname() const {
    return displayIsName_ ? fileName_.view() : RareOrNull() ? std::string_view(RareOrNull()->displayname) : std::string_view();
  }
  void setDisplayname(std::string_view v);
  const std::string& UserDataA() const { return RareOrNull() ? RareOrNull()->userDataA : EmptyText(); }
  void setUserDataA(std::string v);
  const std::string& UserDataB() const { return RareOrNull() ? RareOrNull()->userDataB : EmptyText(); }
  void setUserDataB(std::string v);

  bool Checked() const { return checked_; }
  // Stores v and raises xselitemx(docheck) on every let.
  void setChecked(bool v);

  // The variant fields return what was stored: a copy of a value, or the
  // stored object reference itself. They return it by value: an item keeps
  // a date (what listings store) as a bare number, an 8.3 name that is the
  // file name in capitals as a mark, and anything else a host stores aside,
  // which spares a listing of a million items some 80 MB.
  Variant DosName() const;
  void setDosName(Variant v);
  File_Attribute Attributes() const { return attributes_; }
  void setAttributes(File_Attribute v) { attributes_ = v; }
  void setAttributes(int32_t v) { attributes_ = static_cast<File_Attribute>(v); }
  Variant LastAccessed() const { return DateField(kLastAccessed); }
  void setLastAccessed(Variant v) { SetDateField(kLastAccessed, std::move(v)); }
  Variant TimeCreated() const { return DateField(kTimeCreated); }
  void setTimeCreated(Variant v) { SetDateField(kTimeCreated, std::move(v)); }
  Variant DateCreated() const { return DateField(kDateCreated); }
  void setDateCreated(Variant v) { SetDateField(kDateCreated, std::move(v)); }
  Variant TimeModified() const { return DateField(kTimeModified); }
  void setTimeModified(Variant v) { SetDateField(kTimeModified, std::move(v)); }
  Variant DateModified() const { return DateField(kDateModified); }
  void setDateModified(Variant v) { SetDateField(kDateModified, std::move(v)); }

  // Signed 32-bit: sizes of 2 GiB and more are stored as the listing
  // clamps them (2147483647).
  int32_t FileSize() const { return fileSize_; }
  void setFileSize(int32_t v) { fileSize_ = v; }
  std::string_view Extension() const { return common_ ? common_->extension.view() : std::string_view(); }
  void setExtension(std::string_view v) { OwnCommon().extension = SharedText(v); }
  std::string_view Path() const { return common_ ? common_->path.view() : std::string_view(); }
  void setPath(std::string_view v) { OwnCommon().path = SharedText(v); }

  std::string_view Key() const {
    return keyIsName_ ? fileName_.view() : RareOrNull() ? std::string_view(RareOrNull()->key) : std::string_view();
  }
  // Always a copy.
  AInfo ArchivInfo() const;
  bool IsInArchive() const { return extras_ && extras_->archive.inArchive; }

  std::string_view FileName() const { return fileName_; }
  // Stores the name; unless the name-fixed mark is set, sets the
  // name-changed mark.
  void setFileName(std::string_view v);

  // Raises xselitemx(doexebef) with itemvalue = the command and Parameter =
  // the caller's Parameter, and returns the handler's operationok. Nothing
  // is raised, and false returned, for virtual folders and archive entries.
  bool ExecuteShellCommand(ItemFileCommands ShellCommand, Variant& Parameter);
  bool ExecuteShellCommand(ItemFileCommands ShellCommand);
  // Raises xselitemx(doensurevisible) unless ListItemTyp is None. Always
  // returns Empty.
  Variant EnsureVisible();

  // Operations for the component's own code (listings, the control). The
  // host never calls these.
  class Internal;

 private:
  // Raises the event if anyone listens. Handler failures are recorded in
  // the thread's error state and do not escape: lets never fail.
  void Raise(eventbefs mybef, Variant& itemvalue, Variant& Parameter, bool& operationok);

  // A listing may hold a million items, so an item stores little of its own:
  // what the items of one folder and type have in common in one block they
  // share (Common); the key and display name (when they differ from the file
  // name), the archive record, the user data and the listener only once one
  // is stored.
  static const std::string& EmptyText();
  // Shared by the items of one listing that have the same type. Copied
  // before a change while others share it.
  struct Common {
    std::atomic<uint32_t> refs{1};
    // The owner's identity only: a collection is found again through the
    // registry of live collections (see LiveCollection), so an item does
    // not carry a counted reference to it.
    const void* owner = nullptr;
    SharedText path;
    SharedText fileTyp;
    SharedText extension;
    // Maps the file name to capitals for items whose 8.3 name is their
    // name in capitals (dosFromName_), when the name is asked for.
    std::shared_ptr<Platform> caseMapper;
  };
  Common& OwnCommon();
  static void ReleaseCommon(Common* c);
  // The 8.3 name stops following the file name (before the name changes).
  void FreezeDosName();
  // The date fields, in the order of dates_.
  enum DateSlot : int { kDateModified, kTimeModified, kDateCreated, kTimeCreated, kLastAccessed, kDateSlots };
  // What a date field holds (two bits each in dateKinds_): Empty, a date in
  // dates_, or any other value in the extras.
  enum DateKind : uint16_t { kNoDate = 0, kBareDate = 1, kOtherValue = 2 };
  Variant DateField(int slot) const;
  void SetDateField(int slot, Variant v);
  DateKind DateKindOf(int slot) const { return static_cast<DateKind>((dateKinds_ >> (2 * slot)) & 3u); }
  // An archive entry's record. Its texts are shared blocks: the archive's
  // extension, the method and the signature are the same for most entries
  // of an archive, and 32,767 entries with seven strings each would
  // otherwise cost more than the rest of the item.
  struct ArchiveRecord {
    SharedText archiveExt, ratio, hexCRC, method, subPath, comments, signature;
    int32_t uncompressed = 0, compressed = 0, flags = 0, crc = 0, encoded = 0;
    bool inArchive = false;
    bool operator==(const ArchiveRecord&) const = default;
  };
  // What only some items hold: user data, a key or display name of their
  // own, a listener, an 8.3 name that is not the name in capitals.
  struct Rare {
    std::string userDataA, userDataB;
    std::string key;          // when !keyIsName_
    std::string displayname;  // when !displayIsName_
    std::weak_ptr<NxFileListItemEvents> listener;
    Variant dosName;  // unless dosFromName_
    int32_t spareNumber = 0;
    int32_t driveTag = 0;
    bool HoldsNothing() const {
      return listener.expired() && userDataA.empty() && userDataB.empty() && key.empty() && displayname.empty() &&
             dosName.IsEmpty() && spareNumber == 0 && driveTag == 0;
    }
  };
  // Archive entries hold a record and text dates, and nothing rare: they get
  // one small block, and the rare fields a second one only when needed.
  struct Extras {
    ArchiveRecord archive;
    Variant otherDates[kDateSlots];  // date fields holding something else than a date
    std::unique_ptr<Rare> rare;
    bool HoldsNothing() const {
      for (const Variant& d : otherDates)
        if (!d.IsEmpty()) return false;
      return !rare && archive == ArchiveRecord{};
    }
  };
  Extras& MakeExtras() {
    if (!extras_) extras_ = std::make_unique<Extras>();
    return *extras_;
  }
  Rare* RareOrNull() const { return extras_ ? extras_->rare.get() : nullptr; }
  Rare& MakeRare() {
    Extras& e = MakeExtras();
    if (!e.rare) e.rare = std::make_unique<Rare>();
    return *e.rare;
  }
  // Before the file name changes, texts that only followed it get their own copy.
  void DetachFromName();

  SharedText fileName_;
  std::unique_ptr<Extras> extras_;
  Common* common_ = nullptr;
  double dates_[kDateSlots] = {};
  int32_t fileSize_ = 0;
  File_Attribute attributes_ = static_cast<File_Attribute>(0);
  typeoffitem listItemTyp_ = typeoffitem::None;
  bool selected_ : 1;
  bool checked_ : 1;
  bool nameFixed_ : 1;
  bool nameChanged_ : 1;
  bool listed_ : 1;
  bool foundInPass_ : 1;
  // Whether Key / Displayname are the file name (else stored in extras_,
  // or empty when there are none).
  bool keyIsName_ : 1;
  bool displayIsName_ : 1;
  // Whether DosName is the file name in capitals (else in extras_).
  bool dosFromName_ : 1;
  uint16_t dateKinds_ = 0;
};

// The variant fields that an internal store may fill with an object
// reference.
enum class ItemVariantField { DateModified, TimeModified, DateCreated, TimeCreated, LastAccessed, DosName };

class NxFileListItem::Internal {
 public:
  static void SetKey(NxFileListItem& item, std::string_view key);
  // Sets the file name to a text shared with others (the row key that shows
  // the item), with the same marks as the public let.
  static void ShareFileName(NxFileListItem& item, SharedText name);
  // The folder and type name, shared with other items instead of copied.
  static void SharePath(NxFileListItem& item, SharedText path) { item.OwnCommon().path = std::move(path); }
  static void ShareFileTyp(NxFileListItem& item, SharedText type) { item.OwnCommon().fileTyp = std::move(type); }
  static void ShareExtension(NxFileListItem& item, SharedText extension) {
    item.OwnCommon().extension = std::move(extension);
  }
  // A new item takes the owner, folder, type name and extension of model
  // (and its case mapping) by sharing them: one block for a listing's
  // items of one type instead of copies in each.
  static void ShareCommon(NxFileListItem& item, const NxFileListItem& model);
  // The platform whose case mapping DosNameFromName uses.
  static void SetCaseMapper(NxFileListItem& item, std::shared_ptr<Platform> platform) {
    item.OwnCommon().caseMapper = std::move(platform);
  }
  // DosName becomes the file name in capitals (the case mapping's), worked
  // out when asked for; it keeps the name it had when the file name changes.
  // Without a case mapper it is the name itself, as there is nothing to map.
  static void DosNameFromName(NxFileListItem& item);

  // The owner is set once: later calls leave the first owner. The identity
  // form is for owners that are not collections (the control); the
  // collection form also lets AnnounceKeyChange reach the collection.
  static void SetOwner(NxFileListItem& item, const void* identity);
  static void SetOwner(NxFileListItem& item, const std::shared_ptr<NxFileCollection>& collection);
  static const void* Owner(const NxFileListItem& item) { return item.common_ ? item.common_->owner : nullptr; }

  // Without raising xselitemx.
  static void SetSelectedSilently(NxFileListItem& item, bool v) { item.selected_ = v; }
  static void SetCheckedSilently(NxFileListItem& item, bool v) { item.checked_ = v; }

  // True once the control has put the item into the list view.
  static bool Listed(const NxFileListItem& item) { return item.listed_; }
  static void SetListed(NxFileListItem& item, bool v) { item.listed_ = v; }
  // Set by the folder refresh on every item it meets again in one pass.
  static bool FoundInPass(const NxFileListItem& item) { return item.foundInPass_; }
  static void SetFoundInPass(NxFileListItem& item, bool v) { item.foundInPass_ = v; }

  // Kept with the extras: only drives and a few other items have them.
  static int32_t DriveTag(const NxFileListItem& item) { return item.RareOrNull() ? item.RareOrNull()->driveTag : 0; }
  static void SetDriveTag(NxFileListItem& item, int32_t v) {
    if (item.RareOrNull() || v != 0) item.MakeRare().driveTag = v;
  }
  static int32_t SpareNumber(const NxFileListItem& item) {
    return item.RareOrNull() ? item.RareOrNull()->spareNumber : 0;
  }
  static void SetSpareNumber(NxFileListItem& item, int32_t v) {
    if (item.RareOrNull() || v != 0) item.MakeRare().spareNumber = v;
  }
  static bool NameFixed(const NxFileListItem& item) { return item.nameFixed_; }
  static void SetNameFixed(NxFileListItem& item, bool v) { item.nameFixed_ = v; }
  static bool NameChanged(const NxFileListItem& item) { return item.nameChanged_; }
  static void SetNameChanged(NxFileListItem& item, bool v) { item.nameChanged_ = v; }

  // One setter per AInfo field. The texts are taken as shared blocks, so a
  // caller that passes the same SharedText to many items stores it once.
  static void SetIsInArchive(NxFileListItem& item, bool v) { Set(item, &ArchiveRecord::inArchive, v); }
  static void SetArchiveExt(NxFileListItem& item, SharedText v) { Set(item, &ArchiveRecord::archiveExt, std::move(v)); }
  static void SetUncompressedSize(NxFileListItem& item, int32_t v) { Set(item, &ArchiveRecord::uncompressed, v); }
  static void SetCompressedSize(NxFileListItem& item, int32_t v) { Set(item, &ArchiveRecord::compressed, v); }
  static void SetRatio(NxFileListItem& item, SharedText v) { Set(item, &ArchiveRecord::ratio, std::move(v)); }
  static void SetHexCRC(NxFileListItem& item, SharedText v) { Set(item, &ArchiveRecord::hexCRC, std::move(v)); }
  static void SetFlags(NxFileListItem& item, int32_t v) { Set(item, &ArchiveRecord::flags, v); }
  static void SetCRC(NxFileListItem& item, int32_t v) { Set(item, &ArchiveRecord::crc, v); }
  static void SetEncoded(NxFileListItem& item, int32_t v) { Set(item, &ArchiveRecord::encoded, v); }
  static void SetMethod(NxFileListItem& item, SharedText v) { Set(item, &ArchiveRecord::method, std::move(v)); }
  static void SetArchiveSubPath(NxFileListItem& item, SharedText v) {
    Set(item, &ArchiveRecord::subPath, std::move(v));
  }
  static void SetComments(NxFileListItem& item, SharedText v) { Set(item, &ArchiveRecord::comments, std::move(v)); }
  static void SetSignature(NxFileListItem& item, SharedText v) { Set(item, &ArchiveRecord::signature, std::move(v)); }

  // Stores the reference itself; the field's get returns it.
  static void StoreObject(NxFileListItem& item, ItemVariantField field, ObjectRef object);

  // Asks the owning collection, when the owner is a collection that still
  // exists, to announce the entry stored under the item's Key (its
  // GenericEvent). Nothing otherwise.
  static void AnnounceKeyChange(NxFileListItem& item);

 private:
  // Storing a default value into an item without archive record keeps it
  // without one (listings clear these fields on every ordinary item).
  template <class T>
  static void Set(NxFileListItem& item, T ArchiveRecord::*field, T v) {
    if (!item.extras_ && v == T{}) return;
    item.MakeExtras().archive.*field = std::move(v);
  }
};

}  // namespace nxfv
