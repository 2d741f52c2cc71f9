#include "nxfv/platform/linux/hidden_names.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace nxfv {

void HiddenNames::LoadAt(int dirFd) {
  names_.clear();
  const int fd = openat(dirFd, ".hidden", O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  if (fd < 0) return;
  constexpr off_t kMaxBytes = 4 << 20;
  struct stat st {};
  std::string bytes;
  if (fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size <= kMaxBytes) {
    bytes.resize(static_cast<size_t>(st.st_size));
    size_t got = 0;
    while (got < bytes.size()) {
      const ssize_t n = read(fd, bytes.data() + got, bytes.size() - got);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) break;
      got += static_cast<size_t>(n);
    }
    bytes.resize(got);
  }
  close(fd);
  Parse(bytes);
}

void HiddenNames::Parse(std::string_view bytes) {
  names_.clear();
  while (!bytes.empty()) {
    const size_t eol = bytes.find('\n');
    std::string_view line = bytes.substr(0, eol);
    bytes = eol == std::string_view::npos ? std::string_view{} : bytes.substr(eol + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (!line.empty()) names_.emplace_back(line);
  }
  std::sort(names_.begin(), names_.end());
}

bool HiddenNames::Contains(std::string_view rawName) const {
  if (names_.empty()) return false;
  return std::binary_search(names_.begin(), names_.end(), rawName,
                            [](std::string_view a, std::string_view b) { return a < b; });
}

}  // namespace nxfv
