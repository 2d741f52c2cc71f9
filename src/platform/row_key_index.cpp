#include "platform/row_key_index.h"

#include "platform/list_view.h"

namespace nxfv {

uint32_t RowKeyIndex::Hash(std::string_view key) {
  // FNV-1a, then a final mix so that linear probing sees spread-out values.
  uint32_t h = 2166136261u;
  for (char c : key) h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
  h ^= h >> 15;
  h *= 0x2c1b3c6dU;
  h ^= h >> 12;
  return h;
}

ListRow* RowKeyIndex::Find(std::string_view key) const {
  if (slots_.empty()) return nullptr;
  const uint32_t h = Hash(key);
  const size_t mask = slots_.size() - 1;
  for (size_t i = h & mask;; i = (i + 1) & mask) {
    const Slot& s = slots_[i];
    if (!s.used) return nullptr;
    if (s.hash == h && s.row->Key() == key) return s.row;
  }
}

ListRow* RowKeyIndex::Insert(std::string_view key, ListRow* row) {
  if ((count_ + 1) * 2 > slots_.size()) Grow();
  const uint32_t h = Hash(key);
  const size_t mask = slots_.size() - 1;
  for (size_t i = h & mask;; i = (i + 1) & mask) {
    Slot& s = slots_[i];
    if (!s.used) {
      s = {h, 1, row};
      ++count_;
      return nullptr;
    }
    if (s.hash == h && s.row->Key() == key) return s.row;
  }
}

void RowKeyIndex::Grow() {
  std::vector<Slot> old;
  old.swap(slots_);
  slots_.assign(old.empty() ? 64 : old.size() * 2, Slot{});
  const size_t mask = slots_.size() - 1;
  for (const Slot& s : old) {
    if (!s.used) continue;
    size_t i = s.hash & mask;
    while (slots_[i].used) i = (i + 1) & mask;
    slots_[i] = s;
  }
}

void RowKeyIndex::Clear() {
  slots_.clear();
  slots_.shrink_to_fit();
  count_ = 0;
}

}  // namespace nxfv
