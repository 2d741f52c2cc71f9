#include "platform/linux/linux_platform.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

#include <cstdio>

namespace nxfv {

LinuxPlatform::LinuxPlatform() = default;

std::vector<std::string> LinuxPlatform::Drives() {
  // Mount points the user can read, from the kernel's mount table.
  std::vector<std::string> drives;
  if (FILE* f = std::fopen("/proc/self/mounts", "r")) {
    char dev[4096], dir[4096];
    while (std::fscanf(f, "%4095s %4095s %*s %*s %*d %*d\n", dev, dir) == 2) {
      std::string d = dir;
      if (access(d.c_str(), R_OK | X_OK) == 0) drives.push_back(d);
    }
    std::fclose(f);
  }
  if (drives.empty()) drives.push_back("/");
  return drives;
}

std::string LinuxPlatform::DefaultStartFolder() {
  if (const char* home = std::getenv("HOME"); home && *home) return home;
  if (const passwd* pw = getpwuid(getuid()); pw && pw->pw_dir) return pw->pw_dir;
  return "/";
}

}  // namespace nxfv
