#include "nxfv/control/property_bag.h"

namespace nxfv {

Variant MemoryPropertyBag::ReadProperty(const std::string& key, const Variant& defaultValue) {
  for (const auto& [k, v] : values_)
    if (k == key) return v;
  return defaultValue;
}

void MemoryPropertyBag::WriteProperty(const std::string& key, const Variant& value, const Variant& /*defaultValue*/) {
  for (auto& [k, v] : values_)
    if (k == key) {
      v = value;
      return;
    }
  values_.emplace_back(key, value);
}

bool MemoryPropertyBag::Has(const std::string& key) const {
  for (const auto& entry : values_)
    if (entry.first == key) return true;
  return false;
}

}  // namespace nxfv
