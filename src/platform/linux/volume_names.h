// File-system names for the magic numbers statfs reports.
#pragma once

#include <cstdint>
#include <string>

namespace nxfv {

// "FAT" for vfat/msdos/exfat (so the last-access column shows dates only
// there), "ext4" for the whole ext2/3/4 family (they share one magic), the
// usual names for the other common file systems, "unknown" otherwise.
std::string FileSystemNameForMagic(uint64_t magic);

}  // namespace nxfv
