// The per-control cache of type names and icons by extension.
//
// Entry 0 is a scratch slot the search never visits (the folder listing
// keeps the folder type and icon there). The other entries stay sorted by
// extension (binary, code-unit order) so lookups bisect; one entry is
// added per extension never seen before and none is ever removed, so the
// registry is asked once per extension for the control's whole life.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "nxfv/platform/shared_text.h"

namespace nxfv {

struct TypeCacheEntry {
  std::string extension;  // lower case, without the dot
  std::string typeName;
  int32_t iconIndex = 0;
  // The same type name and extension, shared by the items of this type.
  SharedText sharedTypeName;
  SharedText sharedExtension;
};

class TypeCache {
 public:
  TypeCache() : entries_(1) {}
  // The entry for ext, or null.
  const TypeCacheEntry* Find(const std::string& ext) const;
  // Adds an entry (ext must not be present) and keeps the order.
  const TypeCacheEntry& Insert(TypeCacheEntry entry);
  TypeCacheEntry& Scratch() { return entries_[0]; }
  // Entries excluding the scratch slot.
  size_t Size() const { return entries_.size() - 1; }
  const TypeCacheEntry& At(size_t i) const { return entries_.at(i + 1); }

 private:
  std::vector<TypeCacheEntry> entries_;
};

}  // namespace nxfv
