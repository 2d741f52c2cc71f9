#include "nxfv/control/navigation.h"

#include <cctype>
#include <functional>

#include "nxfv/control/drives_view.h"
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/viewer_core.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/shell/shell_folders.h"

namespace nxfv {

bool SamePlace(const Platform& platform, const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  if (!platform.PathsIgnoreCase()) return a == b;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::toupper(static_cast<unsigned char>(a[i])) != std::toupper(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

std::string WithoutTrailingSeparator(Platform& platform, const std::string& path) {
  if (path.size() > 1 && path.back() == platform.Separator() && path != platform.RootOf(path))
    return path.substr(0, path.size() - 1);
  return path;
}

std::string ParentLocation(Platform& platform, const std::string& path) {
  const std::string p = WithoutTrailingSeparator(platform, path);
  const std::string root = platform.RootOf(p);
  if (p.size() <= root.size()) return "";
  const size_t at = p.find_last_of(platform.Separator());
  if (at == std::string::npos) return "";
  return at < root.size() ? root : p.substr(0, at);
}

std::string JoinLocation(Platform& platform, const std::string& folder, const std::string& name) {
  if (!folder.empty() && folder.back() == platform.Separator()) return folder + name;
  return folder + platform.Separator() + name;
}

void ShowDrives(ViewerCore& core) { LoadDrives(core); }

namespace {

bool Exists(Platform& platform, const std::string& path, uint32_t& attributes) {
  return !path.empty() && platform.Files().GetAttributes(path, attributes);
}

bool OnView(const ViewerCore& c, const HistoryEntry& e) {
  if (e.drives) return c.showingDrives;
  return !c.showingDrives && SamePlace(c.platform, c.currentFolder, e.path);
}

// One step back (-1) or ahead (+1). The position moves before the listing,
// so the listing's announcement finds itself already current; a listing
// that did not happen moves it back.
void StepHistory(ViewerCore& c, int step, const std::function<void(const std::string&)>& list) {
  if (c.busy || (step < 0 ? !c.history.CanGoPrevious() : !c.history.CanGoNext())) return;
  const HistoryEntry target = step < 0 ? c.history.Previous() : c.history.Next();
  uint32_t attributes = 0;
  if (!target.drives && !Exists(c.platform, target.path, attributes)) {
    if (step < 0) c.history.DropPrevious(); else c.history.DropNext();
    RaiseError(kErrPathNotFound);
  }
  const size_t moved = step < 0 ? c.history.Position() - 1 : c.history.Position() + 1;
  c.history.Step(step);
  if (target.drives) ShowDrives(c); else list(target.path);
  if (!OnView(c, target) && c.history.Position() == moved) c.history.Step(-step);
}

bool ValidFolderName(const Platform& platform, const std::string& name) {
  if (name.empty() || name == "." || name == "..") return false;
  return name.find(platform.Separator()) == std::string::npos && name.find('/') == std::string::npos &&
         name.find('\0') == std::string::npos;
}

std::string FreeFolderName(Platform& platform, const std::string& parent) {
  uint32_t attributes = 0;
  for (int n = 1; n < 10000; ++n) {
    const std::string name = n == 1 ? "New Folder" : "New Folder (" + std::to_string(n) + ")";
    if (!Exists(platform, JoinLocation(platform, parent, name), attributes)) return name;
  }
  RaiseError(kErrPathFileAccess);
}

void SelectOnly(ListView& view, const std::string& text) {
  for (size_t i = 0; i < view.RowCount(); ++i) view.Row(i).SetSelected(view.Row(i).Text() == text);
}

}  // namespace

bool FileViewer::GoUP() {
  ViewerCore& c = *core_;
  bool moved = false;
  RunReported(c.platform, ".GoUP", [&] {
    if (c.busy || c.showingDrives || c.currentFolder.empty()) return;
    const std::string from = c.currentFolder;
    const std::string top = WithoutTrailingSeparator(c.platform, c.settings.goUpTopFolder);
    if (!c.insideArchive && !top.empty() && SamePlace(c.platform, from, top)) return;
    const std::string parent = ParentLocation(c.platform, from);
    if (parent.empty()) {
      ShowDrives(c);
      moved = c.showingDrives;
      return;
    }
    ListLocation(parent);
    moved = !c.insideArchive && SamePlace(c.platform, c.currentFolder, parent);
  });
  return moved;
}

Variant FileViewer::HistoryPrevious() {
  RunReported(core_->platform, ".HistoryPrevious", [&] {
    StepHistory(*core_, -1, [this](const std::string& p) { ListLocation(p); });
  });
  return {};
}

Variant FileViewer::HistoryNext() {
  RunReported(core_->platform, ".HistoryNext", [&] {
    StepHistory(*core_, +1, [this](const std::string& p) { ListLocation(p); });
  });
  return {};
}

bool FileViewer::CanGoPrevious() const { return core_->history.CanGoPrevious(); }
bool FileViewer::CanGoNext() const { return core_->history.CanGoNext(); }

std::string FileViewer::GetSpecialFolder(SHFolders NewFolder) {
  std::string path;
  RunRecorded([&] { path = SpecialFolderPath(core_->platform, NewFolder); });
  return path;
}

bool FileViewer::SetToSpecialFolder(SHFolders NewFolder) {
  ViewerCore& c = *core_;
  bool moved = false;
  RunReported(c.platform, ".SetToSpecialFolder", [&] {
    if (c.busy) return;
    if (NewFolder == CSIDL_DRIVES) {
      ShowDrives(c);
      moved = c.showingDrives;
      return;
    }
    const std::string path = WithoutTrailingSeparator(c.platform, SpecialFolderPath(c.platform, NewFolder));
    if (path.empty()) return;
    ListLocation(path);
    moved = !c.showingDrives && SamePlace(c.platform, c.currentFolder, path);
  });
  return moved;
}

Variant FileViewer::ResetToStartingFolder() {
  ViewerCore& c = *core_;
  RunReported(c.platform, ".ResetToStartingFolder", [&] {
    if (c.busy) return;
    ListLocation(c.settings.startingFolder.empty() ? c.platform.DefaultStartFolder() : c.settings.startingFolder);
  });
  return {};
}

Variant FileViewer::ResetToDesktop() {
  ViewerCore& c = *core_;
  RunReported(c.platform, ".ResetToDesktop", [&] {
    if (c.busy) return;
    std::string path = SpecialFolderPath(c.platform, CSIDL_DESKTOP);
    if (path.empty()) path = SpecialFolderPath(c.platform, CSIDL_DESKTOPDIRECTORY);
    if (path.empty()) path = c.platform.DefaultStartFolder();
    ListLocation(path);
  });
  return {};
}

bool FileViewer::SelectCurrentFolder(const std::string& Titel) {
  ViewerCore& c = *core_;
  bool moved = false;
  RunReported(c.platform, ".SelectCurrentFolder", [&] {
    if (c.busy) return;
    std::string chosen;
    const std::string start = c.insideArchive ? ParentLocation(c.platform, c.currentFolder) : c.currentFolder;
    if (!c.platform.FolderPicker().PickFolder(Titel, start, chosen) || chosen.empty()) return;
    const std::string path = WithoutTrailingSeparator(c.platform, chosen);
    ListLocation(path);
    moved = SamePlace(c.platform, c.currentFolder, path);
  });
  return moved;
}

bool FileViewer::CreateNewFolder(const std::string& NewFolderName, const std::string& NewPath) {
  ViewerCore& c = *core_;
  bool made = false, inView = false;
  std::string name;
  RunReported(c.platform, ".CreateNewFolder", [&] {
    const bool here = NewPath.empty();
    const std::string parent =
        here ? (c.insideArchive || c.showingDrives ? std::string() : c.currentFolder) : WithoutTrailingSeparator(c.platform, NewPath);
    uint32_t attributes = 0;
    if (!Exists(c.platform, parent, attributes) || !(attributes & kAttrDirectory)) RaiseError(kErrPathNotFound);
    name = NewFolderName.empty() ? FreeFolderName(c.platform, parent) : NewFolderName;
    if (!ValidFolderName(c.platform, name)) RaiseError(kErrBadFileName);
    const std::string full = JoinLocation(c.platform, parent, name);
    if (Exists(c.platform, full, attributes)) RaiseError(58, "File already exists");
    if (!c.platform.Files().CreateFolder(full)) RaiseError(kErrPathFileAccess);
    made = true;
    inView = !c.insideArchive && !c.showingDrives && SamePlace(c.platform, c.currentFolder, parent);
  });
  if (inView && !core_->busy) {
    RefreshView(false);
    SelectOnly(core_->listView, name);
  }
  return made;
}

}  // namespace nxfv
