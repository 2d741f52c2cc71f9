#include "nxfv/shell/shell_folders.h"

#include "nxfv/platform/platform.h"
#include "nxfv/shell/path_text.h"

namespace nxfv {

std::string SpecialFolderPath(Platform& platform, int32_t csidl) {
  std::string path;
  if (!platform.Resources().SpecialFolderPath(csidl, path)) return {};
  return StripNull(path);
}

std::string SpecialFolderPath(int32_t csidl) { return SpecialFolderPath(ActivePlatform(), csidl); }

}  // namespace nxfv
