#include "nxfv/shell/folder_size.h"

#include <vector>

#include "nxfv/platform/platform.h"
#include "nxfv/shell/date_convert.h"
#include "nxfv/shell/path_text.h"

namespace nxfv {

uint64_t FolderSize(Platform& platform, const std::string& folder) {
  uint64_t total = 0;
  std::vector<std::string> pending{AddSeparator(platform, folder)};
  while (!pending.empty()) {
    const std::string current = std::move(pending.back());
    pending.pop_back();
    // A folder that cannot be enumerated simply contributes nothing.
    platform.Files().Enumerate(current, [&](const FindData& entry) {
      if (entry.name.empty() || entry.name[0] == '.') return true;
      if (entry.attributes & kAttrReparsePoint) {
        // A link: never followed into a folder; a link to a file counts as
        // the entry the enumeration reports.
        if (!(entry.attributes & kAttrDirectory)) total += MakeInt64(entry.sizeHigh, entry.sizeLow);
        return true;
      }
      if (entry.attributes & kAttrDirectory)
        pending.push_back(AddSeparator(platform, current + entry.name));
      else
        total += MakeInt64(entry.sizeHigh, entry.sizeLow);
      return true;
    });
  }
  return total;
}

uint64_t FolderSize(const std::string& folder) { return FolderSize(ActivePlatform(), folder); }

}  // namespace nxfv
