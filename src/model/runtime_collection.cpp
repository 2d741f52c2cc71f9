#include "nxfv/model/runtime_collection.h"

#include <cmath>

#include "nxfv/model/key_compare.h"
#include "nxfv/platform/error_state.h"

namespace nxfv {

bool RuntimeCollection::HasKey(const std::string& key) const {
  for (const Entry& e : entries_) {
    if (e.hasKey && KeysEqual(e.key, key, true)) return true;
  }
  return false;
}

size_t RuntimeCollection::Resolve(const Variant& index) const {
  if (index.IsString()) {
    const std::string_view key = index.TextView();
    for (size_t i = 0; i < entries_.size(); ++i) {
      if (entries_[i].hasKey && KeysEqual(entries_[i].key, key, true)) return i;
    }
    RaiseError(kErrInvalidCall);
  }
  if (!index.IsNumber() && !index.IsEmpty()) RaiseError(kErrTypeMismatch);
  const double d = std::nearbyint(index.AsDouble());
  if (!(d >= 1 && d <= static_cast<double>(entries_.size()))) RaiseError(kErrSubscript);
  return static_cast<size_t>(d) - 1;
}

void RuntimeCollection::Add(const Variant& item, const Variant& key, const Variant& before, const Variant& after) {
  Entry e;
  e.value = item;
  if (!key.IsEmpty()) {
    e.key = key.AsString();
    e.hasKey = true;
  }
  if (!before.IsEmpty() && !after.IsEmpty()) RaiseError(kErrInvalidCall);
  size_t at = entries_.size();
  if (!before.IsEmpty()) at = Resolve(before);
  if (!after.IsEmpty()) at = Resolve(after) + 1;
  if (e.hasKey && HasKey(e.key)) RaiseError(kErrDuplicateKey);
  entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(at), std::move(e));
}

Variant RuntimeCollection::Item(const Variant& index) const { return entries_[Resolve(index)].value; }

void RuntimeCollection::Remove(const Variant& index) {
  const size_t i = Resolve(index);
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(i));
}

void RuntimeCollection::Replace(int32_t position, Variant value) {
  if (position < 1 || static_cast<size_t>(position) > entries_.size()) RaiseError(kErrSubscript);
  entries_[static_cast<size_t>(position) - 1].value = std::move(value);
}

}  // namespace nxfv
