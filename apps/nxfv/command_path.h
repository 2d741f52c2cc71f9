// The path a command was given, as the platform names it.
#pragma once

#include <string>

#include "nxfv/platform/platform.h"

namespace nxfv::cli {

// On "/" platforms: a relative path is made absolute and normalised, a
// trailing "/" goes (not the root's), and bytes that are not UTF-8 are
// escaped the way the platform names files ("\xHH"), so that the path is
// valid UTF-8 wherever it is shown and opens the same file.
std::string PlatformPath(const Platform& platform, const std::string& argument);

}  // namespace nxfv::cli
