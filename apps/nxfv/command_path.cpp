#include "nxfv/command_path.h"

#include <filesystem>

#include "nxfv/platform/linux/file_name_escape.h"

namespace nxfv::cli {

std::string PlatformPath(const Platform& platform, const std::string& argument) {
  if (platform.Separator() != '/') return argument;
  std::string path = argument;
  if (!path.empty() && path[0] != '/') {
    std::error_code ec;
    const auto absolute = std::filesystem::absolute(path, ec);
    if (!ec) path = absolute.lexically_normal().string();
  }
  if (path.size() > 1 && path.back() == '/') path.pop_back();
  return EscapeFileName(path);
}

}  // namespace nxfv::cli
