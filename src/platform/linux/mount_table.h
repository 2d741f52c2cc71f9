// The kernel's mount table (/proc/self/mounts) as a list of mount points.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nxfv {

// Mount points of a mounts file's text, in file order without duplicates,
// with the table's octal escapes ("\040" for a blank) decoded. Raw bytes.
std::vector<std::string> ParseMountPoints(std::string_view mounts);

// The mount points a user browses, in file order without duplicates:
// "/" and real storage (disks, removable media, network shares), not the
// kernel's own file systems (proc, sysfs, cgroup, devpts, ...), memory
// file systems other than /tmp, snap and container images, nor anything
// under /proc, /sys, /dev and /run except removable media in /run/media.
std::vector<std::string> ParseUserVolumes(std::string_view mounts);

}  // namespace nxfv
