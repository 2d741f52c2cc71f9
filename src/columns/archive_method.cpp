#include "nxfv/columns/archive_method.h"

#include "nxfv/columns/formatting.h"

namespace nxfv {

ArchiveMethod ArchiveMethodOf(std::string_view archiveExt, int32_t method, int32_t flags) {
  if (archiveExt == "zip") return {ZipMethodText(method, flags), (flags & 1) != 0};
  if (archiveExt == "cab") return {CabMethodText(method), false};
  if (archiveExt == "rar") return {RarMethodText(method, flags), (flags & 4) != 0};
  if (archiveExt == "ace") return {AceMethodText(method), (flags & 4) != 0};
  return {};
}

}  // namespace nxfv
