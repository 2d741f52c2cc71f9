// Asking the user for a folder.
//
// Contract: called on the host's thread; it blocks until answered. The host
// supplies the dialog (HostFolderPicker). True with the chosen folder in
// chosen; false ("cancelled", chosen emptied) when the user cancels or
// nobody can answer. Nothing throws.
#pragma once

#include <string>

namespace nxfv {

class FolderPickerService {
 public:
  virtual ~FolderPickerService() = default;
  virtual bool PickFolder(const std::string& title, const std::string& startFolder, std::string& chosen) = 0;
};

}  // namespace nxfv
