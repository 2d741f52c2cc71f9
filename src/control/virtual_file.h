// One entry a host adds to a virtual list (FileViewer::VirtualAddItem).
#pragma once

#include <cstdint>
#include <string>

namespace nxfv {

struct VirtualFile {
  std::string FileName;      // shown as the row's text; an all-digit name gets a key mark
  std::string Path;          // the folder it belongs to, as the host sees it
  uint64_t FileSize = 0;     // bytes (the item's 32-bit FileSize stops at 2147483647)
  double DateModified = 0;   // date values (days since 1899-12-30); 0 for none
  double DateCreated = 0;
  double LastAccessed = 0;
  int32_t Attributes = 0;    // File_Attribute bits; FILE_ATTRIBUTE_DIRECTORY makes a virtual folder
  std::string FileTyp;       // the type text ("" to take the type of the extension)
  std::string UserDataA;     // the two user-data columns
  std::string UserDataB;
};

}  // namespace nxfv
