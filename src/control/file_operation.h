// NxFileoperation: the file commands of a FileViewer (copy, cut, paste,
// delete, rename, paste as shortcut, the shell verbs), reached through the
// control's FileCommand(). Every copy, move, delete and rename is one call
// of the platform's file-operation service; the flag word comes from the
// options (0x48 with the defaults).
//
// Contract
// - The sources are the control's selected items, asked for through
//   Getselecteditems, filtered by xFileHandle; the go-up row, archive
//   entries, drives and virtual folders never take part.
// - An operation without sources shows the common error box captioned
//   "No source files specified file operation" and gives False.
// - Results: the methods that return long give -1 (True) when the service
//   did all of it and 0 (False) otherwise: nothing to do, a failure, or a
//   cancel in the service's questions.
// - Copy and cut remember nothing themselves: they publish the sources on
//   the platform's file clipboard with the copy or cut mark, where other
//   programs see them too; PasteFiles takes what the clipboard holds, so a
//   paste also brings in files copied by another program. A paste after a
//   cut moves and then clears the clipboard; after a copy the clipboard
//   keeps its files for further pastes.
// - PasteAsShortcut makes one symbolic link per clipboard file in DestDir,
//   named like its target; a taken name gets the desktop's " (2)" suffix.
// - ParsePath: JustPath is SourceName up to and including its last
//   separator ("\" or "/"); the name after it is split at its LAST dot into
//   JustName and justextension (without the dot); a dot that starts the
//   name (".bashrc") starts no extension. Returns True when there is a name.
// - ComparePath: equal after dropping one trailing separator (a root keeps
//   its own), with "/" read as "\" where the platform's separator is "\",
//   and letter case ignored where the platform's paths ignore it.
// - Errors inside the methods are shown through the common error box
//   captioned with the method's name (".PasteFiles"); nothing is thrown.
// - The owning control listens through NxFileoperationEvents; without a
//   listener the object sees no selection and refreshes nothing.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "nxfv/export.h"
#include "nxfv/model/file_collection.h"
#include "nxfv/model/file_list_item.h"
#include "nxfv/platform/platform.h"
#include "nxfv/platform/variant.h"

namespace nxfv {

enum class xFileHandle : int32_t { OnlyFiles = 0, OnlyFolders = 1, FilesAndFolders = 2 };
enum class Execommands : int32_t { CmdOpen = 0, CmdPrint = 1, CmdProperties = 2, CmdFind = 3, CmdExplore = 4, CmdEdit = 5 };

class NXFV_EXPORT NxFileoperationEvents {
 public:
  virtual ~NxFileoperationEvents() = default;
  // A rename asks for the new name of Item (newname starts as its name);
  // Cancel or an empty name skips the item.
  virtual void OnRenameFileOrFolder(std::shared_ptr<NxFileListItem>& Item, std::string& newname, bool& Cancel) = 0;
  // The files changed: refresh the view (allways: list it anew).
  virtual void Dorefresh(bool& allways) = 0;
  // Answer with the selected items (null or empty for none).
  virtual void Getselecteditems(std::shared_ptr<NxFileCollection>& Item) = 0;
};

class NXFV_EXPORT NxFileoperation : public Object {
 public:
  explicit NxFileoperation(PlatformRef platform);

  void SetEventListener(NxFileoperationEvents* listener) { events_ = listener; }

  bool AllowUndo() const { return allowUndo_; }
  void setAllowUndo(bool v) { allowUndo_ = v; }
  bool ConfirmMakeDir() const { return confirmMakeDir_; }
  void setConfirmMakeDir(bool v) { confirmMakeDir_ = v; }
  bool ConfirmOperation() const { return confirmOperation_; }
  void setConfirmOperation(bool v) { confirmOperation_ = v; }
  bool RenameOnCollision() const { return renameOnCollision_; }
  void setRenameOnCollision(bool v) { renameOnCollision_ = v; }
  bool SilentMode() const { return silentMode_; }
  void setSilentMode(bool v) { silentMode_ = v; }
  int32_t ParentWnd() const { return parentWnd_; }
  void setParentWnd(int32_t v) { parentWnd_ = v; }

  int32_t CopySelectedFiles(xFileHandle& FilesAndFolders);
  int32_t CopySelectedFiles(xFileHandle&& FilesAndFolders = xFileHandle::FilesAndFolders) {
    return CopySelectedFiles(FilesAndFolders);
  }
  int32_t DeleteSelectedFiles(xFileHandle FilesAndFolders = xFileHandle::FilesAndFolders);
  int32_t RenameSelectedFiles(xFileHandle FilesAndFolders = xFileHandle::FilesAndFolders);
  int32_t CutSelectedFiles(xFileHandle FilesAndFolders = xFileHandle::FilesAndFolders);
  int32_t PasteFiles(const std::string& DestDir);
  // Runs the verb on Path + file (either may be empty). True when the
  // platform started a handler; a verb without one is reported in a box.
  Variant ExeCmd(const std::string& file, const std::string& Path, Execommands mycommand);
  int32_t PasteAsShortcut(const std::string& DestDir);
  Variant ParsePath(const std::string& SourceName, std::string& JustPath, std::string& JustName,
                    std::string& justextension);
  bool ComparePath(const std::string& Patha, const std::string& pathb);

  // For the component's own code: the internal options, and the commands on
  // an explicit list of full paths (the item commands act on one item).
  void setProgressTitle(std::string title) { progressTitle_ = std::move(title); }
  void setFilesOnly(bool v) { filesOnly_ = v; }
  bool ControlOwned() const { return controlOwned_; }
  void setControlOwned(bool v) { controlOwned_ = v; }
  uint16_t FlagWord() const;
  // The engine: one call of the service; true when it did everything.
  bool Run(uint32_t operation, const std::vector<std::string>& sources, const std::string& destination);
  bool PublishOnClipboard(const std::vector<std::string>& sources, bool cut);
  bool Paste(const std::string& destDir);
  bool RenamePath(const std::string& source, const std::string& newName);
  // PasteAsShortcut's links, for an explicit list of targets (files dropped
  // with the link action): -1 when every link was made, else 0.
  int32_t LinkFiles(const std::vector<std::string>& sources, const std::string& DestDir);
  // The full path an item's commands act on; "" for items the file
  // operations cannot touch (go-up row, archive entries, drives, virtual).
  static std::string SourcePath(const NxFileListItem& item);

 private:
  std::vector<std::string> SelectedSources(xFileHandle which);
  std::vector<std::shared_ptr<NxFileListItem>> SelectedItems(xFileHandle which);
  void AskRefresh(bool allways);
  int32_t Reported(const char* label, bool (NxFileoperation::*body)(xFileHandle), xFileHandle which);
  bool Copy(xFileHandle which) { return PublishOnClipboard(SelectedSources(which), false); }
  bool Cut(xFileHandle which) { return PublishOnClipboard(SelectedSources(which), true); }
  bool Delete(xFileHandle which);
  bool RenameEach(xFileHandle which);
  // One symbolic link per source in DestDir under a free name; failures are
  // shown in a box labelled source.
  bool MakeLinks(const std::vector<std::string>& sources, const std::string& DestDir, const char* source);

  PlatformRef platformRef_;
  Platform& platform_;
  NxFileoperationEvents* events_ = nullptr;

  bool allowUndo_ = true;
  bool confirmMakeDir_ = true;
  bool confirmOperation_ = true;
  std::string progressTitle_;
  bool filesOnly_ = true;
  int32_t parentWnd_ = 0;
  bool renameOnCollision_ = true;
  bool silentMode_ = false;
  bool controlOwned_ = false;
};

}  // namespace nxfv
