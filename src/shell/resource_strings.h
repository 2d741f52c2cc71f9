// String resources of system libraries: the system's own captions.
#pragma once

#include <cstdint>
#include <string>

namespace nxfv {

class Platform;

// Room the platform's string buffer has; a longer string comes back cut to
// kResStringRoom - 1 characters, as the platform's string loader does.
inline constexpr size_t kResStringRoom = 260;

// Text of string resource `number` of the named library ("Shell32.Dll",
// "Intl.Cpl"). "" when the library cannot be loaded or has no such string.
//   LoadResString(p, "Shell32.Dll", 8976) -> "Name"
std::string LoadResString(Platform& platform, const std::string& library, int32_t number);
std::string LoadResString(const std::string& library, int32_t number);  // on ActivePlatform()

}  // namespace nxfv
