#include "nxfv/model/file_collection.h"

#include <new>

#include <mutex>
#include <unordered_map>

#include <algorithm>
#include <cmath>

#include "nxfv/model/collection_enumerators.h"
#include "nxfv/model/key_compare.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/shell/show_error.h"

namespace nxfv {

namespace {

// Positions are Long or Double values; text is a key, anything else is
// neither.
bool IsPositionKind(const Variant& v) {
  return v.kind() == Variant::Kind::Long || v.kind() == Variant::Kind::Double;
}

// The position a number names, rounded like the runtime's conversion to
// Long; false when it is no integer position at all.
bool ToPosition(const Variant& v, int64_t& position) {
  const double d = std::nearbyint(v.AsDouble());
  if (!(d >= -2147483648.0 && d <= 2147483647.0)) return false;
  position = static_cast<int64_t>(d);
  return true;
}

}  // namespace

NxFileCollection::NxFileCollection(Passkey, PlatformRef platform)
    : platform_(platform ? std::move(platform) : ActivePlatformRef()) {}

namespace {
// Collections alive in the process, by identity; few at any time.
std::mutex& RegistryMutex() {
  static std::mutex m;
  return m;
}
std::unordered_map<const void*, std::weak_ptr<NxFileCollection>>& Registry() {
  static std::unordered_map<const void*, std::weak_ptr<NxFileCollection>> live;
  return live;
}
}  // namespace

std::shared_ptr<NxFileCollection> LiveCollection(const void* owner) {
  if (!owner) return nullptr;
  std::lock_guard lock(RegistryMutex());
  auto it = Registry().find(owner);
  return it == Registry().end() ? nullptr : it->second.lock();
}

std::shared_ptr<NxFileCollection> NxFileCollection::Create(PlatformRef platform) {
  auto c = std::make_shared<NxFileCollection>(Passkey{}, std::move(platform));
  std::lock_guard lock(RegistryMutex());
  Registry()[c.get()] = c;
  return c;
}

NxFileCollection::~NxFileCollection() {
  std::lock_guard lock(RegistryMutex());
  Registry().erase(this);
}

void NxFileCollection::Show(const std::string& label) const { ShowError(*platform_, label); }

// ---- slots ----

NxFileCollection::SlotValue& NxFileCollection::SlotValue::operator=(const Variant& v) {
  // The new value is built before the old one goes: releasing an object
  // may run code that reads the collection.
  if (v.IsObject()) {
    ObjectRef object = v.AsObject();
    Destroy();
    new (&object_) ObjectRef(std::move(object));
    isObject_ = true;
  } else {
    Variant copy = v;
    Destroy();
    new (&value_) Variant(std::move(copy));
  }
  return *this;
}

Variant NxFileCollection::SlotValue::Take() {
  Variant out = isObject_ ? Variant(std::move(object_)) : std::move(value_);
  Destroy();
  new (&value_) Variant();
  return out;
}

// Ends the live member; the caller makes the next one.
void NxFileCollection::SlotValue::Destroy() {
  if (isObject_) object_.~ObjectRef();
  else value_.~Variant();
  isObject_ = false;
}

std::string_view NxFileCollection::SlotKey::get() const {
  if (word_ & kOwnText) return *reinterpret_cast<const std::string*>(word_ & ~kOwnText);
  return word_ ? reinterpret_cast<const NxFileListItem*>(word_)->Key() : std::string_view();
}

void NxFileCollection::SlotKey::Set(std::string key, const SlotValue& item) {
  Clear();
  if (key.empty()) return;
  if (const Object* object = item.ObjectPtr()) {
    const auto* listItem = dynamic_cast<const NxFileListItem*>(object);
    if (listItem && listItem->Key() == key) {
      word_ = reinterpret_cast<uintptr_t>(listItem);
      return;
    }
  }
  word_ = reinterpret_cast<uintptr_t>(new std::string(std::move(key))) | kOwnText;
}

void NxFileCollection::SlotKey::Clear() {
  if (word_ & kOwnText) delete reinterpret_cast<std::string*>(word_ & ~kOwnText);
  word_ = 0;
}

uint32_t NxFileCollection::NewSlot() {
  if (!freeSlots_.empty()) {
    const uint32_t id = freeSlots_.back();
    freeSlots_.pop_back();
    return id;
  }
  const uint32_t id = slotCount_;
  if ((id >> kChunkBits) >= chunks_.size()) chunks_.push_back(std::make_unique<Slot[]>(size_t{1} << kChunkBits));
  ++slotCount_;
  return id;
}

void NxFileCollection::FreeSlot(uint32_t id) {
  Slot& s = SlotRef(id);
  s.item = Variant();
  s.key.Clear();
  s.place = kFreeSlot;
  s.hash = 0;
  freeSlots_.push_back(id);
}

void NxFileCollection::ResetArrays() {
  // Drop the values first: releasing an object may run code that looks at
  // the collection, which then already reads as empty.
  auto chunks = std::move(chunks_);
  chunks_.clear();
  slotCount_ = 0;
  freeSlots_.clear();
  freeSlots_.shrink_to_fit();
  positions_.Clear();
  keys_.Clear();
  keyOrder_.clear();
  keyOrder_.shrink_to_fit();
  keyOrderDirty_ = false;
  chunks.clear();
}

// ---- lookups ----

uint32_t NxFileCollection::FindSlot(std::string_view key) const {
  if (key.empty()) return KeyHashIndex::kNone;
  const bool text = Text();
  return keys_.Find(HashKey(key, text), [&](uint32_t slot) { return KeysEqual(SlotRef(slot).key.get(), key, text); });
}

int32_t NxFileCollection::PositionOfSlot(uint32_t slot) const {
  return static_cast<int32_t>(indexBase_ + static_cast<int64_t>(positions_.PositionOfPlace(SlotRef(slot).place)));
}

int64_t NxFileCollection::UpperBound() const {
  // While empty the positions array still has its one unused element.
  const int64_t n = positions_.Count();
  return indexBase_ + std::max<int64_t>(n, 1) - 1;
}

bool NxFileCollection::SlotAtPosition(int64_t position, uint32_t& slot) const {
  const int64_t offset = position - indexBase_;
  if (offset < 0 || offset >= static_cast<int64_t>(positions_.Count())) return false;
  slot = positions_.SlotAt(static_cast<size_t>(offset));
  return true;
}

bool NxFileCollection::SlotAtNumber(const Variant& number, uint32_t& slot) const {
  int64_t position = 0;
  return ToPosition(number, position) && SlotAtPosition(position, slot);
}

const std::vector<uint32_t>& NxFileCollection::KeyOrder() const {
  if (keyOrderDirty_) {
    keyOrder_.clear();
    keyOrder_.reserve(keys_.Size());
    for (size_t place = 0; place < positions_.RawSize(); ++place) {
      const uint32_t slot = positions_.RawAt(static_cast<uint32_t>(place));
      if (slot != PositionList::kDead && !SlotRef(slot).key.empty()) keyOrder_.push_back(slot);
    }
    const bool text = Text();
    std::sort(keyOrder_.begin(), keyOrder_.end(),
              [&](uint32_t a, uint32_t b) { return CompareKeys(SlotRef(a).key.get(), SlotRef(b).key.get(), text) < 0; });
    keyOrderDirty_ = false;
  }
  return keyOrder_;
}

// ---- changes ----

void NxFileCollection::MoveSlotTo(uint32_t slot, int64_t target) {
  const size_t from = positions_.PositionOfPlace(SlotRef(slot).place);
  const size_t to = static_cast<size_t>(target - indexBase_);
  positions_.Move(from, to, [this](uint32_t s, uint32_t place) { SlotRef(s).place = place; });
}

void NxFileCollection::RemoveSlot(uint32_t slot) {
  Slot& s = SlotRef(slot);
  if (!s.key.empty()) {
    keys_.Erase(s.hash, slot);
    keyOrderDirty_ = true;
  }
  positions_.Erase(s.place, [this](uint32_t other, uint32_t place) { SlotRef(other).place = place; });
  // Take the value out before releasing it, so that code run by the
  // release sees a consistent collection.
  Variant released = s.item.Take();
  FreeSlot(slot);
}

void NxFileCollection::SetSlotKey(uint32_t slot, std::string key) {
  Slot& s = SlotRef(slot);
  if (!s.key.empty()) keys_.Erase(s.hash, slot);
  s.key.Set(std::move(key), s.item);
  s.hash = 0;
  if (!s.key.empty()) {
    s.hash = HashKey(s.key.get(), Text());
    keys_.Insert(s.hash, slot);
  }
  keyOrderDirty_ = true;
}

bool NxFileCollection::Add(const Variant& item, const std::string& key, int32_t option, int32_t index) {
  try {
    using O = COLLECTION_ADD_OPTIONS;
    const bool positional =
        option == static_cast<int32_t>(O::AddBeforePosition) || option == static_cast<int32_t>(O::AddAfterPosition);
    if (index == kNoIndexMarker && positional) {
      Show("No position supplied.");
      return false;
    }
    const int64_t upper = UpperBound();
    if (index != kNoIndexMarker && (index < indexBase_ || index > upper)) {
      Show("Add item 9");
      return false;
    }
    if (index == indexBase_ && option == static_cast<int32_t>(O::AddBeforePosition)) {
      option = static_cast<int32_t>(O::BeginningOfCollection);
    } else if (index == upper && option == static_cast<int32_t>(O::AddAfterPosition)) {
      option = static_cast<int32_t>(O::EndOfCollection);
    }
    uint32_t hash = 0;
    if (!key.empty()) {
      hash = HashKey(key, Text());
      const bool text = Text();
      if (keys_.Find(hash, [&](uint32_t s) { return KeysEqual(SlotRef(s).key.get(), key, text); }) != KeyHashIndex::kNone) {
        Show("Add item 457");
        return false;
      }
    }
    // The last position must stay below the marker and inside a Long.
    const int64_t newPosition = indexBase_ + static_cast<int64_t>(positions_.Count());
    if (newPosition >= INT32_MAX || newPosition == kNoIndexMarker) RaiseError(kErrOverflow);

    const uint32_t slot = NewSlot();
    Slot& s = SlotRef(slot);
    s.item = item;
    s.key.Set(key, s.item);
    s.hash = hash;
    s.place = positions_.Append(slot);
    if (!key.empty()) {
      keys_.Insert(hash, slot);
      keyOrderDirty_ = true;
    }

    switch (static_cast<O>(option)) {
      case O::AddBeforePosition: MoveSlotTo(slot, index); break;
      case O::AddAfterPosition: MoveSlotTo(slot, int64_t{index} + 1); break;
      case O::BeginningOfCollection: MoveSlotTo(slot, indexBase_); break;
      default: break;  // stays last
    }
    return true;
  } catch (const std::exception& e) {
    RecordException(e);
    Show("Add item " + std::to_string(CurrentError().number));
    return false;
  }
}

NxFileCollection::Lookup NxFileCollection::ResolveSlot(const Variant& positionOrKey, uint32_t& slot) const {
  if (positionOrKey.IsString()) {
    slot = FindSlot(positionOrKey.TextView());
    return slot == KeyHashIndex::kNone ? Lookup::KeyMissing : Lookup::Found;
  }
  if (!IsPositionKind(positionOrKey)) return Lookup::BadType;
  return SlotAtNumber(positionOrKey, slot) ? Lookup::Found : Lookup::PositionMissing;
}

bool NxFileCollection::Remove(const Variant& positionOrKey) {
  try {
    uint32_t slot = 0;
    switch (ResolveSlot(positionOrKey, slot)) {
      case Lookup::KeyMissing: Show("Remove item. Key not found"); return false;
      case Lookup::PositionMissing: Show("Remove item 9"); return false;
      case Lookup::BadType: Show("Remove item. Invalid datatype"); return false;
      case Lookup::Found: break;
    }
    RemoveSlot(slot);
    return true;
  } catch (const std::exception& e) {
    RecordException(e);
    Show("Remove item " + std::to_string(CurrentError().number));
    return false;
  }
}

std::shared_ptr<NxFileListItem> NxFileCollection::Item(const Variant& vIndexKey) {
  try {
    uint32_t slot = 0;
    switch (ResolveSlot(vIndexKey, slot)) {
      case Lookup::BadType: Show("Item. Invalid datatype"); return nullptr;
      case Lookup::KeyMissing:
      case Lookup::PositionMissing: return nullptr;
      case Lookup::Found: break;
    }
    return SlotRef(slot).item.As<NxFileListItem>();
  } catch (const std::exception& e) {
    RecordException(e);
    Show("Item " + std::to_string(CurrentError().number));
    return nullptr;
  }
}

Variant NxFileCollection::InternalItem(const Variant& positionOrKey) {
  try {
    uint32_t slot = 0;
    switch (ResolveSlot(positionOrKey, slot)) {
      case Lookup::KeyMissing: Show("Item. Key not found."); return Variant();
      case Lookup::BadType: Show("Item. Invalid datatype."); return Variant();
      case Lookup::PositionMissing: return Variant();
      case Lookup::Found: break;
    }
    return SlotRef(slot).item.Get();
  } catch (const std::exception& e) {
    RecordException(e);
    Show("Item " + std::to_string(CurrentError().number));
    return Variant();
  }
}

bool NxFileCollection::Move(const Variant& from, int32_t option, const Variant& to) {
  try {
    if (enumerationCount_ > 0) {
      Show("Move Item. Move not allowed while in For...Each loop.");
      return false;
    }
    // Resolves a position or key to a position; false after its message.
    auto resolve = [&](const Variant& v, int64_t& position) {
      uint32_t slot = 0;
      switch (ResolveSlot(v, slot)) {
        case Lookup::KeyMissing: Show("Move Item. Key not found."); return false;
        case Lookup::BadType: Show("Move Item. Invalid datatype."); return false;
        case Lookup::PositionMissing: Show("Move Item. 9"); return false;
        case Lookup::Found: break;
      }
      position = PositionOfSlot(slot);
      return true;
    };
    int64_t fromPos = 0, toPos = 0;
    if (!resolve(from, fromPos)) return false;
    using O = COLLECTION_ADD_OPTIONS;
    const bool needsTarget =
        option == static_cast<int32_t>(O::AddBeforePosition) || option == static_cast<int32_t>(O::AddAfterPosition);
    if (needsTarget && !resolve(to, toPos)) return false;

    const int64_t upper = UpperBound();
    int64_t target = upper;
    switch (static_cast<O>(option)) {
      case O::AddBeforePosition: target = toPos; break;
      case O::AddAfterPosition: target = toPos + 1; break;
      case O::BeginningOfCollection: target = indexBase_; break;
      default: break;
    }
    // The item counts among the positions it moves over: after "after the
    // last one" it is simply last.
    target = std::clamp<int64_t>(target, indexBase_, upper);
    uint32_t slot = 0;
    SlotAtPosition(fromPos, slot);
    MoveSlotTo(slot, target);
    return true;
  } catch (const std::exception& e) {
    RecordException(e);
    Show("Move Item. Undefined error.");
    return false;
  }
}

bool NxFileCollection::ChangeKey(const std::string& oldKey, const std::string& newKey) {
  try {
    const uint32_t slot = FindSlot(oldKey);
    if (slot == KeyHashIndex::kNone) {
      Show("Change Key. Key not found");
      return false;
    }
    if (FindSlot(newKey) != KeyHashIndex::kNone) {
      Show("Change Key 457");
      return false;
    }
    SetSlotKey(slot, newKey);
    return true;
  } catch (const std::exception& e) {
    RecordException(e);
    Show("Change Key " + std::to_string(CurrentError().number));
    return false;
  }
}

bool NxFileCollection::ChangeKeyForIndex(int32_t position, const std::string& newKey) {
  try {
    uint32_t slot = 0;
    if (!SlotAtPosition(position, slot)) {
      Show("Change Key For Index 9");
      return false;
    }
    if (FindSlot(newKey) != KeyHashIndex::kNone) {
      Show("Change Key For Index 457");
      return false;
    }
    SetSlotKey(slot, newKey);
    return true;
  } catch (const std::exception& e) {
    RecordException(e);
    Show("Change Key For Index " + std::to_string(CurrentError().number));
    return false;
  }
}

// ---- enumeration ----

std::shared_ptr<cEnumerationObject> NxFileCollection::NewEnum() {
  return std::make_shared<cEnumerationObject>(cEnumerationObject::Passkey{}, shared_from_this(), 0);
}

std::shared_ptr<CKeys> NxFileCollection::MakeKeyEnum() {
  return std::make_shared<CKeys>(CKeys::Passkey{}, shared_from_this(), 0);
}

NxFileCollection::iterator::value_type NxFileCollection::iterator::operator*() const {
  return c_->SlotRef(c_->positions_.RawAt(static_cast<uint32_t>(place_))).item.As<NxFileListItem>();
}

NxFileCollection::iterator& NxFileCollection::iterator::operator++() {
  ++place_;
  SkipDead();
  return *this;
}

void NxFileCollection::iterator::SkipDead() {
  const size_t n = c_->positions_.RawSize();
  while (place_ < n && c_->positions_.RawAt(static_cast<uint32_t>(place_)) == PositionList::kDead) ++place_;
}

// ---- Internal ----

void NxFileCollection::Internal::SetCompareMode(int32_t mode) {
  if (c_.Count() >= 1) {
    c_.Show("Collection already initialized");
    return;
  }
  if (mode < 0 || mode >= 2) {
    c_.Show("Compare Mode 9");
    return;
  }
  c_.compareMode_ = static_cast<COMPARE_MODE>(mode);
}

void NxFileCollection::Internal::SetIndexBase(int32_t base) {
  if (c_.Count() >= 1) {
    c_.Show("Collection already initialized");
    return;
  }
  if (base != c_.indexBase_) {
    c_.indexBase_ = base;
    c_.ResetArrays();
  }
}

std::string NxFileCollection::Internal::KeyByIndex(int32_t index) {
  const auto& order = c_.KeyOrder();
  if (index < 0 || static_cast<size_t>(index) >= order.size()) {
    c_.Show("Key by Index 9");
    return "";
  }
  return std::string(c_.SlotRef(order[static_cast<size_t>(index)]).key.get());
}

CollectionFindResult NxFileCollection::Internal::Find(const std::string& key) const {
  CollectionFindResult r;
  const uint32_t slot = c_.FindSlot(key);
  if (slot == KeyHashIndex::kNone) return r;
  r.slot = static_cast<int32_t>(slot);
  r.position = c_.PositionOfSlot(slot);
  return r;
}

void NxFileCollection::Internal::AnnounceKeyChange(std::string_view key, const void*) {
  const uint32_t slot = c_.FindSlot(key);
  if (slot == KeyHashIndex::kNone) return;
  auto listener = c_.listener_.lock();
  if (!listener) return;
  int32_t index = c_.PositionOfSlot(slot);
  std::string k(key);
  listener->GenericEvent(index, k);
}

}  // namespace nxfv
