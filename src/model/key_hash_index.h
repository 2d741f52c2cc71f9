// Hash index from key to slot number for the keyed collection.
//
// Open addressing with linear probing over a power-of-two table of
// {slot, hash} pairs, at most three quarters full; removal shifts the
// following run back so no tombstones build up. The table stores no keys:
// callers pass the key's hash and an equality test on slot numbers, and
// the key itself stays in the collection's slot. Expected O(1) per
// operation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nxfv {

class KeyHashIndex {
 public:
  static constexpr uint32_t kNone = 0xFFFFFFFFu;

  size_t Size() const { return size_; }
  // The slot whose key matches (matches(slot) is true), or kNone.
  template <class Matches>
  uint32_t Find(uint32_t hash, Matches&& matches) const;
  // Enters a key that is known to be absent.
  void Insert(uint32_t hash, uint32_t slot);
  // Takes a slot's entry out; nothing if it is not there.
  void Erase(uint32_t hash, uint32_t slot);
  void Clear();
  size_t MemoryBytes() const { return buckets_.capacity() * sizeof(Bucket); }

 private:
  struct Bucket {
    uint32_t slot = kNone;
    uint32_t hash = 0;
  };
  void Grow();
  size_t Mask() const { return buckets_.size() - 1; }

  std::vector<Bucket> buckets_;
  size_t size_ = 0;
};

template <class Matches>
uint32_t KeyHashIndex::Find(uint32_t hash, Matches&& matches) const {
  if (buckets_.empty()) return kNone;
  for (size_t i = hash & Mask();; i = (i + 1) & Mask()) {
    const Bucket& b = buckets_[i];
    if (b.slot == kNone) return kNone;
    if (b.hash == hash && matches(b.slot)) return b.slot;
  }
}

}  // namespace nxfv
