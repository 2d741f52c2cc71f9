#include "nxfv/platform/linux/mount_table.h"

#include <algorithm>

namespace nxfv {
namespace {

bool IsOctal(char c) { return c >= '0' && c <= '7'; }

std::string DecodeOctalEscapes(std::string_view field) {
  std::string out;
  out.reserve(field.size());
  for (size_t i = 0; i < field.size();) {
    if (field[i] == '\\' && field.size() - i >= 4 && IsOctal(field[i + 1]) && IsOctal(field[i + 2]) &&
        IsOctal(field[i + 3])) {
      const int value = (field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 + (field[i + 3] - '0');
      if (value <= 0xFF) {
        out += static_cast<char>(value);
        i += 4;
        continue;
      }
    }
    out += field[i++];
  }
  return out;
}

}  // namespace

namespace {

bool StartsWith(std::string_view text, std::string_view head) { return text.substr(0, head.size()) == head; }

bool IsUserVolume(std::string_view point, std::string_view type) {
  static constexpr std::string_view kKernelTypes[] = {
      "proc",       "sysfs",    "cgroup",  "cgroup2",  "devpts",    "devtmpfs", "securityfs", "debugfs",
      "tracefs",    "pstore",   "bpf",     "mqueue",   "hugetlbfs", "configfs", "fusectl",    "binfmt_misc",
      "autofs",     "efivarfs", "rpc_pipefs", "nsfs",  "ramfs",     "squashfs", "overlay",    "fuse.gvfsd-fuse",
      "fuse.portal", "fuse.lxcfs", "selinuxfs", "rootfs"};
  for (std::string_view kernel : kKernelTypes)
    if (type == kernel) return point == "/";  // a container's root is still the user's "/"
  if (point == "/") return true;
  if (StartsWith(point, "/run/media/")) return true;
  for (std::string_view hidden : {"/proc", "/sys", "/dev", "/run", "/snap", "/boot"})
    if (StartsWith(point, hidden) && (point.size() == hidden.size() || point[hidden.size()] == '/')) return false;
  // Memory file systems hold nothing a user browses, except the temporary folder.
  if (type == "tmpfs") return point == "/tmp";
  return true;
}

}  // namespace

namespace {

// Calls visit(point, type) for every line of a mount table (fields:
// device, mount point, type, options, ...; separated by blanks), each
// mount point with its octal escapes decoded.
template <class Visit>
void ForEachMount(std::string_view mounts, Visit visit) {
  while (!mounts.empty()) {
    const size_t eol = mounts.find('\n');
    std::string_view line = mounts.substr(0, eol);
    mounts = eol == std::string_view::npos ? std::string_view{} : mounts.substr(eol + 1);
    const size_t deviceEnd = line.find(' ');
    if (deviceEnd == std::string_view::npos) continue;
    line.remove_prefix(deviceEnd + 1);
    const size_t pointEnd = line.find(' ');
    const std::string point = DecodeOctalEscapes(line.substr(0, pointEnd));
    const bool hasType = pointEnd != std::string_view::npos;
    std::string_view type;
    if (hasType) {
      line.remove_prefix(pointEnd + 1);
      type = line.substr(0, line.find(' '));
    }
    if (!point.empty() && point[0] == '/') visit(point, type, hasType);
  }
}

void AddOnce(std::vector<std::string>& points, const std::string& point) {
  if (std::find(points.begin(), points.end(), point) == points.end()) points.push_back(point);
}

}  // namespace

std::vector<std::string> ParseUserVolumes(std::string_view mounts) {
  std::vector<std::string> points;
  ForEachMount(mounts, [&](const std::string& point, std::string_view type, bool hasType) {
    if (hasType && IsUserVolume(point, type)) AddOnce(points, point);
  });
  return points;
}

std::vector<std::string> ParseMountPoints(std::string_view mounts) {
  std::vector<std::string> points;
  ForEachMount(mounts, [&](const std::string& point, std::string_view, bool) { AddOnce(points, point); });
  return points;
}

}  // namespace nxfv
