// RuntimeCollection: the host runtime's general-purpose collection object,
// as kCollection wraps it. An ordered list of Variants, 1-based, each value
// optionally under a string key; keys compare without regard to case.
//
// Unlike NxFileCollection it raises its failures (RaiseError, so the
// thread's error state holds them too):
//   9  "Subscript out of range"  a position outside 1..Count
//   5  "Invalid procedure call or argument"  a key that is not there, or
//      both Before and After given
//   457 "This key is already associated with an element of this
//      collection"  a duplicate key
//   13 "Type mismatch"  an index that is neither a number nor text
//
// Objects are stored by reference (a header record read back through Item
// is the stored one), everything else by copy. Key lookups are linear: the
// collection serves short lists (column records, value lists).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "nxfv/platform/variant.h"

namespace nxfv {

class RuntimeCollection : public Object {
 public:
  // Adds item under key (Empty = no key; any other value is converted to
  // text), at the end or before / after the value that before / after name
  // (a position or a key; Empty = not given).
  void Add(const Variant& item, const Variant& key = Variant(), const Variant& before = Variant(),
           const Variant& after = Variant());
  int32_t Count() const { return static_cast<int32_t>(entries_.size()); }
  // A number is a 1-based position, text a key.
  Variant Item(const Variant& index) const;
  void Remove(const Variant& index);
  // Replaces the value at a 1-based position, keeping its key. Not a
  // member of the runtime's collection; for the component's own records.
  void Replace(int32_t position, Variant value);

 private:
  struct Entry {
    Variant value;
    std::string key;
    bool hasKey = false;
  };
  // 0-based index of the entry an index names; raises as described above.
  size_t Resolve(const Variant& index) const;
  bool HasKey(const std::string& key) const;

  std::vector<Entry> entries_;
};

}  // namespace nxfv
