#include "nxfv/platform/linux/file_attributes.h"

#include <sys/stat.h>

#include <limits>

#include "nxfv/platform/services.h"

namespace nxfv {

uint32_t MapAttributes(const EntryFacts& facts) {
  const uint32_t type = facts.mode & S_IFMT;
  uint32_t attributes = 0;
  if (type == S_IFDIR) attributes |= kAttrDirectory;
  if (type == S_IFLNK) attributes |= kAttrReparsePoint | (facts.linkToFolder ? kAttrDirectory : 0);
  if (type == S_IFSOCK || type == S_IFIFO || type == S_IFCHR || type == S_IFBLK) attributes |= kAttrSystem;
  if ((facts.mode & S_IWUSR) == 0) attributes |= kAttrReadOnly;
  if (facts.hidden) attributes |= kAttrHidden;
  if (facts.compressed) attributes |= kAttrCompressed;
  if (type == S_IFREG && attributes == 0) attributes = kAttrNormal;
  return attributes;
}

uint64_t UnixTimeToFileTime(int64_t seconds, uint32_t nanoseconds) {
  constexpr int64_t kSecondsFrom1601To1970 = 11644473600;
  constexpr uint64_t kTicksPerSecond = 10000000;
  constexpr uint64_t kMax = std::numeric_limits<uint64_t>::max();
  if (seconds < -kSecondsFrom1601To1970) return 0;
  // seconds >= -kSecondsFrom1601To1970, so the sum cannot overflow downward;
  // compute in unsigned to avoid overflow upward.
  const uint64_t since1601 = static_cast<uint64_t>(seconds) + static_cast<uint64_t>(kSecondsFrom1601To1970);
  const uint64_t subTicks = (nanoseconds % 1000000000u) / 100u;
  if (since1601 > (kMax - subTicks) / kTicksPerSecond) return kMax;
  return since1601 * kTicksPerSecond + subTicks;
}

}  // namespace nxfv
