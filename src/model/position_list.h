// The position order of the keyed collection: a list of slot numbers that
// tolerates cheap removal from the middle.
//
// Entries live in an array in position order. Removing one leaves a
// tombstone; a Fenwick tree over "alive" counts then maps a position to its
// array index and back in O(log n). The tree exists only while there are
// tombstones; the array is compacted when tombstones make up half of it,
// and before every positional insert or move, which are O(n) anyway.
//
// Indices: "position" here is 0-based among live entries; "place" is the
// index into the array (tombstones included). Owners keep each slot's
// place; compaction and moves tell them the new places through a callback
// relink(slot, place).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nxfv {

class PositionList {
 public:
  static constexpr uint32_t kDead = 0xFFFFFFFFu;

  size_t Count() const { return places_.size() - dead_; }
  // Place of a new entry appended after the last one.
  uint32_t Append(uint32_t slot);
  // Slot at a live position (0 <= position < Count()).
  uint32_t SlotAt(size_t position) const { return places_[PlaceOf(position)]; }
  size_t PlaceOf(size_t position) const;
  // Live position of a live place.
  size_t PositionOfPlace(uint32_t place) const;

  // Removes the entry at a live place. May compact (relinking every slot).
  template <class Relink>
  void Erase(uint32_t place, Relink&& relink);

  // Moves the entry at live position `from` so that it ends at live
  // position `to`; the entries in between shift by one. O(n).
  template <class Relink>
  void Move(size_t from, size_t to, Relink&& relink);

  template <class Relink>
  void Compact(Relink&& relink);

  void Clear();
  // Entry at a place, kDead for a tombstone (for walking in order).
  uint32_t RawAt(uint32_t place) const { return places_[place]; }
  size_t RawSize() const { return places_.size(); }
  size_t MemoryBytes() const { return places_.capacity() * 4 + tree_.capacity() * 4; }

 private:
  void BuildTree();
  void TreeAdd(size_t place, int32_t delta);
  int64_t Prefix(size_t placeCount) const;  // live entries in [0, placeCount)
  void PopTrailingDead();

  std::vector<uint32_t> places_;
  std::vector<int32_t> tree_;  // 1-based Fenwick tree; empty while dead_ == 0
  size_t dead_ = 0;
};

template <class Relink>
void PositionList::Erase(uint32_t place, Relink&& relink) {
  places_[place] = kDead;
  ++dead_;
  if (tree_.empty()) {
    BuildTree();
  } else {
    TreeAdd(place, -1);
  }
  PopTrailingDead();
  if (dead_ > 0 && dead_ * 2 >= places_.size()) Compact(relink);
}

template <class Relink>
void PositionList::Compact(Relink&& relink) {
  if (dead_ == 0) return;
  size_t out = 0;
  for (size_t in = 0; in < places_.size(); ++in) {
    if (places_[in] == kDead) continue;
    places_[out] = places_[in];
    relink(places_[out], static_cast<uint32_t>(out));
    ++out;
  }
  places_.resize(out);
  places_.shrink_to_fit();
  dead_ = 0;
  tree_.clear();
  tree_.shrink_to_fit();
}

template <class Relink>
void PositionList::Move(size_t from, size_t to, Relink&& relink) {
  Compact(relink);
  if (from == to) return;
  const auto first = places_.begin();
  if (from < to) {
    std::rotate(first + from, first + from + 1, first + to + 1);
  } else {
    std::rotate(first + to, first + from, first + from + 1);
  }
  const size_t lo = std::min(from, to), hi = std::max(from, to);
  for (size_t p = lo; p <= hi; ++p) relink(places_[p], static_cast<uint32_t>(p));
}

}  // namespace nxfv
