#include "nxfv/platform/in_process_clipboard.h"

namespace nxfv {

void InProcessFileClipboard::SetFiles(const std::vector<std::string>& paths, bool cut) {
  paths_ = paths;
  cut_ = cut && !paths_.empty();
}

bool InProcessFileClipboard::GetFiles(std::vector<std::string>& paths, bool& cut) const {
  paths = paths_;
  cut = cut_;
  return !paths_.empty();
}

void InProcessFileClipboard::Clear() {
  paths_.clear();
  cut_ = false;
}

}  // namespace nxfv
