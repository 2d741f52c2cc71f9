#include "nxfv/platform/linux/linux_platform.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "nxfv/platform/linux/file_name_escape.h"
#include "nxfv/platform/linux/mount_table.h"

namespace nxfv {

LinuxPlatform::LinuxPlatform() = default;

std::vector<std::string> LinuxPlatform::Drives() {
  // The volumes a user browses that the user can read, from the kernel's
  // mount table (its own file systems, proc, sysfs and the like, are left out).
  std::vector<std::string> drives;
  std::ifstream in("/proc/self/mounts", std::ios::binary);
  std::ostringstream text;
  if (in) text << in.rdbuf();
  for (const std::string& point : ParseUserVolumes(text.str()))
    if (access(point.c_str(), R_OK | X_OK) == 0) drives.push_back(EscapeFileName(point));
  if (drives.empty()) drives.push_back("/");
  return drives;
}

std::string LinuxPlatform::DefaultStartFolder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return EscapeFileName(home);
  if (const passwd* pw = getpwuid(getuid()); pw != nullptr && pw->pw_dir != nullptr && *pw->pw_dir != '\0')
    return EscapeFileName(pw->pw_dir);
  return "/";
}

}  // namespace nxfv
