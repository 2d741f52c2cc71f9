#include "nxfv/shell/show_error.h"

#include "nxfv/platform/error_state.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

std::string ErrorBoxText() {
  const ErrorState& e = CurrentError();
  return "Error: " + std::to_string(e.number) + ". " + e.description;
}

int16_t ShowError(Platform& platform, const std::string& title) {
  return static_cast<int16_t>(platform.MessageBox().Show(ErrorBoxText(), kErrorBoxStyle, title));
}

int16_t ShowError(const std::string& title) { return ShowError(ActivePlatform(), title); }

}  // namespace nxfv
