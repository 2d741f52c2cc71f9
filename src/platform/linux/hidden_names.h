// The names a folder's ".hidden" file lists (one raw name per line), which
// desktop file managers treat as hidden.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nxfv {

class HiddenNames {
 public:
  // Reads "<folder>/.hidden" relative to the open folder descriptor dirFd.
  // A missing or unreadable file (or one over 4 MiB) lists nothing.
  void LoadAt(int dirFd);
  // Parses the file's bytes: lines split at '\n', a trailing '\r' dropped,
  // empty lines ignored. Replaces any earlier list.
  void Parse(std::string_view bytes);
  // O(log n); always false (and cheap) when the list is empty.
  bool Contains(std::string_view rawName) const;
  bool empty() const { return names_.empty(); }

 private:
  std::vector<std::string> names_;  // sorted
};

}  // namespace nxfv
