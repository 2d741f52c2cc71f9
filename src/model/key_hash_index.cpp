#include "nxfv/model/key_hash_index.h"

namespace nxfv {

void KeyHashIndex::Insert(uint32_t hash, uint32_t slot) {
  if ((size_ + 1) * 4 > buckets_.size() * 3) Grow();
  size_t i = hash & Mask();
  while (buckets_[i].slot != kNone) i = (i + 1) & Mask();
  buckets_[i] = Bucket{slot, hash};
  ++size_;
}

void KeyHashIndex::Erase(uint32_t hash, uint32_t slot) {
  if (buckets_.empty()) return;
  size_t i = hash & Mask();
  for (;; i = (i + 1) & Mask()) {
    if (buckets_[i].slot == kNone) return;
    if (buckets_[i].slot == slot) break;
  }
  // Backward shift: pull later members of the run into the hole when their
  // home bucket does not lie (cyclically) between the hole and them.
  size_t hole = i;
  for (size_t j = (i + 1) & Mask(); buckets_[j].slot != kNone; j = (j + 1) & Mask()) {
    const size_t home = buckets_[j].hash & Mask();
    const bool homeInRange = hole <= j ? (hole < home && home <= j) : (hole < home || home <= j);
    if (homeInRange) continue;
    buckets_[hole] = buckets_[j];
    hole = j;
  }
  buckets_[hole] = Bucket{};
  --size_;
}

void KeyHashIndex::Clear() {
  buckets_.clear();
  buckets_.shrink_to_fit();
  size_ = 0;
}

void KeyHashIndex::Grow() {
  std::vector<Bucket> old;
  old.swap(buckets_);
  buckets_.assign(old.empty() ? 16 : old.size() * 2, Bucket{});
  for (const Bucket& b : old) {
    if (b.slot == kNone) continue;
    size_t i = b.hash & Mask();
    while (buckets_[i].slot != kNone) i = (i + 1) & Mask();
    buckets_[i] = b;
  }
}

}  // namespace nxfv
