// kCollection: a list of values that can be written to a text file and read
// back, one value a line. It wraps a RuntimeCollection (Colnewb) and adds
// 0-based numbers for Item and Remove, a Boolean result for Add, and the
// two file operations.
//
// File format: one value a line, each line ended by CR LF, values in UTF-8
// as they are held; no header, count, keys or quoting. A value equal to
// the skip marker "§3$" is never written. Reading turns every line into a
// string value without key, so a round trip loses keys and types, and a
// value holding a line break comes back as several values (no quoting, by
// design of the format). Only CR ends a line when reading (a following LF
// is consumed with it); a last line without CR LF is still a value, and an
// empty file gives no values.
//
// Failures: Remove is the only member that raises to its caller. Add
// reports through its result; Item gives Empty; the file operations answer
// False when the file cannot be written or read (WriteToFile writes nothing
// when a value has no text form, such as a header record).
//
// The component also keeps a table of twenty column records in it, through
// kCollection::Internal.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "nxfv/model/header_data.h"
#include "nxfv/model/runtime_collection.h"
#include "nxfv/platform/platform.h"
#include "nxfv/platform/variant.h"

namespace nxfv {

// "§3$": U+00A7 followed by "3$".
inline constexpr const char* kSkipMarker = "\xC2\xA7" "3$";

class kCollection : public Object {
 public:
  // platform: whose file system the file operations use; null = the
  // thread's active platform.
  explicit kCollection(PlatformRef platform = nullptr);

  // The wrapped collection itself. Setting null installs a new empty one.
  std::shared_ptr<RuntimeCollection> Colnewb() const { return colnewb_; }
  void setColnewb(std::shared_ptr<RuntimeCollection> c);

  // Adds Item at the end under Key (Empty = no key). Before and After are
  // accepted and ignored: the value always goes to the end. False when the
  // wrapped add failed (a duplicate key); the failure goes no further.
  bool Add(const Variant& Item, const Variant& Key = Variant(), const Variant& Before = Variant(),
           const Variant& After = Variant());
  // A number is a 0-based position, text a key. Raises VbError 9 / 5 / 13
  // as the wrapped collection does.
  void Remove(const Variant& Index);
  int32_t Count() const { return colnewb_->Count(); }
  // A number is a 0-based position, text a key; Empty when missing.
  Variant Item(const Variant& Index) const;
  void RemoveAll();
  bool WriteToFile(const std::string& FileName);
  // Empties the collection first, then adds one string value per line.
  bool ReadFromFile(const std::string& FileName);

  class Internal;

 private:
  Variant Shifted(const Variant& index) const;  // 0-based number -> 1-based

  PlatformRef platform_;
  std::shared_ptr<RuntimeCollection> colnewb_;
  std::array<headerdatas, 20> columnRecords_{};
};

// For the component's own code.
class kCollection::Internal {
 public:
  static constexpr int32_t kColumnRecords = 20;
  // Column records are numbered 1..20; outside raises VbError 9.
  static void SetColumnRecord(kCollection& c, int32_t i, const headerdatas& record);
  static headerdatas ColumnRecord(const kCollection& c, int32_t i);
};

}  // namespace nxfv
