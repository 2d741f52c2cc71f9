// The folder picker answered by the host: the host installs the function
// that shows its dialog. With none installed every request is cancelled,
// which is what a host without a user interface wants.
#pragma once

#include <functional>

#include "nxfv/platform/folder_picker.h"

namespace nxfv {

class HostFolderPicker : public FolderPickerService {
 public:
  // Answers like PickFolder; a "picked" empty folder or an exception it
  // throws counts as cancelled.
  using Handler = std::function<bool(const std::string& title, const std::string& startFolder, std::string& chosen)>;
  bool PickFolder(const std::string& title, const std::string& startFolder, std::string& chosen) override;
  void SetHandler(Handler handler) { handler_ = std::move(handler); }

 private:
  Handler handler_;
};

}  // namespace nxfv
