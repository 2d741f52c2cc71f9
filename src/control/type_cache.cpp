#include "nxfv/control/type_cache.h"

#include <algorithm>

namespace nxfv {

const TypeCacheEntry* TypeCache::Find(const std::string& ext) const {
  auto first = entries_.begin() + 1;
  auto it = std::lower_bound(first, entries_.end(), ext,
                             [](const TypeCacheEntry& e, const std::string& k) { return e.extension < k; });
  return it != entries_.end() && it->extension == ext ? &*it : nullptr;
}

const TypeCacheEntry& TypeCache::Insert(TypeCacheEntry entry) {
  auto first = entries_.begin() + 1;
  auto it = std::lower_bound(first, entries_.end(), entry.extension,
                             [](const TypeCacheEntry& e, const std::string& k) { return e.extension < k; });
  if (entry.sharedTypeName.empty()) entry.sharedTypeName = SharedText(entry.typeName);
  if (entry.sharedExtension.empty()) entry.sharedExtension = SharedText(entry.extension);
  return *entries_.insert(it, std::move(entry));
}

}  // namespace nxfv
