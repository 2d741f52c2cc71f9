// Type names and icons of files by extension, asked of the system once per
// extension for the control's whole life (see TypeCache).
#pragma once

#include <cstdint>
#include <string>

#include "nxfv/control/type_cache.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

inline constexpr uint32_t kSmallSysIcon = kShgfiSysIconIndex | kShgfiSmallIcon;  // 0x4001

class FileTypes {
 public:
  explicit FileTypes(Platform& platform) : platform_(platform) {}

  // The extension of a name in lower case without the dot; "" for none.
  std::string GetExt(const std::string& name) const;
  // The cache entry for ext (null for an empty ext), asking the registry and
  // the icon service the first time. Types the system does not describe are
  // "File" with the generic document icon. fullPath is the file the icon is
  // looked up for; probeByAttributes looks it up without touching the disk.
  const TypeCacheEntry* Entry(const std::string& ext, const std::string& fullPath, bool probeByAttributes);
  // The type name and (through iconIndex) icon of Entry; "" and iconIndex
  // untouched for an empty ext.
  std::string GetFileType(const std::string& ext, const std::string& fullPath, int32_t& iconIndex,
                          bool probeByAttributes = false);
  TypeCache& Cache() { return cache_; }
  const TypeCache& Cache() const { return cache_; }

 private:
  Platform& platform_;
  TypeCache cache_;
};

}  // namespace nxfv
