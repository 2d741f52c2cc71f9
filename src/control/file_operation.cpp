#include "nxfv/control/file_operation.h"

#include "nxfv/control/host_boundary.h"
#include "nxfv/control/navigation.h"
#include "nxfv/platform/free_name.h"
#include "nxfv/shell/path_text.h"

namespace nxfv {
namespace {

constexpr const char* kNoSources = "No source files specified file operation";
constexpr int32_t kNoticeStyle = 48;  // OK + exclamation

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

std::string NameOf(const std::string& path) {
  std::string p = path;
  while (p.size() > 1 && IsSeparator(p.back())) p.pop_back();
  const size_t at = p.find_last_of("\\/");
  return at == std::string::npos ? p : p.substr(at + 1);
}

const char* VerbOf(Execommands command) {
  switch (command) {
    case Execommands::CmdOpen: return "open";
    case Execommands::CmdPrint: return "print";
    case Execommands::CmdProperties: return "properties";
    case Execommands::CmdFind: return "find";
    case Execommands::CmdExplore: return "explore";
    case Execommands::CmdEdit: return "edit";
  }
  return "";
}

}  // namespace

NxFileoperation::NxFileoperation(PlatformRef platform) : platformRef_(std::move(platform)), platform_(*platformRef_) {}

uint16_t NxFileoperation::FlagWord() const {
  uint16_t flags = 0;
  if (allowUndo_) flags |= FOF_ALLOWUNDO;
  if (silentMode_) flags |= FOF_SILENT;
  if (renameOnCollision_) flags |= FOF_RENAMEONCOLLISION;
  if (!confirmOperation_) flags |= FOF_NOCONFIRMATION;
  if (!confirmMakeDir_) flags |= FOF_NOCONFIRMMKDIR;
  if (!filesOnly_) flags |= FOF_FILESONLY;
  if (!progressTitle_.empty()) flags |= FOF_SIMPLEPROGRESS;
  return flags;
}

bool NxFileoperation::Run(uint32_t operation, const std::vector<std::string>& sources, const std::string& destination) {
  if (sources.empty()) {
    ShowError(platform_, kNoSources);
    return false;
  }
  FileOperationRequest request;
  request.parentWindow = parentWnd_;
  request.operation = operation;
  request.sources = sources;
  if (!destination.empty()) request.destinations.push_back(destination);
  // Several sources always say "one destination per source", even when they
  // all go to one folder: the service reads a single destination as the
  // folder for all of them.
  request.flags = FlagWord() | (sources.size() > 1 ? FOF_MULTIDESTFILES : 0);
  if (request.flags & FOF_SIMPLEPROGRESS) request.progressTitle = progressTitle_;
  return platform_.FileOperations().Perform(request).Succeeded();
}

std::string NxFileoperation::SourcePath(const NxFileListItem& item) {
  const typeoffitem type = item.ListItemTyp();
  if (type != typeoffitem::file && type != typeoffitem::Folder) return "";
  if (item.FileName() == ".." || item.ArchivInfo().IsInArchive || item.Path().empty()) return "";
  return std::string(item.Path()) + std::string(item.FileName());
}

std::vector<std::shared_ptr<NxFileListItem>> NxFileoperation::SelectedItems(xFileHandle which) {
  std::shared_ptr<NxFileCollection> selected;
  if (events_) events_->Getselecteditems(selected);
  std::vector<std::shared_ptr<NxFileListItem>> items;
  if (!selected) return items;
  for (const auto& item : *selected) {
    if (!item || SourcePath(*item).empty()) continue;
    const bool folder = item->ListItemTyp() == typeoffitem::Folder;
    if ((which == xFileHandle::OnlyFiles && folder) || (which == xFileHandle::OnlyFolders && !folder)) continue;
    items.push_back(item);
  }
  return items;
}

std::vector<std::string> NxFileoperation::SelectedSources(xFileHandle which) {
  std::vector<std::string> sources;
  for (const auto& item : SelectedItems(which)) sources.push_back(SourcePath(*item));
  return sources;
}

void NxFileoperation::AskRefresh(bool allways) {
  if (events_) events_->Dorefresh(allways);
}

bool NxFileoperation::PublishOnClipboard(const std::vector<std::string>& sources, bool cut) {
  if (sources.empty()) {
    ShowError(platform_, kNoSources);
    return false;
  }
  platform_.Clipboard().SetFiles(sources, cut);
  return true;
}

bool NxFileoperation::Paste(const std::string& destDir) {
  if (destDir.empty()) RaiseError(kErrPathNotFound);
  std::vector<std::string> sources;
  bool cut = false;
  platform_.Clipboard().GetFiles(sources, cut);
  const bool ok = Run(cut ? FO_MOVE : FO_COPY, sources, destDir);
  // The cut files are gone from their old place: pasting them again would
  // find nothing, so the clipboard lets them go.
  if (ok && cut) platform_.Clipboard().Clear();
  if (!sources.empty()) AskRefresh(false);
  return ok;
}

bool NxFileoperation::Delete(xFileHandle which) {
  const bool ok = Run(FO_DELETE, SelectedSources(which), "");
  AskRefresh(false);
  return ok;
}

bool NxFileoperation::RenamePath(const std::string& source, const std::string& newName) {
  if (newName.empty() || newName == "." || newName == ".." || newName.find_first_of(std::string("\\/\0", 3)) != std::string::npos)
    RaiseError(kErrBadFileName);
  std::string folder = source;
  while (folder.size() > 1 && IsSeparator(folder.back())) folder.pop_back();
  const size_t at = folder.find_last_of("\\/");
  folder = at == std::string::npos ? "" : folder.substr(0, at + 1);
  return Run(FO_RENAME, {source}, folder + newName);
}

bool NxFileoperation::RenameEach(xFileHandle which) {
  const auto items = SelectedItems(which);
  if (items.empty()) {
    ShowError(platform_, kNoSources);
    return false;
  }
  bool all = true;
  bool renamedAny = false;
  for (auto item : items) {
    std::string newname(item->FileName());
    bool cancel = false;
    if (events_) events_->OnRenameFileOrFolder(item, newname, cancel);
    if (cancel || newname.empty()) {
      all = false;
      continue;
    }
    if (newname == item->FileName()) continue;
    const bool ok = RenamePath(SourcePath(*item), newname);
    renamedAny = renamedAny || ok;
    all = all && ok;
  }
  if (renamedAny) AskRefresh(false);
  return all;
}

int32_t NxFileoperation::Reported(const char* label, bool (NxFileoperation::*body)(xFileHandle), xFileHandle which) {
  bool ok = false;
  RunReported(platform_, label, [&] { ok = (this->*body)(which); });
  return ok ? -1 : 0;
}

int32_t NxFileoperation::CopySelectedFiles(xFileHandle& FilesAndFolders) {
  return Reported(".CopySelectedFiles", &NxFileoperation::Copy, FilesAndFolders);
}

int32_t NxFileoperation::CutSelectedFiles(xFileHandle FilesAndFolders) {
  return Reported(".CutSelectedFiles", &NxFileoperation::Cut, FilesAndFolders);
}

int32_t NxFileoperation::DeleteSelectedFiles(xFileHandle FilesAndFolders) {
  return Reported(".DeleteSelectedFiles", &NxFileoperation::Delete, FilesAndFolders);
}

int32_t NxFileoperation::RenameSelectedFiles(xFileHandle FilesAndFolders) {
  return Reported(".RenameSelectedFiles", &NxFileoperation::RenameEach, FilesAndFolders);
}

int32_t NxFileoperation::PasteFiles(const std::string& DestDir) {
  bool ok = false;
  RunReported(platform_, ".PasteFiles", [&] { ok = Paste(DestDir); });
  return ok ? -1 : 0;
}

int32_t NxFileoperation::PasteAsShortcut(const std::string& DestDir) {
  bool ok = false;
  RunReported(platform_, ".PasteAsShortcut", [&] {
    std::vector<std::string> sources;
    bool cut = false;
    platform_.Clipboard().GetFiles(sources, cut);
    ok = MakeLinks(sources, DestDir, ".PasteAsShortcut");
  });
  return ok ? -1 : 0;
}

int32_t NxFileoperation::LinkFiles(const std::vector<std::string>& sources, const std::string& DestDir) {
  bool ok = false;
  RunReported(platform_, ".LinkFiles", [&] { ok = MakeLinks(sources, DestDir, ".LinkFiles"); });
  return ok ? -1 : 0;
}

bool NxFileoperation::MakeLinks(const std::vector<std::string>& sources, const std::string& DestDir,
                                const char* source) {
  if (DestDir.empty()) RaiseError(kErrPathNotFound);
  if (sources.empty()) {
    ShowError(platform_, kNoSources);
    return false;
  }
  FileSystemService& files = platform_.Files();
  const std::string folder = AddSeparator(platform_, DestDir);
  bool ok = true;
  for (const std::string& target : sources) {
    const std::string name = NameOf(target);
    uint32_t attributes = 0;
    std::string link = folder + name;
    // A free name in the desktop's style; the link call itself refuses a
    // name taken meanwhile, so nothing is ever replaced.
    const bool toFolder = files.GetAttributes(target, attributes) && (attributes & kAttrDirectory);
    for (uint32_t n = 2; files.GetAttributes(link, attributes) && n < 10000; ++n)
      link = folder + NumberedName(name, toFolder, n);
    if (!files.CreateLink(target, link)) {
      platform_.MessageBox().Show("Cannot create a link to \"" + target + "\" in \"" + DestDir + "\".", kNoticeStyle,
                                  source);
      ok = false;
    }
  }
  AskRefresh(false);
  return ok;
}

Variant NxFileoperation::ExeCmd(const std::string& file, const std::string& Path, Execommands mycommand) {
  bool ok = false;
  RunReported(platform_, ".ExeCmd", [&] {
    std::string full = Path.empty() ? file : file.empty() ? Path : AddSeparator(platform_, Path) + file;
    if (full.empty()) RaiseError(kErrFileNotFound);
    const char* verb = VerbOf(mycommand);
    if (*verb == '\0') RaiseError(kErrInvalidCall);
    ok = platform_.Launcher().Launch(full, verb);
    if (!ok)
      platform_.MessageBox().Show("There is no program to " + std::string(verb) + " \"" + full + "\".", kNoticeStyle,
                                  ".ExeCmd");
  });
  return Variant(ok);
}

Variant NxFileoperation::ParsePath(const std::string& SourceName, std::string& JustPath, std::string& JustName,
                                   std::string& justextension) {
  const size_t at = SourceName.find_last_of("\\/");
  JustPath = at == std::string::npos ? "" : SourceName.substr(0, at + 1);
  const std::string name = at == std::string::npos ? SourceName : SourceName.substr(at + 1);
  const size_t dot = name.find_last_of('.');
  if (dot == std::string::npos || dot == 0) {
    JustName = name;
    justextension.clear();
  } else {
    JustName = name.substr(0, dot);
    justextension = name.substr(dot + 1);
  }
  return Variant(!name.empty());
}

bool NxFileoperation::ComparePath(const std::string& Patha, const std::string& pathb) {
  const char separator = platform_.Separator();
  auto normal = [&](std::string p) {
    if (separator == '\\')
      for (char& c : p)
        if (c == '/') c = '\\';
    if (p.size() > 1 && p.back() == separator && p != platform_.RootOf(p)) p.pop_back();
    return p;
  };
  return SamePlace(platform_, normal(Patha), normal(pathb));
}

}  // namespace nxfv
