#include "nxfv/model/file_collection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "nxfv/model/collection_enumerators.h"
#include "nxfv/model/key_compare.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

using O = COLLECTION_ADD_OPTIONS;
using Strings = std::vector<std::string>;

class FileCollectionTest : public ::testing::Test {
 protected:
  void SetUp() override { ClearError(); }

  Strings Titles() const {
    Strings t;
    for (const auto& b : sim_->SimBoxes().Shown()) t.push_back(b.title);
    return t;
  }
  // The values in position order and the keys in key order, as text.
  static std::string Order(NxFileCollection& c) {
    NxFileCollection::Internal in(c);
    std::string out;
    for (int32_t p = in.IndexBase(); p < in.IndexBase() + c.Count(); ++p) {
      out += (out.empty() ? "" : ",") + in.Item(Variant(p)).AsString();
    }
    return out;
  }
  static std::string Keys(NxFileCollection& c) {
    NxFileCollection::Internal in(c);
    std::string out;
    for (int32_t i = 0; i < in.KeyCount(); ++i) out += (out.empty() ? "" : ",") + in.KeyByIndex(i);
    return out;
  }
  // A fresh collection holding each value under itself as key.
  std::shared_ptr<NxFileCollection> Filled(std::initializer_list<const char*> values) {
    auto c = NxFileCollection::Create(sim_);
    for (const char* v : values) NxFileCollection::Internal(*c).Add(Variant(v), v);
    return c;
  }

  std::shared_ptr<SimulatedPlatform> sim_ = std::make_shared<SimulatedPlatform>();
  std::shared_ptr<NxFileCollection> c_ = NxFileCollection::Create(sim_);
  NxFileCollection::Internal in_{*c_};
};

TEST_F(FileCollectionTest, ItemFindsByPositionKeyOrDoubleAndUnkeyedItemsAreNotIndexed) {
  auto item = NxFileListItem::Create();
  in_.Add(Variant("x"));
  in_.Add(Variant("y"), "");
  ASSERT_TRUE(in_.Add(item, "k"));
  ASSERT_TRUE(in_.Add(Variant("z"), "z"));
  EXPECT_TRUE(in_.ChangeKeyForIndex(4, ""));  // an empty new key unindexes
  EXPECT_EQ(Keys(*c_), "k");
  EXPECT_EQ(in_.Find("").position, kNoIndexMarker);
  EXPECT_EQ(c_->Item(Variant(3.0)), item);
  EXPECT_EQ(c_->Item(Variant("k")), item);
  for (const Variant& none : {Variant(1) /* not an item */, Variant("K"), Variant(5), Variant(0)}) {
    EXPECT_EQ(c_->Item(none), nullptr) << none.AsString();
  }
  EXPECT_TRUE(sim_->SimBoxes().Shown().empty());
}

TEST_F(FileCollectionTest, PositionalAddsPlaceAsOptionsSay) {
  struct Case { O option; int32_t index; std::string expected; } cases[] = {
      {O::EndOfCollection, kNoIndexMarker, "a,b,c,X"}, {O::BeginningOfCollection, kNoIndexMarker, "X,a,b,c"},
      {O::AddBeforePosition, 1, "X,a,b,c"},            {O::AddBeforePosition, 3, "a,b,X,c"},
      {O::AddAfterPosition, 1, "a,X,b,c"},             {O::AddAfterPosition, 3, "a,b,c,X"},
      {O::EndOfCollection, 2, "a,b,c,X"},  // index checked, then unused
  };
  for (const Case& k : cases) {
    auto c = Filled({"a", "b", "c"});
    NxFileCollection::Internal in(*c);
    ASSERT_TRUE(in.Add(Variant("X"), "X", k.option, k.index));
    EXPECT_EQ(Order(*c), k.expected) << "option " << static_cast<int>(k.option) << " index " << k.index;
    // Keys must still lead to the values after the positions shifted.
    for (const char* v : {"a", "b", "c", "X"}) {
      EXPECT_EQ(in.Item(Variant(in.Find(v).position)).AsString(), v) << k.expected;
    }
  }
}

// Every refused operation shows its label over the untouched error state
// ("Error: 0. ") and leaves positions and keys as they were.
TEST_F(FileCollectionTest, RefusedOperationsShowTheirLabelAndChangeNothing) {
  for (const char* v : {"a", "b"}) in_.Add(Variant(v), v);
  in_.Add(Variant("c"), "C");
  struct Case { const char* label; std::function<bool()> run; /* false: refused */ } cases[] = {
      {"No position supplied.", [&] { return in_.Add(Variant("n"), "n", O::AddBeforePosition, kNoIndexMarker); }},
      {"Add item 9", [&] { return in_.Add(Variant("n"), "n", O::AddBeforePosition, 0); }},
      {"Add item 9", [&] { return in_.Add(Variant("n"), "n", O::AddAfterPosition, 4); }},
      {"Add item 457", [&] { return in_.Add(Variant("n"), "C", O::AddBeforePosition, 1); }},
      {"Remove item 9", [&] { return in_.Remove(Variant(0)); }},
      {"Remove item 9", [&] { return in_.Remove(Variant(4)); }},
      {"Remove item. Key not found", [&] { return in_.Remove(Variant("c")); }},  // binary: case counts
      {"Remove item. Invalid datatype", [&] { return in_.Remove(Variant(true)); }},
      {"Item. Invalid datatype.", [&] { return !in_.Item(Variant()).IsEmpty(); }},
      {"Item. Key not found.", [&] { return !in_.Item(Variant("zz")).IsEmpty(); }},
      {"Item. Invalid datatype", [&] { return c_->Item(Variant(NullValue{})) != nullptr; }},
      {"Move Item. Invalid datatype.", [&] { return in_.Move(Variant(1), O::AddBeforePosition, Variant()); }},
      {"Move Item. Key not found.", [&] { return in_.Move(Variant(1), O::AddAfterPosition, Variant("zz")); }},
      {"Move Item. 9", [&] { return in_.Move(Variant(1), O::AddBeforePosition, Variant(0)); }},
      {"Change Key. Key not found", [&] { return in_.ChangeKey("zz", "y"); }},
      {"Change Key 457", [&] { return in_.ChangeKey("a", "a"); }},
      {"Change Key For Index 457", [&] { return in_.ChangeKeyForIndex(1, "C"); }},
      {"Change Key For Index 9", [&] { return in_.ChangeKeyForIndex(4, "q"); }},
      {"Key by Index 9", [&] { return !in_.KeyByIndex(3).empty(); }},
      {"Key by Index 9", [&] { return !in_.KeyByIndex(-1).empty(); }},
      {"Collection already initialized", [&] {
         in_.SetCompareMode(COMPARE_MODE::TextCompare);
         return in_.CompareMode() != COMPARE_MODE::BinaryCompare;
       }},
      {"Collection already initialized", [&] {
         in_.SetIndexBase(0);
         return in_.IndexBase() != 1;
       }},
  };
  for (const Case& k : cases) {
    sim_->SimBoxes().Clear();
    EXPECT_FALSE(k.run()) << k.label;
    ASSERT_EQ(sim_->SimBoxes().Shown().size(), 1u) << k.label;
    EXPECT_EQ(sim_->SimBoxes().Shown()[0], (MessageBoxRecord{k.label, "Error: 0. ", 21}));
    EXPECT_EQ(Order(*c_), "a,b,c") << k.label;
    EXPECT_EQ(Keys(*c_), "C,a,b") << k.label;
  }
  SetError(53, "File not found");  // the box shows whatever the state holds
  in_.Add(Variant("again"), "a");
  EXPECT_EQ(sim_->SimBoxes().Shown().back().text, "Error: 53. File not found");
}

TEST_F(FileCollectionTest, CompareModeAndIndexBaseAreSetWhileEmpty) {
  in_.SetCompareMode(2);
  in_.SetCompareMode(-1);
  EXPECT_EQ(Titles(), (Strings{"Compare Mode 9", "Compare Mode 9"}));
  EXPECT_EQ(in_.CompareMode(), COMPARE_MODE::BinaryCompare);
  in_.SetIndexBase(0);
  for (const char* v : {"a", "b"}) in_.Add(Variant(v), v);
  EXPECT_TRUE(in_.Add(Variant("x"), "x", O::AddBeforePosition, 0));
  EXPECT_FALSE(in_.Add(Variant("y"), "y", O::AddAfterPosition, 3));
  EXPECT_EQ(Titles().back(), "Add item 9");
  EXPECT_EQ(Order(*c_), "x,a,b");
  EXPECT_EQ(in_.Find("b").position, 2);
  in_.Clear();
  EXPECT_EQ(in_.IndexBase(), 0);
}

// The order itself is checked against CompareKeys by the random test; here
// the text mode's collisions and the key enumerator.
TEST_F(FileCollectionTest, KeyOrderAndEqualityFollowTheCompareMode) {
  const Strings keys = {"b", "B", "_", "\xF0\x9F\x98\x80" /* U+1F600 */, "\xC3\x84x" /* Äx */};
  struct Case { COMPARE_MODE mode; Strings expected; } cases[] = {
      {COMPARE_MODE::BinaryCompare, {"B", "_", "b", "\xC3\x84x", "\xF0\x9F\x98\x80"}},
      // Without case "B" collides with "b", so only the first one stays.
      {COMPARE_MODE::TextCompare, {"_", "b", "\xC3\x84x", "\xF0\x9F\x98\x80"}},
  };
  for (const Case& k : cases) {
    auto c = NxFileCollection::Create(sim_);
    NxFileCollection::Internal in(*c);
    in.SetCompareMode(k.mode);
    for (const auto& key : keys) in.Add(Variant(key), key);
    const bool text = k.mode == COMPARE_MODE::TextCompare;
    EXPECT_EQ(in.Find("\xC3\xA4" "X").position, text ? 4 : kNoIndexMarker);  // "äX"
    EXPECT_EQ(in.Item(Variant("B")).AsString(), text ? "b" : "B");
    // CKeys walks the key order and names each key's position.
    std::vector<Variant> out;
    EXPECT_FALSE(in.NewKeyEnum()->Next(100, out));
    ASSERT_EQ(out.size(), k.expected.size());
    for (size_t i = 0; i < out.size(); ++i) {
      auto key = out[i].As<cKey>();
      ASSERT_TRUE(key);
      EXPECT_EQ(key->Key(), k.expected[i]);
      EXPECT_EQ(in.Item(Variant(key->Position())).AsString(), key->Key());
    }
  }
}

TEST_F(FileCollectionTest, MoveRotatesTheItemsInBetween) {
  struct Case { Variant from; O option; Variant to; std::string expected; } cases[] = {
      // The item ends at the target position (as a new item added there
      // would), so moving forward "before 4" lands behind the old 4th.
      {Variant(1), O::AddBeforePosition, Variant(4), "b,c,d,a,e"},
      {Variant(1), O::AddAfterPosition, Variant(4), "b,c,d,e,a"},
      {Variant(5), O::AddAfterPosition, Variant(2), "a,b,e,c,d"},
      {Variant("c"), O::BeginningOfCollection, Variant(), "c,a,b,d,e"},
      {Variant("c"), O::EndOfCollection, Variant(), "a,b,d,e,c"},
      {Variant(2), O::AddAfterPosition, Variant("e"), "a,c,d,e,b"},
  };
  for (const Case& k : cases) {
    auto c = Filled({"a", "b", "c", "d", "e"});
    NxFileCollection::Internal in(*c);
    in.Remove(Variant("a"));  // leave a hole to move across
    in.Add(Variant("a"), "a", O::BeginningOfCollection, kNoIndexMarker);
    ASSERT_TRUE(in.Move(k.from, k.option, k.to)) << k.expected;
    EXPECT_EQ(Order(*c), k.expected);
    EXPECT_EQ(in.Item(Variant(in.Find("a").position)).AsString(), "a") << k.expected;
  }
}

TEST_F(FileCollectionTest, EnumeratorsReadTheLiveOrderAndBlockMoveWhileTheyLive) {
  for (const char* v : {"a", "b", "c", "d"}) in_.Add(Variant(v), v);
  auto e = c_->NewEnum();
  std::vector<Variant> out;
  auto text = [&] {
    std::string s;
    for (const auto& v : out) s += v.AsString();
    out.clear();
    return s;
  };
  EXPECT_TRUE(e->Next(1, out));
  EXPECT_TRUE(e->Skip(1));
  auto clone = e->Clone();
  EXPECT_FALSE(e->Next(5, out));  // only c and d left
  EXPECT_EQ(text(), "acd");
  EXPECT_FALSE(e->Skip(1));
  EXPECT_TRUE(clone->Next(1, out));
  EXPECT_EQ(text(), "c");
  e->Reset();
  EXPECT_TRUE(e->Next(1, out));
  EXPECT_TRUE(in_.Remove(Variant("b")));  // allowed during the walk
  e->Next(1, out);
  EXPECT_EQ(text(), "ac");

  e.reset();  // the clone still counts; a key enumeration does not
  auto keys = in_.NewKeyEnum();
  EXPECT_EQ(in_.EnumerationCount(), 1);
  EXPECT_FALSE(in_.Move(Variant(1), O::EndOfCollection, Variant()));
  EXPECT_EQ(Titles(), Strings{"Move Item. Move not allowed while in For...Each loop."});
  clone.reset();
  EXPECT_TRUE(in_.Move(Variant(1), O::EndOfCollection, Variant()));
  EXPECT_EQ(Order(*c_), "c,d,a");

  auto orphan = c_->NewEnum();
  c_.reset();  // an enumerator outliving its collection yields nothing
  EXPECT_FALSE(orphan->Next(1, out));
  EXPECT_FALSE(orphan->Clone()->Next(1, out));
  EXPECT_FALSE(keys->Next(1, out));
  EXPECT_TRUE(out.empty());
}

TEST_F(FileCollectionTest, RangeForSkipsHolesAndClearReleasesTheItems) {
  std::vector<std::shared_ptr<NxFileListItem>> items, seen;
  for (int i = 0; i < 4; ++i) {
    items.push_back(NxFileListItem::Create());
    in_.Add(items.back(), "k" + std::to_string(i));
  }
  in_.Remove(Variant(2));
  in_.Move(Variant(1), O::EndOfCollection, Variant());
  for (auto item : *c_) seen.push_back(item);
  EXPECT_EQ(seen, (std::vector<std::shared_ptr<NxFileListItem>>{items[2], items[3], items[0]}));
  std::weak_ptr<NxFileListItem> weak = items[0];
  items.clear();
  seen.clear();
  in_.Clear();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(in_.KeyCount(), 0);
  EXPECT_TRUE(in_.Add(Variant(1), "k0"));  // its keys are free again
}

// Random operations against a plain vector: positions, key lookups and key
// order must agree after every step, across tombstones and compactions.
TEST_F(FileCollectionTest, AgreesWithASimpleModelUnderRandomOperations) {
  for (bool text : {false, true}) {
    auto c = NxFileCollection::Create(sim_);
    NxFileCollection::Internal in(*c);
    if (text) in.SetCompareMode(COMPARE_MODE::TextCompare);
    std::vector<std::pair<std::string, int32_t>> model;  // key, value
    std::mt19937 rng(text ? 7 : 3);
    int32_t next = 0;
    auto keyOf = [&](uint32_t r) { return std::string(r & 1 ? "K" : "k") + std::to_string(r % 400); };
    auto absent = [&](const std::string& k) {
      return std::none_of(model.begin(), model.end(), [&](auto& e) { return KeysEqual(e.first, k, text); });
    };
    for (int step = 0; step < 3000; ++step) {
      // Phases heavy in removals pile up holes until the list compacts.
      const uint32_t r = rng() % 10 + ((step / 500) % 2 ? 4 : 0);
      const int n = static_cast<int>(model.size());
      const int p = n > 0 ? static_cast<int>(rng() % n) : 0;
      const bool byKey = rng() & 1;
      if (r < 5 || n == 0) {
        std::string k = keyOf(rng());
        const bool ok = in.Add(Variant(next), k);
        EXPECT_EQ(ok, absent(k));
        if (ok) model.emplace_back(k, next);
        ++next;
      } else if (r == 5) {
        const int to = static_cast<int>(rng() % n);
        ASSERT_TRUE(in.Move(Variant(p + 1), O::AddBeforePosition, Variant(to + 1)));
        auto e = model[p];
        model.erase(model.begin() + p);
        model.insert(model.begin() + to, e);
      } else if (r == 6) {
        std::string k = keyOf(rng());
        const bool ok = byKey ? in.ChangeKey(model[p].first, k) : in.ChangeKeyForIndex(p + 1, k);
        EXPECT_EQ(ok, absent(k));
        if (ok) model[p].first = k;
      } else {
        ASSERT_TRUE(in.Remove(byKey ? Variant(model[p].first) : Variant(p + 1)));
        model.erase(model.begin() + p);
      }
      ASSERT_EQ(c->Count(), static_cast<int32_t>(model.size()));
      if (step % 25 != 0 && step <= 2900) continue;
      Strings sorted;
      for (int p = 0; p < static_cast<int>(model.size()); ++p) {
        ASSERT_EQ(in.Item(Variant(p + 1)).AsLong(), model[p].second) << "step " << step;
        ASSERT_EQ(in.Find(model[p].first).position, p + 1) << "step " << step;
        sorted.push_back(model[p].first);
      }
      std::sort(sorted.begin(), sorted.end(), [&](auto& a, auto& b) { return CompareKeys(a, b, text) < 0; });
      ASSERT_EQ(in.KeyCount(), static_cast<int32_t>(sorted.size()));
      for (size_t i = 0; i < sorted.size(); ++i) ASSERT_EQ(in.KeyByIndex(static_cast<int32_t>(i)), sorted[i]);
    }
  }
}

}  // namespace
}  // namespace nxfv
