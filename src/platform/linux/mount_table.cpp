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

std::vector<std::string> ParseMountPoints(std::string_view mounts) {
  std::vector<std::string> points;
  while (!mounts.empty()) {
    const size_t eol = mounts.find('\n');
    std::string_view line = mounts.substr(0, eol);
    mounts = eol == std::string_view::npos ? std::string_view{} : mounts.substr(eol + 1);
    // Fields: device, mount point, type, options, ...; separated by blanks.
    const size_t deviceEnd = line.find(' ');
    if (deviceEnd == std::string_view::npos) continue;
    line.remove_prefix(deviceEnd + 1);
    const std::string point = DecodeOctalEscapes(line.substr(0, line.find(' ')));
    if (point.empty() || point[0] != '/') continue;
    if (std::find(points.begin(), points.end(), point) == points.end()) points.push_back(point);
  }
  return points;
}

}  // namespace nxfv
