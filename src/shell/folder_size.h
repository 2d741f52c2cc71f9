// Total size of the files below a folder.
#pragma once

#include <cstdint>
#include <string>

namespace nxfv {

class Platform;

// Sum of the sizes of all files in folder and, recursively, its sub-folders,
// through the platform's enumeration. Deliberately skips every entry whose
// name begins with "." (not only "." and ".."). Never follows a link: an
// entry with the reparse-point bit (1024) is not entered even when it points
// to a folder. A folder that cannot be enumerated adds 0. Iterative, so deep
// trees cannot exhaust the stack.
uint64_t FolderSize(Platform& platform, const std::string& folder);
uint64_t FolderSize(const std::string& folder);  // on ActivePlatform()

}  // namespace nxfv
