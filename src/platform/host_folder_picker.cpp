#include "nxfv/platform/host_folder_picker.h"

namespace nxfv {

bool HostFolderPicker::PickFolder(const std::string& title, const std::string& startFolder, std::string& chosen) {
  chosen.clear();
  bool picked = false;
  if (handler_) {
    // The handler is host code; nothing it throws may travel back up
    // through the control into the host again.
    try {
      picked = handler_(title, startFolder, chosen);
    } catch (...) {
      picked = false;
    }
  }
  if (!picked || chosen.empty()) {
    chosen.clear();
    return false;
  }
  return true;
}

}  // namespace nxfv
