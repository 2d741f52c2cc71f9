#include "nxfv/control/folder_rows.h"

#include <cctype>
#include <cmath>

#include "nxfv/columns/date_text.h"
#include "nxfv/columns/formatting.h"
#include "nxfv/control/host_events.h"
#include "nxfv/platform/wildcard.h"
#include "nxfv/shell/date_convert.h"
#include "nxfv/shell/path_text.h"

namespace nxfv {

namespace {

constexpr const char* kGoUpKey = "sysgoup";

bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::toupper(static_cast<unsigned char>(a[i])) != std::toupper(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

// Files of these kinds carry their own icons, so they are looked up per file.
bool HasOwnIcon(std::string_view ext) {
  if (ext.size() != 3) return false;
  for (const char* k : {"exe", "ico", "lnk", "pif", "cur"})
    if (EqualsNoCase(ext, k)) return true;
  return false;
}

int32_t ShownSlot(const ListView& view, const char* key) {
  const int32_t i = view.FindColumn(key);
  return i > 0 && view.Column(i).width > 0 ? i : -1;
}

// Last access shows the date only where the volume keeps no time of day.
bool AccessDateOnly(Platform& p, const std::string& folder) {
  std::string fsName;
  return !p.Files().VolumeFileSystemName(p.RootOf(folder), fsName) || fsName.compare(0, 3, "FAT") == 0;
}

bool MatchesEveryName(std::string_view pattern) {
  while (!pattern.empty() && pattern.front() == ' ') pattern.remove_prefix(1);
  return pattern == "*.*" || pattern == "*";
}

void MarkListed(NxFileListItem& item) {
  NxFileListItem::Internal::SetFoundInPass(item, true);
  NxFileListItem::Internal::SetListed(item, true);
}

}  // namespace

FolderRows::FolderRows(ViewerCore& core, const std::string& listedPath, bool keepItems, std::string pattern)
    : core_(core),
      p_(core.platform),
      listedPath_(listedPath),
      keepItems_(keepItems),
      pattern_(std::move(pattern)),
      patternMatchesAll_(MatchesEveryName(pattern_)),
      folderPath_(AddSeparator(core.platform, core.currentFolder)),
      sharedFolderPath_(folderPath_),
      slots_(ShownSlots(core.listView)),
      formats_(core.platform.Locale().Formats()),
      numeric_{formats_.thousandsSeparator, formats_.decimalSeparator},
      lastAccessDateOnly_(AccessDateOnly(core.platform, core.currentFolder)),
      sortKeyBytes_(core.sort.KeyBytes()) {
  if (keepItems_) found_.assign(core.listView.RowCount(), 0);
}

FolderRows::Slots FolderRows::ShownSlots(const ListView& view) {
  Slots s;
  s.ext = ShownSlot(view, "ext");
  s.siz = ShownSlot(view, "siz");
  s.typ = ShownSlot(view, "typ");
  s.mod = ShownSlot(view, "mod");
  s.tim = ShownSlot(view, "tim");
  s.cre = ShownSlot(view, "cre");
  s.acc = ShownSlot(view, "acc");
  s.atr = ShownSlot(view, "atr");
  s.dos = ShownSlot(view, "dos");
  s.userd1 = ShownSlot(view, "userd1");
  s.userd2 = ShownSlot(view, "userd2");
  return s;
}

void FolderRows::AddGoUpRow() {
  const ViewerSettings& s = core_.settings;
  if (!s.showGoUp || (!s.goUpTopFolder.empty() && listedPath_ == s.goUpTopFolder)) return;
  if (MarkKept(kGoUpKey)) return;
  auto item = NxFileListItem::Create();
  NxFileListItem::Internal::SetKey(*item, kGoUpKey);
  NxFileListItem::Internal::SetOwner(*item, core_.items);
  item->setDisplayname("..");
  item->setListItemTyp(typeoffitem::Folder);
  ListRow& row = core_.listView.AddRow(kGoUpKey, "..");
  if (slots_.ext > 0) row.SetSubItem(slots_.ext, "");
  if (slots_.typ > 0) row.SetSubItem(slots_.typ, core_.fileTypes.Cache().Scratch().typeName);
  row.SetImage(p_.Icons().SysIconIndex(core_.currentFolder, 0, kSmallSysIcon));
  NxFileCollection::Internal(*core_.items).Add(Variant(item), kGoUpKey, COLLECTION_ADD_OPTIONS::EndOfCollection);
  MarkListed(*item);
}

bool FolderRows::Shows(const FindData& entry, const std::string& name, const std::string& ext) const {
  const ViewerSettings& s = core_.settings;
  const bool hidden = (entry.attributes & kAttrHidden) != 0;
  if (entry.attributes & kAttrDirectory) return s.showFolders && (s.showHidden || !hidden);
  if (!s.showFiles || (!s.showHidden && hidden)) return false;
  // Without system items, libraries and drivers go too, whatever their bits.
  if (!s.showSystem && ((entry.attributes & kAttrSystem) || EqualsNoCase(ext, "DLL") || EqualsNoCase(ext, "SYS")))
    return false;
  return patternMatchesAll_ || PathMatchSpec(name, pattern_);
}

bool FolderRows::MarkKept(const std::string& key) {
  if (!keepItems_) return false;
  const ListRow* row = core_.listView.FindRow(key);
  if (!row) return false;
  if (row->Index() < found_.size()) found_[row->Index()] = 1;
  return true;
}

bool FolderRows::Screen(const FindData& entry, std::string& name, std::string& ext, std::string& key) {
  if (!entry.name.empty() && entry.name[0] == '.') return false;
  name = entry.name.substr(0, entry.name.find('\0'));
  ext = core_.fileTypes.GetExt(name);
  if (!Shows(entry, name, ext)) return false;
  const bool folder = (entry.attributes & kAttrDirectory) != 0;
  // A name of digits alone would read as a position: its key gets a mark.
  key = IsNumericText(name, numeric_) ? (folder ? "~" : "##$$") + name : name;
  return !MarkKept(key);
}

void FolderRows::Add(const FindData& entry) {
  std::string name, ext, key;
  if (Screen(entry, name, ext, key)) AddRow(entry, name, ext, key);
}

bool FolderRows::NeedsRow(const FindData& entry) {
  std::string name, ext, key;
  return Screen(entry, name, ext, key);
}

void FolderRows::AddRow(const FindData& entry, const std::string& name, const std::string& ext,
                        const std::string& key) {
  // The row key and the item's file name share one text when they are the same.
  const SharedText nameText(name);
  ListRow& row = key == name ? core_.listView.AddRowWithKey(nameText, name) : core_.listView.AddRow(key, name);
  texts_.Clear();
  auto item = NxFileListItem::Create();
  NxFileListItem::Internal::ShareFileName(*item, nameText);
  NxFileListItem::Internal::SetKey(*item, key);
  item->setDisplayname(name);
  texts_.Put(slots_.ext, ext);
  int32_t icon = 0;
  if (entry.attributes & kAttrDirectory) {
    item->setListItemTyp(typeoffitem::Folder);
    NxFileListItem::Internal::ShareCommon(*item, CommonModel(nullptr));
    TypeCacheEntry& folderType = core_.fileTypes.Cache().Scratch();
    icon = folderType.iconIndex = p_.Icons().SysIconIndex(folderPath_ + name, 0, kSmallSysIcon);
    texts_.Put(slots_.typ, folderType.typeName);
  } else {
    icon = FillFile(*item, entry, name, ext);
  }
  FillTimes(*item, entry);
  if (slots_.atr > 0) texts_.Put(slots_.atr, GetAttrString(entry.attributes));
  item->setAttributes(static_cast<int32_t>(entry.attributes));
  if (entry.shortName.empty() || entry.shortName[0] == '\0') {
    // The 8.3 name is the name in capitals: the item works it out when
    // asked, so a million items do not each keep a second copy of a name.
    NxFileListItem::Internal::DosNameFromName(*item);
    if (slots_.dos > 0) texts_.Put(slots_.dos, p_.Locale().CharUpper(name));
  } else {
    std::string dos = entry.shortName.substr(0, entry.shortName.find('\0'));
    texts_.Put(slots_.dos, dos);
    item->setDosName(Variant(std::move(dos)));
  }
  if (!keepItems_ && core_.events) {
    // Items added by a refresh get no user data, on purpose.
    std::string a, b;
    AskUserData(core_, item, a, b);
    texts_.Put(slots_.userd1, a);
    texts_.Put(slots_.userd2, b);
    item->setUserDataA(a);
    item->setUserDataB(b);
  }
  texts_.WriteTo(row, sortKeyBytes_);
  NxFileCollection::Internal(*core_.items).Add(Variant(item), key, COLLECTION_ADD_OPTIONS::EndOfCollection);
  MarkListed(*item);
  row.SetImage(icon);
}

int32_t FolderRows::FillFile(NxFileListItem& item, const FindData& entry, const std::string& name,
                             const std::string& ext) {
  item.setListItemTyp(typeoffitem::file);
  const uint64_t size = MakeInt64(entry.sizeHigh, entry.sizeLow);
  if (slots_.siz > 0) texts_.Put(slots_.siz, SizeText(formats_, static_cast<double>(size)));
  // The public size is 32-bit: 2 GiB and more read as the largest value.
  item.setFileSize(size > 2147483647ULL ? 2147483647 : static_cast<int32_t>(size));
  int32_t icon = 0;
  // The full path is only built when the extension is new to the cache.
  const TypeCacheEntry* type = ext.empty() ? nullptr : core_.fileTypes.Cache().Find(ext);
  if (!type && !ext.empty()) type = core_.fileTypes.Entry(ext, folderPath_ + name, false);
  NxFileListItem::Internal::ShareCommon(item, CommonModel(type));
  if (type) {
    icon = type->iconIndex;
    texts_.Put(slots_.typ, type->typeName);
  }
  if (HasOwnIcon(ext)) icon = p_.Icons().SysIconIndex(folderPath_ + name, 0, kSmallSysIcon);
  return icon;
}

const NxFileListItem& FolderRows::CommonModel(const TypeCacheEntry* type) {
  const std::pair<const char*, const char*> key =
      type ? std::pair(type->sharedTypeName.view().data(), type->sharedExtension.view().data())
           : std::pair<const char*, const char*>(nullptr, nullptr);
  std::shared_ptr<NxFileListItem>& model = commonModels_[key];
  if (!model) {
    model = NxFileListItem::Create();
    NxFileListItem::Internal::SetOwner(*model, core_.items);
    NxFileListItem::Internal::SharePath(*model, sharedFolderPath_);
    NxFileListItem::Internal::SetCaseMapper(*model, core_.platformRef);
    if (type) {
      NxFileListItem::Internal::ShareFileTyp(*model, type->sharedTypeName);
      NxFileListItem::Internal::ShareExtension(*model, type->sharedExtension);
    }
  }
  return *model;
}

void FolderRows::FillTimes(NxFileListItem& item, const FindData& entry) {
  const double written = FileTimeToDate(p_, entry.lastWriteTime, true);
  const double writtenDay = std::floor(written);
  if (slots_.mod > 0) texts_.Put(slots_.mod, DateText(formats_, written));
  item.setDateModified(Variant(DateValue{writtenDay}));
  if (slots_.tim > 0) texts_.Put(slots_.tim, TimeText(formats_, written));
  item.setTimeModified(Variant(DateValue{written - writtenDay}));
  const double created = FileTimeToDate(p_, entry.creationTime, true);
  if (slots_.cre > 0) texts_.Put(slots_.cre, DateTimeText(formats_, created));
  item.setDateCreated(Variant(DateValue{std::floor(created)}));
  item.setTimeCreated(Variant(DateValue{created - std::floor(created)}));
  const double accessed = FileTimeToDate(p_, entry.lastAccessTime, true);
  const bool dateOnly = lastAccessDateOnly_;
  if (slots_.acc > 0) texts_.Put(slots_.acc, dateOnly ? DateText(formats_, accessed) : DateTimeText(formats_, accessed));
  item.setLastAccessed(Variant(DateValue{dateOnly ? std::floor(accessed) : accessed}));
}

}  // namespace nxfv
