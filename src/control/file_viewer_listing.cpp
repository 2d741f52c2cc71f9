// Listing a folder of the platform into items and rows.
#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

#include "columns/date_text.h"
#include "columns/formatting.h"
#include "control/file_viewer.h"
#include "control/instance_table.h"
#include "control/row_texts.h"
#include "platform/error_state.h"
#include "platform/numeric_text.h"
#include "platform/wildcard.h"
#include "shell/date_convert.h"
#include "shell/path_text.h"
#include "shell/show_error.h"

namespace nxfv {

namespace {

constexpr int32_t kHourglass = 11;
constexpr uint32_t kSmallSysIcon = kShgfiSysIconIndex | kShgfiSmallIcon;  // 0x4001

// The sub-item index of each column the listing fills, or -1 when the
// column is not shown (a hidden column gets no text).
struct ColumnSlots {
  int32_t shownCount = 0;
  int32_t ext = -1, siz = -1, typ = -1, mod = -1, tim = -1, cre = -1, acc = -1, atr = -1, dos = -1, userd1 = -1,
          userd2 = -1;
};

int32_t ShownSlot(const ListView& lv, const char* key) {
  const int32_t i = lv.FindColumn(key);
  return i > 0 && lv.Column(i).width > 0 ? i : -1;
}

ColumnSlots ShownSlots(const ListView& lv) {
  ColumnSlots s;
  s.ext = ShownSlot(lv, "ext");
  s.siz = ShownSlot(lv, "siz");
  s.typ = ShownSlot(lv, "typ");
  s.mod = ShownSlot(lv, "mod");
  s.tim = ShownSlot(lv, "tim");
  s.cre = ShownSlot(lv, "cre");
  s.acc = ShownSlot(lv, "acc");
  s.atr = ShownSlot(lv, "atr");
  s.dos = ShownSlot(lv, "dos");
  s.userd1 = ShownSlot(lv, "userd1");
  s.userd2 = ShownSlot(lv, "userd2");
  for (int32_t i : {s.ext, s.siz, s.typ, s.mod, s.tim, s.cre, s.acc, s.atr, s.dos, s.userd1, s.userd2})
    if (i > 0) ++s.shownCount;
  return s;
}

void Put(ListRow& row, int32_t slot, std::string_view text) {
  if (slot > 0) row.SetSubItem(slot, text);
}

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

}  // namespace

const TypeCacheEntry* FileViewer::FileTypeEntry(const std::string& Ext, const std::string& FullPath,
                                                bool probeByAttributes) {
  if (Ext.empty()) return nullptr;
  if (const TypeCacheEntry* hit = typeCache_.Find(Ext)) return hit;
  std::string progId, typeName;
  if (platform_->Registry().ClassesRootDefault("." + Ext, progId)) {
    progId = StripNull(progId.substr(0, std::min<size_t>(progId.size(), 259)));
    if (!progId.empty() && platform_->Registry().ClassesRootDefault(progId, typeName))
      typeName = StripNull(typeName.substr(0, std::min<size_t>(typeName.size(), 79)));
    else
      typeName.clear();
  }
  TypeCacheEntry entry;
  entry.extension = Ext;
  if (!typeName.empty()) {
    entry.typeName = typeName;
    entry.iconIndex = probeByAttributes
                          ? platform_->Icons().SysIconIndex(FullPath, kAttrNormal, kSmallSysIcon | kShgfiUseFileAttributes)
                          : platform_->Icons().SysIconIndex(FullPath, 0, kSmallSysIcon);
  } else {
    // Types the system does not describe share the generic document icon.
    entry.typeName = "File";
    entry.iconIndex =
        platform_->Icons().SysIconIndex("generic.bin", kAttrNormal, kShgfiSysIconIndex | kShgfiUseFileAttributes);
  }
  return &typeCache_.Insert(std::move(entry));
}

std::string FileViewer::GetFileType(const std::string& Ext, const std::string& FullPath, int32_t& IconIndex,
                                    bool probeByAttributes) {
  const TypeCacheEntry* entry = FileTypeEntry(Ext, FullPath, probeByAttributes);
  if (!entry) return {};
  IconIndex = entry->iconIndex;
  return entry->typeName;
}

void FileViewer::ClearView() {
  if (oListitem_) {
    oListitem_->ClearListener();
    oListitem_.reset();
  }
  NxFileCollection::Internal(*items_).Clear();
}

void FileViewer::LoadFiles(const std::string& Path, bool KeepItems, bool ResetSort, bool SelectFirst) {
  if (busy_) return;  // re-entrant calls from event handlers are ignored
  Platform& p = *platform_;
  p.Ui().LockWindowUpdate(true);
  busy_ = true;
  const int32_t oldPointer = p.Ui().MousePointer();
  NxFileCollection::Internal items(*items_);
  try {
    if (KeepItems) {
      for (const auto& item : *items_)
        if (item) NxFileListItem::Internal::SetFoundInPass(*item, false);
    }
    p.Ui().SetMousePointer(kHourglass);
    insideArchive_ = false;
    // A refresh in place keeps its rows, so it only re-applies the widths.
    BuildColumns(KeepItems);
    if (!KeepItems) ClearView();
    std::string fsName;
    lastAccessDateOnly_ = !p.Files().VolumeFileSystemName(p.RootOf(currentFolder_), fsName) ||
                          fsName.compare(0, 3, "FAT") == 0;
    capturedPattern_ = filePattern_;
    listingPath_ = AddSeparator(p, Path);
    const std::string folderPath = AddSeparator(p, currentFolder_);
    const SharedText sharedFolderPath(folderPath);
    const ColumnSlots slots = ShownSlots(listView_);
    const LocaleFormats& formats = p.Locale().Formats();
    const NumericSeparators numeric{formats.thousandsSeparator, formats.decimalSeparator};

    if (showGoUp_ && (goUpTopFolder_.empty() || Path != goUpTopFolder_)) {
      ListRow* existing = KeepItems ? listView_.FindRow("sysgoup") : nullptr;
      if (existing) {
        if (auto item = items_->Item(Variant("sysgoup"))) NxFileListItem::Internal::SetFoundInPass(*item, true);
      } else {
        auto item = NxFileListItem::Create();
        NxFileListItem::Internal::SetKey(*item, "sysgoup");
        NxFileListItem::Internal::SetOwner(*item, items_);
        item->setDisplayname("..");
        item->setListItemTyp(typeoffitem::Folder);
        ListRow& row = listView_.AddRow("sysgoup", "..");
        Put(row, slots.ext, "");
        Put(row, slots.typ, typeCache_.Scratch().typeName);
        row.SetImage(p.Icons().SysIconIndex(currentFolder_, 0, kSmallSysIcon));
        items.Add(Variant(item), "sysgoup", COLLECTION_ADD_OPTIONS::EndOfCollection);
        NxFileListItem::Internal::SetFoundInPass(*item, true);
        NxFileListItem::Internal::SetListed(*item, true);
      }
    }

    RowTexts texts;
    const size_t sortKeyBytes = SortKeyBytes();
    p.Files().Enumerate(folderPath, [&](const FindData& entry) {
      if (!entry.name.empty() && entry.name[0] == '.') return true;
      const std::string name = entry.name.substr(0, entry.name.find('\0'));
      const std::string ext = GetExt(name);
      const bool folder = (entry.attributes & kAttrDirectory) != 0;
      if (folder) {
        if ((!showHidden_ && (entry.attributes & kAttrHidden)) || !showFolders_) return true;
      } else {
        if (!showFiles_) return true;
        if (!showHidden_ && (entry.attributes & kAttrHidden)) return true;
        if (!showSystem_) {
          if (entry.attributes & kAttrSystem) return true;
          if (EqualsNoCase(ext, "DLL") || EqualsNoCase(ext, "SYS")) return true;
        }
        if (!PathMatchSpec(name, capturedPattern_)) return true;
      }
      std::string key = name;
      if (IsNumericText(name, numeric)) key = (folder ? "~" : "##$$") + name;
      if (KeepItems && listView_.FindRow(key)) {
        if (auto item = items_->Item(Variant(key))) NxFileListItem::Internal::SetFoundInPass(*item, true);
        return true;
      }

      // The row key and the item's file name share one text when they are the same.
      const SharedText nameText(name);
      ListRow& row = key == name ? listView_.AddRowWithKey(nameText, name) : listView_.AddRow(key, name);
      texts.Clear();
      auto item = NxFileListItem::Create();
      NxFileListItem::Internal::ShareFileName(*item, nameText);
      NxFileListItem::Internal::SetKey(*item, key);
      NxFileListItem::Internal::SetOwner(*item, items_);
      item->setDisplayname(name);
      NxFileListItem::Internal::SharePath(*item, sharedFolderPath);
      texts.Put(slots.ext, ext);
      int32_t icon = 0;
      if (folder) {
        item->setListItemTyp(typeoffitem::Folder);
        icon = p.Icons().SysIconIndex(folderPath + name, 0, kSmallSysIcon);
        typeCache_.Scratch().iconIndex = icon;
        texts.Put(slots.typ, typeCache_.Scratch().typeName);
      } else {
        item->setListItemTyp(typeoffitem::file);
        const uint64_t size = MakeInt64(entry.sizeHigh, entry.sizeLow);
        if (slots.siz > 0) texts.Put(slots.siz, SizeText(formats, static_cast<double>(size)));
        // The public size is 32-bit: 2 GiB and more read as the largest value.
        item->setFileSize(size > 2147483647ULL ? 2147483647 : static_cast<int32_t>(size));
        // The full path is only built when the extension is new to the cache.
        const TypeCacheEntry* type = ext.empty() ? nullptr : typeCache_.Find(ext);
        if (!type && !ext.empty()) type = FileTypeEntry(ext, folderPath + name, false);
        if (type) {
          icon = type->iconIndex;
          texts.Put(slots.typ, type->typeName);
          NxFileListItem::Internal::ShareFileTyp(*item, type->sharedTypeName);
          NxFileListItem::Internal::ShareExtension(*item, type->sharedExtension);
        }
        if (HasOwnIcon(ext)) icon = p.Icons().SysIconIndex(folderPath + name, 0, kSmallSysIcon);
      }
      const double written = FileTimeToDate(p, entry.lastWriteTime, true);
      const double writtenDay = std::floor(written);
      if (slots.mod > 0) texts.Put(slots.mod, DateText(formats, written));
      item->setDateModified(Variant(DateValue{writtenDay}));
      if (slots.tim > 0) texts.Put(slots.tim, TimeText(formats, written));
      item->setTimeModified(Variant(DateValue{written - writtenDay}));
      const double created = FileTimeToDate(p, entry.creationTime, true);
      if (slots.cre > 0) texts.Put(slots.cre, DateTimeText(formats, created));
      item->setDateCreated(Variant(DateValue{std::floor(created)}));
      item->setTimeCreated(Variant(DateValue{created - std::floor(created)}));
      const double accessed = FileTimeToDate(p, entry.lastAccessTime, true);
      if (lastAccessDateOnly_) {
        if (slots.acc > 0) texts.Put(slots.acc, DateText(formats, accessed));
        item->setLastAccessed(Variant(DateValue{std::floor(accessed)}));
      } else {
        if (slots.acc > 0) texts.Put(slots.acc, DateTimeText(formats, accessed));
        item->setLastAccessed(Variant(DateValue{accessed}));
      }
      if (slots.atr > 0) texts.Put(slots.atr, GetAttrString(entry.attributes));
      item->setAttributes(static_cast<int32_t>(entry.attributes));
      const std::string dos = entry.shortName.empty() || entry.shortName[0] == '\0'
                                  ? p.Locale().CharUpper(name)
                                  : entry.shortName.substr(0, entry.shortName.find('\0'));
      texts.Put(slots.dos, dos);
      item->setDosName(Variant(dos));
      if (!KeepItems && events_) {
        // Items added by a refresh get no user data, on purpose.
        std::string a, b;
        auto handed = item;
        Subscribe(item);
        events_->SetUserdata(handed, a, b);
        texts.Put(slots.userd1, a);
        texts.Put(slots.userd2, b);
        item->setUserDataA(a);
        item->setUserDataB(b);
      }
      texts.WriteTo(row, sortKeyBytes);
      items.Add(Variant(item), key, COLLECTION_ADD_OPTIONS::EndOfCollection);
      NxFileListItem::Internal::SetFoundInPass(*item, true);
      NxFileListItem::Internal::SetListed(*item, true);
      row.SetImage(icon);
      return true;
    });

    if (KeepItems) {
      // One pass gives what a sweep restarting after every removal gives:
      // every unfound row goes, and its item with it (the go-up item stays
      // in the collection even when its row goes).
      std::unordered_set<std::string_view> gone;
      for (const auto& item : *items_)
        if (item && !NxFileListItem::Internal::FoundInPass(*item) && listView_.FindRow(item->Key()))
          gone.insert(item->Key());
      if (!gone.empty()) {
        // The keys are views into the items, which the collection still holds here.
        std::vector<std::string> removed(gone.begin(), gone.end());
        listView_.RemoveRowsIf([&](const ListRow& r) { return gone.count(r.Key()) > 0; });
        for (const std::string& key : removed)
          if (key != "sysgoup") items.Remove(Variant(key));
      }
    }

    listView_.SetVisible(true);
    listView_.Refresh();
    p.Ui().SetMousePointer(oldPointer);
    AnnounceNewView(currentFolder_);
    SortView(ResetSort);
    if (SelectFirst && listView_.RowCount() > 0) {
      listView_.Row(0).SetSelected(true);
      listView_.EnsureVisible(0);
    }
  } catch (const std::exception& e) {
    RecordException(e);
    listView_.SetVisible(true);
    p.Ui().SetMousePointer(oldPointer);
    busy_ = false;
    p.Ui().LockWindowUpdate(false);
    ShowError(p, ".LoadFiles");
    return;
  }
  busy_ = false;
  p.Ui().LockWindowUpdate(false);
}

void FileViewer::AnnounceNewView(const std::string& location) {
  if (!events_) {
    lastAnnouncedFolder_ = location;
    return;
  }
  std::string path = location;
  bool canPrevious = false, canNext = false, inside = insideArchive_;
  events_->AfterNewView(path, canPrevious, canNext, inside);
  if (location != lastAnnouncedFolder_) {
    lastAnnouncedFolder_ = location;
    std::string folder = location;
    events_->OnCurrentFolderChanged(folder);
  }
}

}  // namespace nxfv
