// The process-wide icon table: every distinct icon name gets an index that
// stays the same for the life of the process (1, 2, ...; 0 means "no icon").
// The generic names that most lookups end in are registered first, in a
// fixed order, so their indexes are also the same from run to run.
// Front ends turn an index back into a name (an icon-theme name such as
// "folder" or "text-x-generic") to draw it. Thread-safe.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace nxfv {

class IconTable {
 public:
  IconTable();
  static IconTable& Shared();

  // The index of name, added when new. 0 for an empty name.
  int32_t IndexOf(std::string_view name);
  // The name of index; "" for 0 or an index never handed out.
  std::string NameOf(int32_t index);
  size_t size();

 private:
  std::mutex mutex_;
  std::unordered_map<std::string, int32_t> indexes_;
  std::vector<std::string> names_;  // names_[i] has index i + 1
};

// Well-known icon names.
inline constexpr std::string_view kIconFolder = "folder";
inline constexpr std::string_view kIconGenericFile = "application-x-generic";
inline constexpr std::string_view kIconExecutable = "application-x-executable";

}  // namespace nxfv
