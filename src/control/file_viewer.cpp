#include "control/file_viewer.h"

#include <algorithm>

#include "columns/formatting.h"
#include "control/instance_table.h"
#include "control/row_texts.h"
#include "platform/error_state.h"
#include "shell/path_text.h"
#include "shell/show_error.h"

namespace nxfv {

// Bridges the items' xselitemx to the control without keeping it alive.
class FileViewer::ItemListener : public NxFileListItemEvents {
 public:
  explicit ItemListener(FileViewer* owner) : owner_(owner) {}
  void xselitemx(eventbefs& mybef, Variant& itemvalue, std::shared_ptr<NxFileListItem>& xitem, Variant& Parameter,
                 bool& operationok) override {
    if (owner_) owner_->HandleItemEvent(mybef, itemvalue, xitem, Parameter, operationok);
  }
  void Detach() { owner_ = nullptr; }

 private:
  FileViewer* owner_;
};

std::shared_ptr<FileViewer> FileViewer::Create(PlatformRef platform) {
  auto viewer = std::make_shared<FileViewer>(Passkey{}, std::move(platform));
  viewer->Initialize();
  return viewer;
}

FileViewer::FileViewer(Passkey, PlatformRef platform)
    : platform_(platform ? std::move(platform) : ActivePlatformRef()),
      items_(NxFileCollection::Create(platform_)),
      headerOptions_(std::make_shared<kCollection>(platform_)),
      itemListener_(std::make_shared<ItemListener>(this)) {
  instanceSlot_ = InstanceTable::ForThisThread().TakeSlot();
  startingFolder_ = platform_->DefaultStartFolder();
}

FileViewer::~FileViewer() { itemListener_->Detach(); }

void FileViewer::Initialize() {
  // A new control starts from the defaults: captions from the system, the
  // built-in header options, the columns, then the mask applied.
  try {
    captions_ = LoadColumnCaptions(*platform_);
    typeCache_.Scratch().typeName = "Folder";
    CompleteHeaderOptions();
    BuildColumns(false);
    BuildColumns(true);
    listView_.SetVisible(true);
  } catch (const std::exception& e) {
    RecordException(e);
    ShowError(*platform_, ".Initialize");
  }
}

const std::string& FileViewer::LockedColumns() const {
  return InstanceTable::ForThisThread().Row(instanceSlot_).lockedColumns;
}

bool FileViewer::IsArchivePath(const std::string& path) const {
  if (path.size() < 4) return false;
  std::string tail = path.substr(path.size() - 4);
  std::transform(tail.begin(), tail.end(), tail.begin(), [](unsigned char c) { return std::tolower(c); });
  return tail == ".zip" || tail == ".cab";
}

void FileViewer::setCurrentfolder(const std::string& folder) {
  try {
    std::string path = folder;
    const char sep = platform_->Separator();
    // One trailing separator goes, but a root keeps its own.
    if (!path.empty() && path.back() == sep && path != platform_->RootOf(path) && path.size() > 1)
      path.pop_back();
    uint32_t attributes = 0;
    if (path.empty() || !platform_->Files().GetAttributes(path, attributes)) RaiseError(kErrPathNotFound);
    const bool isFolder = (attributes & kAttrDirectory) != 0;
    if (!isFolder && allowDiveIntoArchives_ && IsArchivePath(path)) {
      PropertyChanged("CurrentFolder");
      LoadArchive(path);
      return;
    }
    if (!isFolder) RaiseError(kErrPathNotFound);
    currentFolder_ = path;
    insideArchive_ = false;
    InstanceTable::ForThisThread().Row(instanceSlot_).currentFolder = currentFolder_;
    PropertyChanged("CurrentFolder");
    LoadFiles(currentFolder_, false, false, false);
  } catch (const std::exception& e) {
    RecordException(e);
    ShowError(*platform_, ".Currentfolder");
  }
}

Variant FileViewer::RefreshView(bool ReLoadFiles) {
  if (currentFolder_.empty()) return {};
  if (insideArchive_) {
    LoadArchive(currentFolder_);
  } else {
    LoadFiles(currentFolder_, !ReLoadFiles, false, false);
  }
  return {};
}

void FileViewer::setFilePattern(const std::string& pattern) {
  filePattern_ = pattern;
  PropertyChanged("pattern");
  if (!currentFolder_.empty() && !insideArchive_) LoadFiles(currentFolder_, false, false, false);
}

std::string FileViewer::GetExt(const std::string& Name) const {
  const auto dot = Name.rfind('.');
  if (dot == std::string::npos || dot + 1 >= Name.size()) return {};
  return platform_->Locale().CharLower(Name.substr(dot + 1));
}

std::string FileViewer::FitFilenameToSize(const std::string& FileName, int32_t ControlWidth, int32_t ContainerHDC) {
  return nxfv::FitFilenameToSize(*platform_, FileName, ControlWidth, ContainerHDC);
}

void FileViewer::Subscribe(const std::shared_ptr<NxFileListItem>& item) {
  if (oListitem_ == item) return;
  if (oListitem_) oListitem_->ClearListener();
  oListitem_ = item;
  if (oListitem_) oListitem_->SetListener(itemListener_);
}

// Items ask the control to act on the row with their key.
void FileViewer::HandleItemEvent(eventbefs mybef, Variant& itemvalue, std::shared_ptr<NxFileListItem>& xitem,
                                 Variant& /*Parameter*/, bool& /*operationok*/) {
  if (!xitem) return;
  ListRow* row = listView_.FindRow(xitem->Key());
  if (!row) return;
  try {
    switch (mybef) {
      case eventbefs::doselect: row->SetSelected(itemvalue.AsBool()); break;
      case eventbefs::docheck: row->SetChecked(itemvalue.AsBool()); break;
      case eventbefs::doensurevisible: listView_.EnsureVisible(row->Index()); break;
      case eventbefs::doexebef: break;  // file commands arrive with the file-operation object
    }
  } catch (const std::exception& e) {
    RecordException(e);
  }
}

}  // namespace nxfv
