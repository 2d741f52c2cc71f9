#include "nxfv/platform/row_key_index.h"

#include "nxfv/platform/list_view.h"

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

int64_t RowKeyIndex::Find(std::string_view key, const Rows& rows) const {
  if (stale_) Rebuild(rows, rows.size());
  if (slots_.empty()) return -1;
  const uint32_t h = Hash(key);
  const size_t mask = slots_.size() - 1;
  for (size_t i = h & mask;; i = (i + 1) & mask) {
    const Slot& s = slots_[i];
    if (s.position == 0) return -1;
    if (s.hash == h && rows[s.position - 1]->Key() == key) return s.position - 1;
  }
}

int64_t RowKeyIndex::Insert(size_t position, const Rows& rows) {
  if (stale_) Rebuild(rows, position);  // the new row is not in the index yet
  return Place(position, rows);
}

int64_t RowKeyIndex::Place(size_t position, const Rows& rows) const {
  if ((count_ + 1) * 5 > slots_.size() * 4) Grow(rows);  // at most 4/5 full
  const std::string_view key = rows[position]->Key();
  const uint32_t h = Hash(key);
  const size_t mask = slots_.size() - 1;
  for (size_t i = h & mask;; i = (i + 1) & mask) {
    Slot& s = slots_[i];
    if (s.position == 0) {
      s = {h, static_cast<uint32_t>(position + 1)};
      ++count_;
      return -1;
    }
    if (s.hash == h && rows[s.position - 1]->Key() == key) return s.position - 1;
  }
}

void RowKeyIndex::Grow(const Rows&) const {
  std::vector<Slot> old;
  old.swap(slots_);
  slots_.assign(old.empty() ? 64 : old.size() * 2, Slot{});
  const size_t mask = slots_.size() - 1;
  for (const Slot& s : old) {
    if (s.position == 0) continue;
    size_t i = s.hash & mask;
    while (slots_[i].position != 0) i = (i + 1) & mask;
    slots_[i] = s;
  }
}

void RowKeyIndex::Rebuild(const Rows& rows, size_t limit) const {
  stale_ = false;
  count_ = 0;
  size_t size = 64;
  while (size * 4 < (limit + 1) * 5) size *= 2;
  slots_.assign(size, Slot{});
  for (size_t i = 0; i < limit; ++i)
    if (!rows[i]->Key().empty()) Place(i, rows);
}

void RowKeyIndex::Clear() {
  slots_.clear();
  slots_.shrink_to_fit();
  count_ = 0;
  stale_ = false;
}

}  // namespace nxfv
