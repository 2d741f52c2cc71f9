// The method name and encrypted mark of an archive entry, chosen by the
// archive extension received with the entry (exact comparison):
//   "zip" -> ZipMethodText, encrypted when flags has bit 1
//   "cab" -> CabMethodText, never encrypted
//   "rar" -> RarMethodText, encrypted when flags has bit 4
//   "ace" -> AceMethodText, encrypted when flags has bit 4
//   anything else (".zip" too) -> "" and not encrypted
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace nxfv {

struct ArchiveMethod {
  std::string name;
  bool encrypted = false;
};

ArchiveMethod ArchiveMethodOf(std::string_view archiveExt, int32_t method, int32_t flags);

}  // namespace nxfv
