#include "nxfv/control/file_viewer.h"

#include <algorithm>

#include "nxfv/columns/formatting.h"
#include "nxfv/control/archive_view.h"
#include "nxfv/control/column_setup.h"
#include "nxfv/control/drives_view.h"
#include "nxfv/control/file_commands.h"
#include "nxfv/control/file_viewer_internal.h"
#include "nxfv/control/folder_listing.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/lifecycle.h"
#include "nxfv/platform/error_state.h"

namespace nxfv {

std::shared_ptr<FileViewer> FileViewer::Create(PlatformRef platform) {
  if (!platform) return nullptr;
  auto viewer = std::make_shared<FileViewer>(Passkey{}, std::move(platform));
  viewer->Initialize();
  return viewer;
}

FileViewer::FileViewer(Passkey, PlatformRef platform) : core_(std::make_unique<ViewerCore>(std::move(platform))) {
  core_->fileCommands = std::make_unique<FileCommands>(*this);
}

std::shared_ptr<NxFileoperation> FileViewer::FileCommand() {
  core_->fileCommands->Operation()->setControlOwned(true);
  return core_->fileCommands->Operation();
}

FileViewer::~FileViewer() { TerminateControl(*core_); }

void FileViewer::Initialize() {
  // A new control starts from the defaults: captions from the system, the
  // built-in header options, the columns, then the mask applied.
  RunReported(core_->platform, ".Initialize", [&] {
    InitializeControl(*core_);
    core_->captions = LoadColumnCaptions(core_->platform);
    core_->fileTypes.Cache().Scratch().typeName = "Folder";
    nxfv::CompleteHeaderOptions(*core_->headerOptions, core_->captions);
    ApplyColumns(*core_, false);
    ApplyColumns(*core_, true);
    core_->listView.SetVisible(true);
  });
}

bool FileViewer::IsArchivePath(const std::string& path) const {
  if (path.size() < 4) return false;
  std::string tail = path.substr(path.size() - 4);
  std::transform(tail.begin(), tail.end(), tail.begin(), [](unsigned char c) { return std::tolower(c); });
  return tail == ".zip" || tail == ".cab";
}

void FileViewer::setCurrentfolder(const std::string& folder) {
  RunReported(core_->platform, ".Currentfolder", [&] {
    if (core_->busy) return;  // a handler's navigation during a listing is ignored, as the listing would be
    ListLocation(folder);
  });
}

void FileViewer::ListLocation(const std::string& folder) {
  ViewerCore& c = *core_;
  std::string path = folder;
  // One trailing separator goes, but a root keeps its own.
  if (!path.empty() && path.back() == c.platform.Separator() && path != c.platform.RootOf(path) && path.size() > 1)
    path.pop_back();
  uint32_t attributes = 0;
  if (path.empty() || !c.platform.Files().GetAttributes(path, attributes)) RaiseError(kErrPathNotFound);
  const bool isFolder = (attributes & kAttrDirectory) != 0;
  if (!isFolder && c.settings.allowDiveIntoArchives && IsArchivePath(path)) {
    c.PropertyChanged("CurrentFolder");
    RunReported(c.platform, ".LoadArchive", [&] { LoadArchive(c, path); });
    return;
  }
  // Whatever exists passes: a location that cannot be enumerated (a plain
  // file, an unreadable folder) shows only the go-up row.
  c.currentFolder = path;
  c.insideArchive = false;
  c.Slot().currentFolder = path;
  c.PropertyChanged("CurrentFolder");
  RunReported(c.platform, ".LoadFiles", [&] { LoadFiles(c, path, false, false, false); });
}

Variant FileViewer::RefreshView(bool ReLoadFiles) {
  ViewerCore& c = *core_;
  if (c.showingDrives) {  // the drives view has no folder: it is built anew
    RunReported(c.platform, ".LoadDrives", [&] { LoadDrives(c); });
    return {};
  }
  if (c.currentFolder.empty()) return {};
  if (c.insideArchive) {
    RunReported(c.platform, ".LoadArchive", [&] { LoadArchive(c, c.currentFolder); });
  } else {
    RunReported(c.platform, ".LoadFiles", [&] { LoadFiles(c, c.currentFolder, !ReLoadFiles, false, false); });
  }
  return {};
}

void FileViewer::setFilePattern(const std::string& pattern) {
  ViewerCore& c = *core_;
  c.settings.filePattern = pattern;
  c.PropertyChanged("pattern");
  if (!c.currentFolder.empty() && !c.insideArchive)
    RunReported(c.platform, ".LoadFiles", [&] { LoadFiles(c, c.currentFolder, false, false, false); });
}

Variant FileViewer::HeaderOptionsNew() {
  RunRecorded([&] { core_->headerOptions = std::make_shared<kCollection>(core_->platformRef); });
  return {};
}

Variant FileViewer::HeaderOptionsAdd(headerdatas& HeaderOption) {
  RunRecorded([&] { AddHeaderOption(*core_->headerOptions, HeaderOption); });
  return {};
}

Variant FileViewer::HeaderOptionsActivate() {
  if (RunRecorded([&] { nxfv::CompleteHeaderOptions(*core_->headerOptions, core_->captions); })) RefreshView(true);
  return {};
}

Variant FileViewer::HeaderModifying(headerdatas& HeaderOption) {
  RunRecorded([&] {
    headerdatas* found = nullptr;
    if (!FindHeaderOption(*core_->headerOptions, HeaderOption.ShowHeaderItem, found)) return;
    if (!HeaderOption.HeaderText.empty()) found->HeaderText = HeaderOption.HeaderText;
    if (HeaderOption.HeaderWidth != 0) found->HeaderWidth = HeaderOption.HeaderWidth;
    found->HeaderSizeable = HeaderOption.HeaderSizeable;
  });
  return {};
}

void FileViewer::setViewOptions(int32_t mask) {
  // At design time the mask is deliberately left alone.
  if (!core_->userMode) return;
  core_->settings.viewOptions = mask;
  core_->PropertyChanged("ViewOptions");
  RunRecorded([&] { ApplyColumns(*core_, true); });
}

void FileViewer::ClickColumnHeader(int32_t columnIndex, bool ctrlHeld) {
  ViewerCore& c = *core_;
  if (!c.settings.enabled) return;  // a disabled control ignores the user's input
  RunReported(c.platform, ".ColumnClick", [&] {
    if (columnIndex < 0 || columnIndex >= c.listView.ColumnCount()) return;
    if (c.events) c.events->ColumnClick(c.listView.Column(columnIndex));
    const std::string key = c.listView.Column(columnIndex).key;
    if (key == "sort") return;
    c.sort.ApplyClick(key, ctrlHeld, c.settings.allowMultiColumnSort);
    c.sort.Run(c.listView, c.platform, false);
  });
}

void FileViewer::SetSortColumns(const std::vector<SortState>& columns) {
  ViewerCore& c = *core_;
  RunReported(c.platform, ".SortView", [&] {
    c.sort.SetState(columns);
    c.sort.Run(c.listView, c.platform, false);
  });
}

std::vector<SortState> FileViewer::SortColumns() const { return core_->sort.State(); }

std::string FileViewer::FitFilenameToSize(const std::string& FileName, int32_t ControlWidth, int32_t ContainerHDC) {
  std::string out;
  RunRecorded([&] { out = nxfv::FitFilenameToSize(core_->platform, FileName, ControlWidth, ContainerHDC); });
  return out;
}

int16_t FileViewer::Internal::SubItemIndexOf(const FileViewer& v, const std::string& key) {
  return nxfv::SubItemIndexOf(*v.core_, key);
}
void FileViewer::Internal::BuildColumns(FileViewer& v, bool widthsOnly) { ApplyColumns(*v.core_, widthsOnly); }
void FileViewer::Internal::CompleteHeaderOptions(FileViewer& v) {
  nxfv::CompleteHeaderOptions(*v.core_->headerOptions, v.core_->captions);
}
void FileViewer::Internal::LoadFiles(FileViewer& v, const std::string& path, bool keepItems, bool resetSort,
                                     bool selectFirst) {
  nxfv::LoadFiles(*v.core_, path, keepItems, resetSort, selectFirst);
}
void FileViewer::Internal::SortView(FileViewer& v, bool resetSort) {
  v.core_->sort.Run(v.core_->listView, v.core_->platform, resetSort);
}
const TypeCache& FileViewer::Internal::FileTypes(const FileViewer& v) { return v.core_->fileTypes.Cache(); }

}  // namespace nxfv
