// The control's side of its NxFileoperation: it answers the object's
// questions (the selection, the new name of a rename, a refresh) and runs
// the file commands that reach the control from its items and its keys.
//
// Item commands act on the one item whatever is selected: IcCopy / IcCut
// put the item on the file clipboard, IcPaste pastes into the item when it
// is a folder and into the current folder otherwise (IcCreateShortcut the
// same with links), IcDelete deletes it, and the six verbs run on its full
// path. Keys (with DefaultKeyHandling): Delete deletes the selection
// (Shift+Delete without the trash), Ctrl+C / Ctrl+X copy or cut it, Ctrl+V
// pastes into the current folder.
#pragma once

#include <memory>

#include "nxfv/control/file_operation.h"

namespace nxfv {

class FileViewer;

class FileCommands : public NxFileoperationEvents {
 public:
  explicit FileCommands(FileViewer& viewer);
  ~FileCommands() override;

  const std::shared_ptr<NxFileoperation>& Operation() const { return operation_; }

  // A file command of an item; true when it did all of it.
  bool ItemCommand(const std::shared_ptr<NxFileListItem>& item, ItemFileCommands command, Variant& Parameter);
  // A key of the default key handling; true when the key was a file command.
  bool Key(int16_t keyCode, int16_t mods);

  void OnRenameFileOrFolder(std::shared_ptr<NxFileListItem>& Item, std::string& newname, bool& Cancel) override;
  void Dorefresh(bool& allways) override;
  void Getselecteditems(std::shared_ptr<NxFileCollection>& Item) override;

 private:
  std::string PasteTarget(const NxFileListItem& item) const;

  FileViewer& viewer_;
  std::shared_ptr<NxFileoperation> operation_;
};

}  // namespace nxfv
