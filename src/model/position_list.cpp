#include "nxfv/model/position_list.h"

namespace nxfv {

uint32_t PositionList::Append(uint32_t slot) {
  places_.push_back(slot);
  if (!tree_.empty()) {
    // The new node i covers places (i - lowbit(i), i]: its own 1 plus the
    // live entries already in that range.
    const size_t i = places_.size();
    const size_t low = i & (~i + 1);
    tree_.push_back(static_cast<int32_t>(1 + Prefix(i - 1) - Prefix(i - low)));
  }
  return static_cast<uint32_t>(places_.size() - 1);
}

size_t PositionList::PlaceOf(size_t position) const {
  if (dead_ == 0) return position;
  // Smallest place whose prefix count reaches position + 1.
  const size_t n = tree_.size() - 1;
  size_t step = 1;
  while (step * 2 <= n) step *= 2;
  size_t at = 0;
  int64_t remaining = static_cast<int64_t>(position) + 1;
  for (; step > 0; step /= 2) {
    if (at + step <= n && tree_[at + step] < remaining) {
      at += step;
      remaining -= tree_[at];
    }
  }
  return at;  // the 1-based node at + 1 is place `at`
}

size_t PositionList::PositionOfPlace(uint32_t place) const {
  if (dead_ == 0) return place;
  return static_cast<size_t>(Prefix(size_t{place} + 1) - 1);
}

void PositionList::Clear() {
  places_.clear();
  places_.shrink_to_fit();
  tree_.clear();
  tree_.shrink_to_fit();
  dead_ = 0;
}

void PositionList::BuildTree() {
  const size_t n = places_.size();
  tree_.assign(n + 1, 0);
  for (size_t i = 1; i <= n; ++i) {
    tree_[i] += places_[i - 1] == kDead ? 0 : 1;
    const size_t parent = i + (i & (~i + 1));
    if (parent <= n) tree_[parent] += tree_[i];
  }
}

void PositionList::TreeAdd(size_t place, int32_t delta) {
  for (size_t i = place + 1; i < tree_.size(); i += i & (~i + 1)) tree_[i] += delta;
}

int64_t PositionList::Prefix(size_t placeCount) const {
  int64_t sum = 0;
  for (size_t i = placeCount; i > 0; i -= i & (~i + 1)) sum += tree_[i];
  return sum;
}

void PositionList::PopTrailingDead() {
  // Dropping the last node of a Fenwick tree leaves every other node valid.
  while (!places_.empty() && places_.back() == kDead) {
    places_.pop_back();
    tree_.pop_back();
    --dead_;
  }
  if (dead_ == 0) {
    tree_.clear();
  }
}

}  // namespace nxfv
