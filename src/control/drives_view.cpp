#include "nxfv/control/drives_view.h"

#include <algorithm>

#include "nxfv/columns/formatting.h"
#include "nxfv/control/column_setup.h"
#include "nxfv/control/host_events.h"
#include "nxfv/control/listing_guard.h"
#include "nxfv/control/row_texts.h"
#include "nxfv/shell/shell_folders.h"

namespace nxfv {

namespace {

struct DriveRow {
  std::string key;       // the volume root or the folder's path
  std::string name;      // what the row shows
  std::string path;      // the item's Path
  std::string fileName;  // the item's FileName ("" for a volume)
  typeoffitem type = typeoffitem::Drive;
  FileSystemService::VolumeDetails volume;
};

class DrivesBuilder {
 public:
  explicit DrivesBuilder(ViewerCore& core)
      : core_(core),
        view_(core.listView),
        ext_(view_.FindColumn("ext")),
        siz_(view_.FindColumn("siz")),
        typ_(view_.FindColumn("typ")),
        userd1_(view_.FindColumn("userd1")),
        userd2_(view_.FindColumn("userd2")) {}

  void Captions() {
    if (ext_ > 0) view_.SetColumnCaption(ext_, "Free Space");
    if (siz_ > 0) view_.SetColumnCaption(siz_, "Total Size");
    if (typ_ > 0) view_.SetColumnCaption(typ_, "File System");
  }

  void Add(DriveRow r) {
    if (view_.FindRow(r.key)) return;  // a special folder that is also a volume
    const LocaleFormats& formats = core_.platform.Locale().Formats();
    auto item = NxFileListItem::Create();
    NxFileListItem::Internal::SetKey(*item, r.key);
    NxFileListItem::Internal::SetOwner(*item, core_.items);
    item->setListItemTyp(r.type);
    item->setDisplayname(r.name);
    item->setFileName(r.fileName);
    item->setPath(r.path);
    item->setAttributes(static_cast<int32_t>(kAttrDirectory));
    texts_.Clear();
    if (r.type == typeoffitem::Drive) {
      // A drive without a medium tells nothing; one that tells no size shows none.
      item->setFileTyp(r.volume.fileSystem);
      texts_.Put(typ_, r.volume.fileSystem);
      if (r.volume.totalBytes > 0) {
        item->setFileSize(r.volume.totalBytes > 2147483647ULL ? 2147483647
                                                              : static_cast<int32_t>(r.volume.totalBytes));
        texts_.Put(ext_, SizeText(formats, static_cast<double>(r.volume.freeBytes)));
        texts_.Put(siz_, SizeText(formats, static_cast<double>(r.volume.totalBytes)));
      }
    } else {
      item->setFileTyp(core_.fileTypes.Cache().Scratch().typeName);
      texts_.Put(typ_, core_.fileTypes.Cache().Scratch().typeName);
    }
    ListRow& row = view_.AddRow(r.key, r.name);
    std::string a, b;
    AskUserData(core_, item, a, b);
    texts_.Put(userd1_, a);
    texts_.Put(userd2_, b);
    item->setUserDataA(a);
    item->setUserDataB(b);
    texts_.WriteTo(row, core_.sort.KeyBytes());
    row.SetImage(core_.platform.Icons().SysIconIndex(r.path + r.fileName, 0, kSmallSysIcon));
    NxFileCollection::Internal(*core_.items).Add(Variant(item), r.key, COLLECTION_ADD_OPTIONS::EndOfCollection);
    NxFileListItem::Internal::SetListed(*item, true);
  }

 private:
  ViewerCore& core_;
  ListView& view_;
  const int32_t ext_, siz_, typ_, userd1_, userd2_;
  RowTexts texts_;
};

DriveRow VolumeRow(Platform& p, const std::string& root) {
  DriveRow r;
  r.key = r.path = r.name = root;
  if (!p.Files().VolumeInformation(root, r.volume)) r.volume = {};  // no medium: no figures
  if (!r.volume.label.empty()) r.name = r.volume.label;
  return r;
}

// The folder at path as a row, split the way a folder listing's items are.
bool FolderRow(Platform& p, int32_t csidl, DriveRow& r) {
  std::string path = SpecialFolderPath(p, csidl);
  while (path.size() > 1 && path.back() == p.Separator() && path != p.RootOf(path)) path.pop_back();
  uint32_t attributes = 0;
  if (path.empty() || !p.Files().GetAttributes(path, attributes) || (attributes & kAttrDirectory) == 0)
    return false;
  const size_t cut = path.rfind(p.Separator());
  if (cut == std::string::npos || cut + 1 == path.size()) return false;  // a root is a volume
  r.key = path;
  r.type = typeoffitem::Folder;
  r.path = path.substr(0, cut + 1);
  r.fileName = path.substr(cut + 1);
  r.name = csidl == CSIDL_PROFILE ? "Home" : r.fileName;
  return true;
}

}  // namespace

void LoadDrives(ViewerCore& core) {
  ListingGuard guard(core);
  if (!guard.Acquired()) return;
  core.insideArchive = false;
  core.currentFolder.clear();
  core.Slot().currentFolder.clear();
  core.autoRefresh.FollowLocation(true);
  ApplyColumns(core, false);
  core.ClearItems();
  DrivesBuilder rows(core);
  rows.Captions();
  for (const std::string& root : core.platform.Drives()) rows.Add(VolumeRow(core.platform, root));
  for (int32_t csidl : {CSIDL_PROFILE, CSIDL_DESKTOPDIRECTORY, CSIDL_PERSONAL, CSIDL_MYMUSIC, CSIDL_MYPICTURES,
                        CSIDL_MYVIDEO}) {
    DriveRow r;
    if (FolderRow(core.platform, csidl, r)) rows.Add(std::move(r));
  }
  core.listView.SetVisible(true);
  core.listView.Refresh();
  AnnounceNewView(core, core.currentFolder);
  core.sort.Run(core.listView, core.platform, false);
}

}  // namespace nxfv
