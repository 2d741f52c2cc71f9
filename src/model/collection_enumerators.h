// Enumerators of NxFileCollection, with the standard enumeration contract
// (Next, Skip, Reset, Clone):
// - cEnumerationObject yields the items (the stored Variants) in position
//   order; it is what For Each uses. While any of them lives (clones
//   included) the collection refuses Move.
// - CKeys yields one new cKey (key and position) per key in key order.
// Both hold the collection without keeping it alive and read it in place:
// their cursor is a place in the order, so a removal during the walk
// shifts what comes next. Once the collection is gone they yield nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "nxfv/platform/variant.h"

namespace nxfv {

class NxFileCollection;

class VariantEnumerator : public Object {
 public:
  // Appends up to n further elements to out and advances past them; true
  // when all n were there.
  virtual bool Next(uint32_t n, std::vector<Variant>& out) = 0;
  // Advances by n; true when all n were there.
  virtual bool Skip(uint32_t n) = 0;
  virtual void Reset() = 0;
  // A new enumerator at the same place.
  virtual std::shared_ptr<VariantEnumerator> Clone() = 0;
};

class cEnumerationObject final : public VariantEnumerator {
  struct Passkey {};

 public:
  // Counts itself in the collection's enumeration count until destroyed.
  cEnumerationObject(Passkey, const std::shared_ptr<NxFileCollection>& collection, size_t cursor);
  ~cEnumerationObject() override;
  cEnumerationObject(const cEnumerationObject&) = delete;
  cEnumerationObject& operator=(const cEnumerationObject&) = delete;

  bool Next(uint32_t n, std::vector<Variant>& out) override;
  bool Skip(uint32_t n) override;
  void Reset() override { cursor_ = 0; }
  std::shared_ptr<VariantEnumerator> Clone() override;

 private:
  friend class NxFileCollection;
  std::weak_ptr<NxFileCollection> collection_;
  size_t cursor_;  // 0-based position of the next item
};

// One key of a key enumeration; both fields set once.
class cKey final : public Object {
 public:
  cKey(std::string key, int32_t position) : key_(std::move(key)), position_(position) {}
  const std::string& Key() const { return key_; }
  int32_t Position() const { return position_; }

 private:
  std::string key_;
  int32_t position_;
};

class CKeys final : public VariantEnumerator {
  struct Passkey {};

 public:
  CKeys(Passkey, const std::shared_ptr<NxFileCollection>& collection, size_t cursor)
      : collection_(collection), cursor_(cursor) {}

  bool Next(uint32_t n, std::vector<Variant>& out) override;
  bool Skip(uint32_t n) override;
  void Reset() override { cursor_ = 0; }
  std::shared_ptr<VariantEnumerator> Clone() override;

 private:
  friend class NxFileCollection;
  std::weak_ptr<NxFileCollection> collection_;
  size_t cursor_;  // place in the key order
};

}  // namespace nxfv
