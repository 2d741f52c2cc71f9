// Collecting one row's column texts before writing them.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "nxfv/platform/list_view.h"

namespace nxfv {

// One row's column texts, collected first so that the row's text block is
// allocated once at its final size and filled in column order (a million
// rows otherwise leave a million outgrown blocks behind).
class RowTexts {
 public:
  // Texts for slot 0 or below (a column that is not shown) are dropped.
  // The texts are copied into buffers kept from row to row, so that a
  // listing does not allocate for every long text of every row.
  void Put(int32_t slot, std::string_view text) {
    if (slot <= 0 || count_ >= texts_.size()) return;
    texts_[count_].first = slot;
    texts_[count_].second.assign(text);
    ++count_;
  }
  // Drops texts a failed row left behind.
  void Clear() {
    for (size_t i = 0; i < count_; ++i) texts_[i].second.clear();
    count_ = 0;
  }
  // The bytes the texts take in a row, plus spare.
  size_t Bytes(size_t spare) const {
    size_t bytes = spare;
    for (size_t i = 0; i < count_; ++i) bytes += texts_[i].second.size() + 2;
    return bytes;
  }
  // Writes the texts in column order, with room for spare more bytes.
  void WriteTo(ListRow& row, size_t spare) {
    // Sort small positions, not the texts themselves.
    std::array<uint8_t, kMaxTexts> order;
    for (size_t i = 0; i < count_; ++i) order[i] = static_cast<uint8_t>(i);
    std::sort(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(count_),
              [&](uint8_t a, uint8_t b) { return texts_[a].first < texts_[b].first; });
    row.ReserveTexts(Bytes(spare));
    for (size_t i = 0; i < count_; ++i) row.SetSubItem(texts_[order[i]].first, texts_[order[i]].second);
    count_ = 0;
  }

 private:
  static constexpr size_t kMaxTexts = 24;
  std::array<std::pair<int32_t, std::string>, kMaxTexts> texts_;
  size_t count_ = 0;
};

}  // namespace nxfv
