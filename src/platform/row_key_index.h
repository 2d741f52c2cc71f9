// Open-addressing index from row key to row position, for the list view.
//
// One 8-byte slot per entry (hash and position) at a load factor of at most
// 4/5: a million keyed rows take 16 MB instead of the ~60 MB of node-based
// maps. Keys are not copied: they are compared through the rows the caller
// passes in, whose positions the index holds. When rows move (a sort, a
// removal) the owner marks the index stale and it is rebuilt on next use.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace nxfv {

class ListRow;

class RowKeyIndex {
 public:
  using Rows = std::vector<std::unique_ptr<ListRow>>;

  // Position of the row with key, or -1.
  int64_t Find(std::string_view key, const Rows& rows) const;
  // Enters rows[position] under its key unless the key is present; returns
  // the position already there, or -1 when it was entered.
  int64_t Insert(size_t position, const Rows& rows);
  void Clear();
  // Rows moved: the next Find or Insert rebuilds the index first.
  void MarkStale() { stale_ = true; }
  size_t Size() const { return count_; }

  static uint32_t Hash(std::string_view key);

 private:
  struct Slot {
    uint32_t hash = 0;
    uint32_t position = 0;  // row position + 1; 0 = free
  };
  // Enters rows[0 .. limit) afresh.
  void Rebuild(const Rows& rows, size_t limit) const;
  void Grow(const Rows& rows) const;
  int64_t Place(size_t position, const Rows& rows) const;

  mutable std::vector<Slot> slots_;
  mutable size_t count_ = 0;
  mutable bool stale_ = false;
};

}  // namespace nxfv
