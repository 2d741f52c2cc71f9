#include "nxfv/platform/sim/sim_folder_picker.h"

namespace nxfv {

bool SimFolderPicker::PickFolder(const std::string& title, const std::string& startFolder, std::string& chosen) {
  requests_.push_back({title, startFolder});
  chosen.clear();
  if (script_.empty()) return false;
  const std::optional<std::string> answer = std::move(script_.front());
  script_.pop_front();
  if (!answer || answer->empty()) return false;
  chosen = *answer;
  return true;
}

}  // namespace nxfv
