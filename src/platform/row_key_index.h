// Open-addressing index from row key to row, for the list view.
//
// One 16-byte slot per entry at a load factor of at most 1/2: a million
// keyed rows take 32 MB instead of the ~60 MB of node-based maps, and a
// lookup touches one slot run plus the key it compares. Keys are not copied:
// the index holds views into the rows' own keys, which must outlive them.
// Erase is by rebuilding (Rebuild) after rows are removed, which the list
// view does in one pass anyway.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace nxfv {

class ListRow;

class RowKeyIndex {
 public:
  // The row with key, or null.
  ListRow* Find(std::string_view key) const;
  // Adds key -> row unless key is present; returns the row already there,
  // or null when it was added.
  ListRow* Insert(std::string_view key, ListRow* row);
  void Clear();
  size_t Size() const { return count_; }

  static uint32_t Hash(std::string_view key);

 private:
  struct Slot {
    uint32_t hash = 0;
    uint32_t used = 0;
    ListRow* row = nullptr;
  };
  void Grow();
  std::vector<Slot> slots_;
  size_t count_ = 0;
};

}  // namespace nxfv
