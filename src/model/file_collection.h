// NxFileCollection: the ordered, keyed container of the viewer's items.
//
// Two orders at once: the position order (insertion order, changed by
// positional inserts and moves; positions start at the index base, 1 by
// default) and the key order (all non-empty keys sorted under the compare
// mode). The host sees Count, Item, For Each (NewEnum) and C++ range-for;
// everything else goes through NxFileCollection::Internal, for the
// component's own code.
//
// Error policy: nothing is ever raised to the caller. Each refused
// operation shows the common error box captioned with its label ("Add item
// 457", "Remove item 9", ...) and has no effect. The box text is whatever
// the thread's error state holds at that moment; the collection does not
// set it first, so it usually reads "Error: 0. ".
//
// Complexity (n items):
// - add at the end, lookup by key, remove (by key or position): expected
//   O(1) for the key part, O(log n) for the position part;
// - position -> item and item -> position: O(1) while nothing was removed
//   from the middle, O(log n) after;
// - key order (KeyByIndex, CKeys): rebuilt lazily in O(n log n) after a
//   change, then O(1) per key;
// - positional inserts (AddBeforePosition, AddAfterPosition,
//   BeginningOfCollection) and Move: O(n).
// Memory: one slot (the value, the key, 8 bytes) per item, 4 bytes of
// position order, about 11 bytes of hash index per keyed item.
//
// Iterators of begin()/end() are invalidated by any change.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "nxfv/model/file_list_item.h"
#include "nxfv/model/key_hash_index.h"
#include "nxfv/model/position_list.h"
#include "nxfv/platform/platform.h"
#include "nxfv/platform/variant.h"

namespace nxfv {

class cEnumerationObject;
class CKeys;

// Marks "no position": the default of every optional index argument; never
// a valid position.
inline constexpr int32_t kNoIndexMarker = 268435457;  // 0x10000001

enum class COLLECTION_ADD_OPTIONS : int32_t {
  AddBeforePosition = 1,
  AddAfterPosition = 2,
  BeginningOfCollection = 3,
  EndOfCollection = 4,
};

enum class COMPARE_MODE : int32_t {
  _CompareModeMin = 0,
  BinaryCompare = 0,
  TextCompare = 1,
  _CompareModeMax = 1,
};

// Declared for hosts that know the numbers; the collection reports by
// message label, not by these.
enum class COLLECTION_ERRORS : int32_t {
  AlreadyInitialized,
  KeyNotFound,
  MoveNotAllowedWhileInEnum,
  InvalidDataType,
  NoPositionSupplied,
  Undefined,
};

// The collection's listener (one per collection, held without keeping it
// alive).
class NxFileCollectionEvents {
 public:
  virtual ~NxFileCollectionEvents() = default;
  virtual void GenericEvent(int32_t& Index, std::string& Key) = 0;
};

class NxFileCollection : public Object, public std::enable_shared_from_this<NxFileCollection> {
  struct Passkey {};

 public:
  // platform: where the error boxes go; null = the thread's active one.
  NxFileCollection(Passkey, PlatformRef platform);
  static std::shared_ptr<NxFileCollection> Create(PlatformRef platform = nullptr);
  ~NxFileCollection() override;
  NxFileCollection(const NxFileCollection&) = delete;
  NxFileCollection& operator=(const NxFileCollection&) = delete;

  int32_t Count() const { return static_cast<int32_t>(positions_.Count()); }
  // A number (Long or Double) is a position, a string a key. Any other
  // kind shows "Item. Invalid datatype". A missing key or position, or a
  // value that is not an item, gives null.
  std::shared_ptr<NxFileListItem> Item(const Variant& vIndexKey);
  // The For Each enumerator: the items in position order.
  std::shared_ptr<cEnumerationObject> NewEnum();

  void SetListener(std::weak_ptr<NxFileCollectionEvents> listener) { listener_ = std::move(listener); }

  // Range-for over the items in position order (null for stored values
  // that are not items).
  class iterator {
   public:
    using value_type = std::shared_ptr<NxFileListItem>;
    using difference_type = std::ptrdiff_t;
    iterator() = default;
    value_type operator*() const;
    iterator& operator++();
    iterator operator++(int) {
      iterator old = *this;
      ++*this;
      return old;
    }
    bool operator==(const iterator& o) const { return place_ == o.place_; }

   private:
    friend class NxFileCollection;
    iterator(const NxFileCollection* c, size_t place) : c_(c), place_(place) { SkipDead(); }
    void SkipDead();
    const NxFileCollection* c_ = nullptr;
    size_t place_ = 0;
  };
  iterator begin() const { return iterator(this, 0); }
  iterator end() const { return iterator(this, positions_.RawSize()); }

  class Internal;

 private:
  friend class cEnumerationObject;
  friend class CKeys;

  static constexpr uint32_t kFreeSlot = 0xFFFFFFFFu;
  static constexpr uint32_t kChunkBits = 12;

  // A slot's value. A listing stores a million items, and a Variant holds
  // an object through a counted box of its own (one more allocation per
  // item), so an object is held as the shared pointer itself; any other
  // value as a Variant.
  class SlotValue {
   public:
    SlotValue() : value_() {}
    ~SlotValue() { Destroy(); }
    SlotValue(const SlotValue&) = delete;
    SlotValue& operator=(const SlotValue&) = delete;
    SlotValue& operator=(const Variant& v);
    // The value as a Variant (an object gets a box of its own).
    Variant Get() const { return isObject_ ? Variant(object_) : value_; }
    // Moves the value out, leaving Empty.
    Variant Take();
    // The held object, or null.
    const Object* ObjectPtr() const { return isObject_ ? object_.get() : nullptr; }
    template <class T>
    std::shared_ptr<T> As() const {
      return isObject_ ? std::dynamic_pointer_cast<T>(object_) : value_.As<T>();
    }

   private:
    void Destroy();
    union {
      Variant value_;     // when !isObject_
      ObjectRef object_;  // when isObject_
    };
    bool isObject_ = false;
  };

  // A slot's key. The listings add every item under the item's own Key, so
  // such a key is read from the item the slot holds instead of being stored
  // a second time; any other key is the slot's own text. (The component
  // never re-keys an item while a collection holds it under that key.) One
  // word: the item, or the slot's own text marked by the lowest bit.
  class SlotKey {
   public:
    SlotKey() = default;
    ~SlotKey() { Clear(); }
    SlotKey(const SlotKey&) = delete;
    SlotKey& operator=(const SlotKey&) = delete;
    std::string_view get() const;
    bool empty() const { return get().empty(); }
    void Set(std::string key, const SlotValue& item);
    void Clear();

   private:
    static constexpr uintptr_t kOwnText = 1;
    uintptr_t word_ = 0;
  };
  struct Slot {
    SlotValue item;
    SlotKey key;
    uint32_t place = kFreeSlot;  // index into positions_, or kFreeSlot
    uint32_t hash = 0;           // of key, when key is not empty
  };

  Slot& SlotRef(uint32_t id) { return chunks_[id >> kChunkBits][id & ((1u << kChunkBits) - 1)]; }
  const Slot& SlotRef(uint32_t id) const { return chunks_[id >> kChunkBits][id & ((1u << kChunkBits) - 1)]; }
  uint32_t NewSlot();
  void FreeSlot(uint32_t id);
  bool Text() const { return compareMode_ == COMPARE_MODE::TextCompare; }

  // Slot of a key, or kNone.
  uint32_t FindSlot(std::string_view key) const;
  int32_t PositionOfSlot(uint32_t slot) const;
  // Slot at a position given as a Variant number; false when outside.
  bool SlotAtNumber(const Variant& number, uint32_t& slot) const;
  // How a position-or-key argument resolves: to a slot, or why not.
  enum class Lookup { Found, KeyMissing, PositionMissing, BadType };
  Lookup ResolveSlot(const Variant& positionOrKey, uint32_t& slot) const;
  bool SlotAtPosition(int64_t position, uint32_t& slot) const;
  int64_t UpperBound() const;  // of the positions, base when empty
  void MoveSlotTo(uint32_t slot, int64_t target);
  void RemoveSlot(uint32_t slot);
  void SetSlotKey(uint32_t slot, std::string key);
  const std::vector<uint32_t>& KeyOrder() const;
  std::shared_ptr<CKeys> MakeKeyEnum();
  void ResetArrays();
  void Show(const std::string& label) const;

  // Operations of Internal.
  bool Add(const Variant& item, const std::string& key, int32_t option, int32_t index);
  bool Remove(const Variant& positionOrKey);
  Variant InternalItem(const Variant& positionOrKey);
  bool Move(const Variant& from, int32_t option, const Variant& to);
  bool ChangeKey(const std::string& oldKey, const std::string& newKey);
  bool ChangeKeyForIndex(int32_t position, const std::string& newKey);

  PlatformRef platform_;
  std::weak_ptr<NxFileCollectionEvents> listener_;
  std::vector<std::unique_ptr<Slot[]>> chunks_;
  uint32_t slotCount_ = 0;          // slots ever handed out (high-water mark)
  std::vector<uint32_t> freeSlots_;
  PositionList positions_;
  KeyHashIndex keys_;
  mutable std::vector<uint32_t> keyOrder_;  // slots sorted by key
  mutable bool keyOrderDirty_ = false;
  int32_t indexBase_ = 1;
  COMPARE_MODE compareMode_ = COMPARE_MODE::BinaryCompare;
  int32_t enumerationCount_ = 0;
};

// The live collection whose identity is owner, or null (items keep only
// their owner's identity).
std::shared_ptr<NxFileCollection> LiveCollection(const void* owner);

// Where Find found a key (both fields kNoIndexMarker when it did not).
struct CollectionFindResult {
  int32_t slot = kNoIndexMarker;
  int32_t position = kNoIndexMarker;
};

// The component's own operations on a collection. Every one shows its
// message and does nothing when refused; the Boolean results say whether
// it took effect.
class NxFileCollection::Internal {
 public:
  explicit Internal(NxFileCollection& c) : c_(c) {}

  // Only while empty and 0 <= mode < 2: "Collection already initialized",
  // "Compare Mode 9".
  void SetCompareMode(int32_t mode);
  void SetCompareMode(COMPARE_MODE mode) { SetCompareMode(static_cast<int32_t>(mode)); }
  COMPARE_MODE CompareMode() const { return c_.compareMode_; }
  // Only while empty: "Collection already initialized".
  void SetIndexBase(int32_t base);
  int32_t IndexBase() const { return c_.indexBase_; }
  int32_t EnumerationCount() const { return c_.enumerationCount_; }

  // Number of keys in the key order, and the key at a 0-based place of it
  // ("Key by Index 9" and "" outside).
  int32_t KeyCount() const { return static_cast<int32_t>(c_.keys_.Size()); }
  std::string KeyByIndex(int32_t index);
  CollectionFindResult Find(const std::string& key) const;

  // "No position supplied.", "Add item 9", "Add item 457". Objects are
  // stored by reference, other values by copy. An empty key is not indexed.
  bool Add(const Variant& item, const std::string& key = "",
           COLLECTION_ADD_OPTIONS option = COLLECTION_ADD_OPTIONS::EndOfCollection, int32_t index = kNoIndexMarker) {
    return c_.Add(item, key, static_cast<int32_t>(option), index);
  }
  bool Add(const Variant& item, const std::string& key, int32_t option, int32_t index) {
    return c_.Add(item, key, option, index);
  }
  // "Remove item 9", "Remove item. Invalid datatype", "Remove item. Key not
  // found".
  bool Remove(const Variant& positionOrKey) { return c_.Remove(positionOrKey); }
  // "Item. Invalid datatype.", "Item. Key not found."; a position outside
  // gives Empty without a message.
  Variant Item(const Variant& positionOrKey) { return c_.InternalItem(positionOrKey); }
  // The item leaves its position and ends at the target position: `to`
  // (AddBeforePosition), `to` + 1 (AddAfterPosition, at most the last), the
  // first (BeginningOfCollection) or the last (any other option; `to` is
  // then not looked at); the items in between shift by one.
  // Refused while an item enumerator lives: "Move Item. Move not allowed
  // while in For...Each loop."; also "Move Item. Invalid datatype.", "Move
  // Item. Key not found.", "Move Item. 9", "Move Item. Undefined error.".
  bool Move(const Variant& from, COLLECTION_ADD_OPTIONS option, const Variant& to) {
    return c_.Move(from, static_cast<int32_t>(option), to);
  }
  bool Move(const Variant& from, int32_t option, const Variant& to) { return c_.Move(from, option, to); }
  // "Change Key. Key not found", "Change Key 457".
  bool ChangeKey(const std::string& oldKey, const std::string& newKey) { return c_.ChangeKey(oldKey, newKey); }
  // "Change Key For Index 457"; a position outside: "Change Key For Index 9".
  bool ChangeKeyForIndex(int32_t position, const std::string& newKey) {
    return c_.ChangeKeyForIndex(position, newKey);
  }
  // Drops every value; index base and compare mode stay.
  void Clear() { c_.ResetArrays(); }
  std::shared_ptr<CKeys> NewKeyEnum() { return c_.MakeKeyEnum(); }
  std::shared_ptr<cEnumerationObject> NewItemEnum() { return c_.NewEnum(); }
  // Raises GenericEvent(position, key) for a present key; the identity of
  // the announcing item is accepted for the record and not checked.
  void AnnounceKeyChange(std::string_view key, const void* itemIdentity);

 private:
  NxFileCollection& c_;
};

}  // namespace nxfv
