#include "nxfv/shell/path_text.h"

#include <cstdint>

#include "nxfv/platform/error_state.h"
#include "nxfv/platform/platform.h"
#include "nxfv/platform/utf8.h"

namespace nxfv {

namespace {

std::string AppendUnlessLast(std::string_view s, char separator) {
  std::string out(s);
  if (out.empty() || out.back() != separator) out += separator;
  return out;
}

}  // namespace

std::string AddBackslash(std::string_view s) { return AppendUnlessLast(s, '\\'); }

std::string AddSeparator(const Platform& platform, std::string_view s) {
  return AppendUnlessLast(s, platform.Separator());
}

std::string TrimBlanks(std::string_view s) {
  const size_t first = s.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const size_t last = s.find_last_not_of(' ');
  return std::string(s.substr(first, last - first + 1));
}

std::string StripNull(std::string_view s) {
  const size_t nul = s.find('\0');
  if (nul != std::string_view::npos) return std::string(s.substr(0, nul));
  return TrimBlanks(s);
}

ArchivePathParts SplitArchivePath(std::string_view storedName) {
  size_t p = storedName.rfind('/');
  if (p == std::string_view::npos) p = storedName.rfind('\\');
  if (p == std::string_view::npos) return {std::string(), std::string(storedName)};
  // The position lives in a 16-bit signed integer. A code point never takes
  // fewer bytes than one, so only long byte offsets need counting.
  constexpr size_t kMaxPosition = INT16_MAX;
  if (p >= kMaxPosition && CodePointCount(storedName.substr(0, p)) + 1 > kMaxPosition)
    RaiseError(kErrOverflow);
  return {std::string(storedName.substr(0, p + 1)), std::string(storedName.substr(p + 1))};
}

ExtensionParts SplitExtension(std::string_view text) {
  const size_t dot = text.rfind('.');
  if (dot == std::string_view::npos) return {std::string(text), std::string()};
  return {std::string(text.substr(0, dot)), std::string(text.substr(dot + 1))};
}

FullPathParts SplitFullPath(std::string& path) {
  // Walk forward from separator to separator; a forward slash only counts
  // where no backslash lies ahead.
  size_t start = 0;
  for (;;) {
    size_t hit = path.find('\\', start);
    if (hit == std::string::npos) hit = path.find('/', start);
    if (hit == std::string::npos) break;
    start = hit + 1;
  }
  FullPathParts parts;
  parts.fileName = path.substr(start);
  path.resize(start);
  const size_t dot = parts.fileName.find('.');
  if (dot != std::string::npos) {
    parts.baseName = parts.fileName.substr(0, dot);
    parts.extension = parts.fileName.substr(dot);
  }
  return parts;
}

}  // namespace nxfv
