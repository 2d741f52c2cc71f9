// FileViewer's plain properties: stored values, each let marking its
// property-bag key as changed.
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/viewer_core.h"

namespace nxfv {

void FileViewer::SetEventListener(FileViewerEvents* listener) { core_->events = listener; }
Platform& FileViewer::platform() { return core_->platform; }
ListView& FileViewer::ListView1() { return core_->listView; }
const ListView& FileViewer::ListView1() const { return core_->listView; }
std::shared_ptr<NxFileCollection> FileViewer::Items() const { return core_->items; }
int32_t FileViewer::ItemCount() const { return core_->items->Count(); }
int16_t FileViewer::InstanceSlot() const { return core_->instanceSlot; }
void FileViewer::SetUserMode(bool runMode) { core_->userMode = runMode; }
bool FileViewer::UserMode() const { return core_->userMode; }
const std::string& FileViewer::Currentfolder() const { return core_->currentFolder; }
bool FileViewer::InsideArchive() const { return core_->insideArchive; }
const std::vector<std::string>& FileViewer::ChangedProperties() const { return core_->changedProperties; }
int32_t FileViewer::ViewOptions() const { return core_->settings.viewOptions; }
kCollection& FileViewer::HeaderOptions() { return *core_->headerOptions; }
const std::string& FileViewer::LockedColumns() const { return core_->Slot().lockedColumns; }

bool FileViewer::ShowFolders() const { return core_->settings.showFolders; }
void FileViewer::setShowFolders(bool v) { core_->settings.showFolders = v; core_->PropertyChanged("ShowFolders"); }
bool FileViewer::ShowFiles() const { return core_->settings.showFiles; }
void FileViewer::setShowFiles(bool v) { core_->settings.showFiles = v; core_->PropertyChanged("ShowFiles"); }
bool FileViewer::ShowHiddenItems() const { return core_->settings.showHidden; }
void FileViewer::setShowHiddenItems(bool v) { core_->settings.showHidden = v; core_->PropertyChanged("ShowHiddenItems"); }
bool FileViewer::ShowSysItems() const { return core_->settings.showSystem; }
void FileViewer::setShowSysItems(bool v) { core_->settings.showSystem = v; core_->PropertyChanged("ShowSysItems"); }
bool FileViewer::ShowGOUPFolder() const { return core_->settings.showGoUp; }
void FileViewer::setShowGOUPFolder(bool v) { core_->settings.showGoUp = v; core_->PropertyChanged("ShowGOUPFolder"); }
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
bool FileViewer::AllowDiveIntoArchives() const { return core_->settings.allowDiveIntoArchives; }
void FileViewer::setAllowDiveIntoArchives(bool v) {
  core_->settings.allowDiveIntoArchives = v;
  core_->PropertyChanged("AllowDiveIntoArchives");
}
bool FileViewer::AllowMultiColumnSort() const { return core_->settings.allowMultiColumnSort; }
void FileViewer::setAllowMultiColumnSort(bool v) {
  core_->settings.allowMultiColumnSort = v;
  core_->PropertyChanged("AllowMulticolumnsort");
}
ViewStyles FileViewer::ViewStyle() const { return core_->listView.ViewStyle(); }
void FileViewer::setViewStyle(ViewStyles v) {
  core_->listView.SetViewStyle(v);
  core_->PropertyChanged("ViewStyle");
}

}  // namespace nxfv
