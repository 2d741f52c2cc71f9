// The common error box: every procedure that traps failures reports them
// here. Text "Error: " & number & ". " & description of the thread's
// current error state, Retry and Cancel buttons with the critical icon
// (style 21), captioned with the failing procedure's label.
#pragma once

#include <cstdint>
#include <string>

namespace nxfv {

class Platform;

inline constexpr int32_t kErrorBoxStyle = 21;  // Retry/Cancel + critical

// Returns the button pressed (4 Retry or 2 Cancel).
int16_t ShowError(Platform& platform, const std::string& title);
// Same, on the thread's active platform.
int16_t ShowError(const std::string& title);

// The text ShowError shows for the current error state.
std::string ErrorBoxText();

}  // namespace nxfv
