// FileViewer's plain properties: stored values, each let telling the host
// the property-bag key it changed (see saved_settings.h for the keys).
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/viewer_core.h"

namespace nxfv {
namespace {

// The list view's look changes one field at a time; the view tells its
// observers when anything differs.
template <class T>
void SetLookField(ViewerCore& core, T ListViewLook::*field, T value, const char* key) {
  ListViewLook look = core.listView.Look();
  look.*field = value;
  core.listView.SetLook(look);
  core.PropertyChanged(key);
}

}  // namespace

// A host listener that throws does not reach the let's caller.
void ViewerCore::PropertyChanged(const char* key) {
  if (propertyListener) RunRecorded([&] { propertyListener->PropertyChanged(key); });
}

void FileViewer::SetEventListener(FileViewerEvents* listener) { core_->events = listener; }
void FileViewer::SetPropertyChangeListener(PropertyChangeListener* listener) { core_->propertyListener = listener; }
Platform& FileViewer::platform() { return core_->platform; }
ListView& FileViewer::ListView1() { return core_->listView; }
const ListView& FileViewer::ListView1() const { return core_->listView; }
std::shared_ptr<NxFileCollection> FileViewer::Items() const { return core_->items; }
// Rows of the list view (the go-up row included), as the host counts them.
int32_t FileViewer::ItemCount() const { return static_cast<int32_t>(core_->listView.RowCount()); }
int16_t FileViewer::InstanceSlot() const { return core_->instanceSlot; }
void FileViewer::SetUserMode(bool runMode) { core_->userMode = runMode; }
bool FileViewer::UserMode() const { return core_->userMode; }
const std::string& FileViewer::Currentfolder() const { return core_->currentFolder; }
bool FileViewer::InsideArchive() const { return core_->insideArchive; }
int32_t FileViewer::ViewOptions() const { return core_->settings.viewOptions; }
kCollection& FileViewer::HeaderOptions() { return *core_->headerOptions; }
const std::string& FileViewer::LockedColumns() const { return core_->Slot().lockedColumns; }

#define NXFV_SETTING(Type, Getter, Setter, field, key)              \
  Type FileViewer::Getter() const { return core_->settings.field; } \
  void FileViewer::Setter(Type v) {                                 \
    core_->settings.field = v;                                      \
    core_->PropertyChanged(key);                                    \
  }

NXFV_SETTING(bool, ShowFolders, setShowFolders, showFolders, "ShowFolders")
NXFV_SETTING(bool, ShowFiles, setShowFiles, showFiles, "ShowFiles")
NXFV_SETTING(bool, ShowHiddenItems, setShowHiddenItems, showHidden, "ShowHiddenItems")
NXFV_SETTING(bool, ShowSysItems, setShowSysItems, showSystem, "ShowSysItems")
NXFV_SETTING(bool, ShowGOUPFolder, setShowGOUPFolder, showGoUp, "ShowGOUPFolder")
NXFV_SETTING(bool, AllowDiveIntoArchives, setAllowDiveIntoArchives, allowDiveIntoArchives, "AllowDiveIntoArchives")
NXFV_SETTING(bool, AllowMultiColumnSort, setAllowMultiColumnSort, allowMultiColumnSort, "AllowMulticolumnsort")
NXFV_SETTING(bool, VirtualFileList, setVirtualFileList, virtualFileList, "VirtualFileList")
NXFV_SETTING(bool, AllowDiveIntoFolders, setAllowDiveIntoFolders, allowDiveIntoFolders, "AllowDiveIntoFolders")
NXFV_SETTING(bool, AllowitemRenaming, setAllowitemRenaming, allowItemRenaming, "AllowitemRenaming")
NXFV_SETTING(bool, AllowFileExecution, setAllowFileExecution, allowFileExecution, "AllowFileExecution")
NXFV_SETTING(bool, AutoUpdate, setAutoUpdate, autoUpdate, "AutoUpdate")
NXFV_SETTING(bool, DefaultKeyHandling, setDefaultKeyHandling, defaultKeyHandling, "DefaultKeyHandling")
#undef NXFV_SETTING

const std::string& FileViewer::FilePattern() const { return core_->settings.filePattern; }
const std::string& FileViewer::GoUpTopFolder() const { return core_->settings.goUpTopFolder; }
void FileViewer::setGoUpTopFolder(const std::string& v) {
  core_->settings.goUpTopFolder = v;
  core_->PropertyChanged("GoUpTopFolder");
}
const std::string& FileViewer::StartingFolder() const { return core_->settings.startingFolder; }
void FileViewer::setStartingFolder(const std::string& v) {
  core_->settings.startingFolder = v;
  core_->PropertyChanged("StartingFolder");
}
ViewStyles FileViewer::ViewStyle() const { return core_->listView.ViewStyle(); }
void FileViewer::setViewStyle(ViewStyles v) {
  core_->listView.SetViewStyle(v);
  core_->PropertyChanged("ViewStyle");
}

// Switches that are both a setting and list view state.
bool FileViewer::AllowMultipleSelection() const { return core_->settings.allowMultipleSelection; }
void FileViewer::setAllowMultipleSelection(bool v) {
  core_->settings.allowMultipleSelection = v;
  SetLookField(*core_, &ListViewLook::multiSelect, v, "AllowMultipleSelection");
}
bool FileViewer::Enabled() const { return core_->settings.enabled; }
void FileViewer::setEnabled(bool v) {
  core_->settings.enabled = v;
  SetLookField(*core_, &ListViewLook::enabled, v, "Enabled");
}
bool FileViewer::AllowMoveColumns() const { return core_->listView.Look().movableColumns; }
void FileViewer::setAllowMoveColumns(bool v) {
  core_->Slot().allowMoveColumns = v;  // the header's drag rule reads the instance record
  SetLookField(*core_, &ListViewLook::movableColumns, v, "AllowMoveColumns");
}

#define NXFV_LOOK(Type, Getter, Setter, field, key)                        \
  Type FileViewer::Getter() const { return core_->listView.Look().field; } \
  void FileViewer::Setter(Type v) { SetLookField(*core_, &ListViewLook::field, v, key); }

NXFV_LOOK(uint32_t, BackColor, setBackColor, backColor, "BackColor")
NXFV_LOOK(uint32_t, TextColor, setTextColor, foreColor, "ForeColor")
NXFV_LOOK(int16_t, Borderstyle, setBorderstyle, borderStyle, "BorderStyle")
NXFV_LOOK(int16_t, Appearance, setAppearance, appearance, "Appearance")
NXFV_LOOK(bool, HideColumnHeaders, setHideColumnHeaders, hideColumnHeaders, "HideColumnHeaders")
NXFV_LOOK(bool, HideSelection, setHideSelection, hideSelection, "HideSelection")
NXFV_LOOK(bool, TrackSelection, setTrackSelection, hoverSelection, "TrackSelection")
NXFV_LOOK(bool, FullRowSelection, setFullRowSelection, fullRowSelection, "FullRowSelection")
NXFV_LOOK(bool, ShowGridLines, setShowGridLines, gridLines, "ShowGridLines")
NXFV_LOOK(bool, ShowCheckBoxes, setShowCheckBoxes, checkBoxes, "ShowCheckBoxes")
#undef NXFV_LOOK

}  // namespace nxfv
