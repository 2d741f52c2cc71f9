#include "nxfv/control/virtual_list.h"

#include <cmath>

#include "nxfv/columns/date_text.h"
#include "nxfv/columns/formatting.h"
#include "nxfv/control/column_setup.h"
#include "nxfv/control/host_events.h"
#include "nxfv/control/listing_guard.h"
#include "nxfv/control/row_texts.h"
#include "nxfv/platform/numeric_text.h"

namespace nxfv {

namespace {

int32_t Shown(const ListView& view, const char* key) {
  const int32_t i = view.FindColumn(key);
  return i > 0 && view.Column(i).width > 0 ? i : -1;
}

void PutDates(ViewerCore& core, NxFileListItem& item, const VirtualFile& file, RowTexts& texts) {
  const LocaleFormats& formats = core.platform.Locale().Formats();
  const ListView& view = core.listView;
  if (file.DateModified != 0) {
    const double day = std::floor(file.DateModified);
    texts.Put(Shown(view, "mod"), DateText(formats, file.DateModified));
    texts.Put(Shown(view, "tim"), TimeText(formats, file.DateModified));
    item.setDateModified(Variant(DateValue{day}));
    item.setTimeModified(Variant(DateValue{file.DateModified - day}));
  }
  if (file.DateCreated != 0) {
    texts.Put(Shown(view, "cre"), DateTimeText(formats, file.DateCreated));
    item.setDateCreated(Variant(DateValue{std::floor(file.DateCreated)}));
    item.setTimeCreated(Variant(DateValue{file.DateCreated - std::floor(file.DateCreated)}));
  }
  if (file.LastAccessed != 0) {
    texts.Put(Shown(view, "acc"), DateTimeText(formats, file.LastAccessed));
    item.setLastAccessed(Variant(DateValue{file.LastAccessed}));
  }
}

// The type text and icon of a file entry: the host's text, else the type
// of the extension.
int32_t PutType(ViewerCore& core, NxFileListItem& item, const VirtualFile& file, const std::string& ext,
                RowTexts& texts) {
  const TypeCacheEntry* type = ext.empty() ? nullptr : core.fileTypes.Entry(ext, file.Path + file.FileName, false);
  const std::string text = !file.FileTyp.empty() ? file.FileTyp : type ? type->typeName : std::string();
  texts.Put(Shown(core.listView, "typ"), text);
  item.setFileTyp(text);
  item.setExtension(ext);
  return type ? type->iconIndex : 0;
}

}  // namespace

void BeginVirtualList(ViewerCore& core) {
  ListingGuard guard(core);
  if (!guard.Acquired()) return;
  core.insideArchive = false;
  core.currentFolder.clear();
  core.Slot().currentFolder.clear();
  core.autoRefresh.FollowLocation();
  ApplyColumns(core, false);
  core.ClearItems();
}

void AddVirtualFile(ViewerCore& core, const VirtualFile& file) {
  if (core.busy) return;
  const LocaleFormats& formats = core.platform.Locale().Formats();
  const bool folder = (file.Attributes & static_cast<int32_t>(kAttrDirectory)) != 0;
  const std::string name = file.FileName.substr(0, file.FileName.find('\0'));
  const std::string key =
      IsNumericText(name, {formats.thousandsSeparator, formats.decimalSeparator}) ? (folder ? "~" : "##$$") + name
                                                                                   : name;
  ListRow& row = core.listView.AddRow(key, name);  // a key already shown raises here, before anything else
  auto item = NxFileListItem::Create();
  NxFileListItem::Internal::SetKey(*item, key);
  NxFileListItem::Internal::SetOwner(*item, core.items);
  item->setDisplayname(name);
  item->setFileName(name);
  item->setPath(file.Path);
  item->setAttributes(file.Attributes);
  item->setUserDataA(file.UserDataA);
  item->setUserDataB(file.UserDataB);
  RowTexts texts;
  const ListView& view = core.listView;
  const std::string ext = folder ? std::string() : core.fileTypes.GetExt(name);
  texts.Put(Shown(view, "ext"), ext);
  int32_t icon = 0;
  if (folder) {
    item->setListItemTyp(typeoffitem::VirtualFolder);
    const std::string typeText = file.FileTyp.empty() ? core.fileTypes.Cache().Scratch().typeName : file.FileTyp;
    texts.Put(Shown(view, "typ"), typeText);
    item->setFileTyp(typeText);
    icon = core.platform.Icons().SysIconIndex(file.Path, 0, kSmallSysIcon);
  } else {
    item->setListItemTyp(typeoffitem::file);
    item->setFileSize(file.FileSize > 2147483647ULL ? 2147483647 : static_cast<int32_t>(file.FileSize));
    texts.Put(Shown(view, "siz"), SizeText(formats, static_cast<double>(file.FileSize)));
    icon = PutType(core, *item, file, ext, texts);
  }
  PutDates(core, *item, file, texts);
  texts.Put(Shown(view, "atr"), GetAttrString(static_cast<uint32_t>(file.Attributes)));
  texts.Put(Shown(view, "pth"), file.Path);
  texts.Put(Shown(view, "dos"), core.platform.Locale().CharUpper(name));
  texts.Put(Shown(view, "userd1"), file.UserDataA);
  texts.Put(Shown(view, "userd2"), file.UserDataB);
  texts.WriteTo(row, core.sort.KeyBytes());
  row.SetImage(icon);
  NxFileCollection::Internal(*core.items).Add(Variant(item), key, COLLECTION_ADD_OPTIONS::EndOfCollection);
  NxFileListItem::Internal::SetListed(*item, true);
}

void EndVirtualList(ViewerCore& core) {
  if (core.busy) return;
  core.listView.SetVisible(true);
  core.listView.Refresh();
  AnnounceNewView(core, core.currentFolder);
  core.sort.Run(core.listView, core.platform, false);
}

bool RefusesShellCommands(const NxFileListItem& item) { return item.ListItemTyp() == typeoffitem::VirtualFolder; }

}  // namespace nxfv
