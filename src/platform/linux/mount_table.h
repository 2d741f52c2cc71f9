// The kernel's mount table (/proc/self/mounts) as a list of mount points.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nxfv {

// Mount points of a mounts file's text, in file order without duplicates,
// with the table's octal escapes ("\040" for a blank) decoded. Raw bytes.
std::vector<std::string> ParseMountPoints(std::string_view mounts);

}  // namespace nxfv
