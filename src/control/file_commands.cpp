#include "nxfv/control/file_commands.h"

#include "nxfv/control/activation.h"
#include "nxfv/control/file_viewer_internal.h"
#include "nxfv/control/label_edit.h"
#include "nxfv/control/selection.h"

namespace nxfv {
namespace {

constexpr int16_t kKeyC = 67;
constexpr int16_t kKeyV = 86;
constexpr int16_t kKeyX = 88;
constexpr int16_t kKeyDelete = 46;

std::string FolderOf(const std::string& path) {
  const size_t at = path.find_last_of("\\/");
  return at == std::string::npos ? "" : path.substr(0, at);
}

Execommands VerbOf(ItemFileCommands command) {
  switch (command) {
    case ItemFileCommands::IcExplore: return Execommands::CmdExplore;
    case ItemFileCommands::IcFind: return Execommands::CmdFind;
    case ItemFileCommands::IcPrint: return Execommands::CmdPrint;
    case ItemFileCommands::IcProperties: return Execommands::CmdProperties;
    case ItemFileCommands::IcEdit: return Execommands::CmdEdit;
    default: return Execommands::CmdOpen;
  }
}

}  // namespace

FileCommands::FileCommands(FileViewer& viewer)
    : viewer_(viewer), operation_(std::make_shared<NxFileoperation>(FileViewer::Internal::Core(viewer).platformRef)) {
  operation_->SetEventListener(this);
}

// The host may keep the object after the control is gone: it then asks
// nobody.
FileCommands::~FileCommands() { operation_->SetEventListener(nullptr); }

void FileCommands::OnRenameFileOrFolder(std::shared_ptr<NxFileListItem>& Item, std::string& newname, bool& Cancel) {
  ViewerCore& c = FileViewer::Internal::Core(viewer_);
  c.itemEvents.Subscribe(Item);
  if (c.events) c.events->OnItemRename(Item, newname, Cancel);
}

void FileCommands::Dorefresh(bool& allways) {
  const ViewerCore& c = FileViewer::Internal::Core(viewer_);
  // The view is only refreshed when it shows files the operation can touch.
  if (c.busy || c.currentFolder.empty() || c.insideArchive || c.showingDrives || c.settings.virtualFileList) return;
  viewer_.RefreshView(allways);
}

void FileCommands::Getselecteditems(std::shared_ptr<NxFileCollection>& Item) {
  ViewerCore& c = FileViewer::Internal::Core(viewer_);
  Item = NxFileCollection::Create(c.platformRef);
  NxFileCollection::Internal into(*Item);
  ListView& view = c.listView;
  for (size_t i = 0; i < view.RowCount(); ++i) {
    const ListRow& row = view.Row(i);
    if (!row.Selected() || selection::IsGoUpRow(row)) continue;
    if (auto item = selection::ItemOfRow(c, row)) into.Add(Variant(item), std::string(row.Key()));
  }
}

std::string FileCommands::PasteTarget(const NxFileListItem& item) const {
  const std::string path = NxFileoperation::SourcePath(item);
  if (item.ListItemTyp() == typeoffitem::Folder) return path;
  return FolderOf(path);
}

bool FileCommands::ItemCommand(const std::shared_ptr<NxFileListItem>& item, ItemFileCommands command,
                               Variant& Parameter) {
  ViewerCore& c = FileViewer::Internal::Core(viewer_);
  NxFileoperation& op = *operation_;
  const std::string path = NxFileoperation::SourcePath(*item);
  if (command == ItemFileCommands::IcRename) return label_edit::RenameCommand(c, item, Parameter);
  if (path.empty()) return false;  // nothing the file operations can touch
  switch (command) {
    case ItemFileCommands::IcCopy: return op.PublishOnClipboard({path}, false);
    case ItemFileCommands::IcCut: return op.PublishOnClipboard({path}, true);
    case ItemFileCommands::IcDelete: {
      const bool ok = op.Run(FO_DELETE, {path}, "");
      bool allways = false;
      Dorefresh(allways);
      return ok;
    }
    case ItemFileCommands::IcPaste: return op.PasteFiles(PasteTarget(*item)) != 0;
    case ItemFileCommands::IcCreateShortcut: return op.PasteAsShortcut(PasteTarget(*item)) != 0;
    default: return op.ExeCmd(path, "", VerbOf(command)).AsBool();
  }
}

bool FileCommands::Key(int16_t keyCode, int16_t mods) {
  ViewerCore& c = FileViewer::Internal::Core(viewer_);
  NxFileoperation& op = *operation_;
  switch (keyCode) {
    case kKeyDelete: {
      if (mods & ~kShiftMask) return false;
      // Shift+Delete deletes for good, as desktops do; the option itself stays.
      const bool undo = op.AllowUndo();
      if (mods == kShiftMask) op.setAllowUndo(false);
      op.DeleteSelectedFiles();
      op.setAllowUndo(undo);
      return true;
    }
    case kKeyC:
    case kKeyX:
      if (mods != kCtrlMask) return false;
      if (keyCode == kKeyC) op.CopySelectedFiles(); else op.CutSelectedFiles();
      return true;
    case kKeyV:
      if (mods != kCtrlMask) return false;
      if (!c.insideArchive && !c.showingDrives && !c.currentFolder.empty()) op.PasteFiles(c.currentFolder);
      return true;
    default:
      return false;
  }
}

}  // namespace nxfv
