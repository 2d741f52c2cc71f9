#include "nxfv/model/collection_enumerators.h"

#include "nxfv/model/file_collection.h"

namespace nxfv {

cEnumerationObject::cEnumerationObject(Passkey, const std::shared_ptr<NxFileCollection>& collection, size_t cursor)
    : collection_(collection), cursor_(cursor) {
  if (collection) ++collection->enumerationCount_;
}

cEnumerationObject::~cEnumerationObject() {
  if (auto c = collection_.lock()) --c->enumerationCount_;
}

bool cEnumerationObject::Next(uint32_t n, std::vector<Variant>& out) {
  auto c = collection_.lock();
  uint32_t k = 0;
  for (; c && k < n && cursor_ < c->positions_.Count(); ++k, ++cursor_) {
    out.push_back(c->SlotRef(c->positions_.SlotAt(cursor_)).item.Get());
  }
  return k == n;
}

bool cEnumerationObject::Skip(uint32_t n) {
  auto c = collection_.lock();
  const size_t count = c ? c->positions_.Count() : 0;
  const size_t left = cursor_ < count ? count - cursor_ : 0;
  const size_t step = n < left ? n : left;
  cursor_ += step;
  return step == n;
}

std::shared_ptr<VariantEnumerator> cEnumerationObject::Clone() {
  // A clone of an enumerator whose collection is gone yields nothing too.
  return std::make_shared<cEnumerationObject>(Passkey{}, collection_.lock(), cursor_);
}

bool CKeys::Next(uint32_t n, std::vector<Variant>& out) {
  auto c = collection_.lock();
  if (!c) return n == 0;
  const auto& order = c->KeyOrder();
  uint32_t k = 0;
  for (; k < n && cursor_ < order.size(); ++k, ++cursor_) {
    const uint32_t slot = order[cursor_];
    out.emplace_back(std::make_shared<cKey>(std::string(c->SlotRef(slot).key.get()), c->PositionOfSlot(slot)));
  }
  return k == n;
}

bool CKeys::Skip(uint32_t n) {
  auto c = collection_.lock();
  const size_t count = c ? c->KeyOrder().size() : 0;
  const size_t left = cursor_ < count ? count - cursor_ : 0;
  const size_t step = n < left ? n : left;
  cursor_ += step;
  return step == n;
}

std::shared_ptr<VariantEnumerator> CKeys::Clone() {
  return std::make_shared<CKeys>(Passkey{}, collection_.lock(), cursor_);
}

}  // namespace nxfv
