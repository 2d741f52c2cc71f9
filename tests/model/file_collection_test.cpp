#include "model/file_collection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "model/collection_enumerators.h"
#include "model/key_compare.h"
#include "platform/error_state.h"
#include "platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

using O = COLLECTION_ADD_OPTIONS;

class FileCollectionTest : public ::testing::Test {
 protected:
  void SetUp() override { ClearError(); }

  std::vector<std::string> Titles() const {
    std::vector<std::string> t;
    for (const auto& b : sim_->SimBoxes().Shown()) t.push_back(b.title);
    return t;
  }
  // The values in position order, as text.
  static std::string Order(NxFileCollection& c) {
    std::string out;
    NxFileCollection::Internal in(c);
    for (int32_t p = in.IndexBase(); p < in.IndexBase() + c.Count(); ++p) {
      if (!out.empty()) out += ",";
      out += in.Item(Variant(p)).AsString();
    }
    return out;
  }
  static std::string Keys(NxFileCollection& c) {
    std::string out;
    NxFileCollection::Internal in(c);
    for (int32_t i = 0; i < in.KeyCount(); ++i) {
      if (!out.empty()) out += ",";
      out += in.KeyByIndex(i);
    }
    return out;
  }

  std::shared_ptr<SimulatedPlatform> sim_ = std::make_shared<SimulatedPlatform>();
  std::shared_ptr<NxFileCollection> c_ = NxFileCollection::Create(sim_);
  NxFileCollection::Internal in_{*c_};
};

TEST_F(FileCollectionTest, NewCollectionIsEmptyAndFirstAddSitsAtIndexBase) {
  EXPECT_EQ(c_->Count(), 0);
  EXPECT_EQ(in_.Item(Variant(1)).kind(), Variant::Kind::Empty);
  auto item = NxFileListItem::Create();
  ASSERT_TRUE(in_.Add(item, "k"));
  EXPECT_EQ(c_->Count(), 1);
  EXPECT_EQ(c_->Item(Variant(1)), item);
  EXPECT_EQ(c_->Item(Variant("k")), item);
  EXPECT_EQ(c_->Item(Variant(1.0)), item);
  EXPECT_EQ(c_->Item(Variant("missing")), nullptr);
  EXPECT_EQ(c_->Item(Variant(2)), nullptr);
  EXPECT_TRUE(sim_->SimBoxes().Shown().empty());
}

TEST_F(FileCollectionTest, PositionalAddsPlaceAsOptionsSay) {
  struct Case {
    O option;
    int32_t index;
    std::string expected;
  } cases[] = {
      {O::EndOfCollection, kNoIndexMarker, "a,b,c,X"},
      {O::BeginningOfCollection, kNoIndexMarker, "X,a,b,c"},
      {O::AddBeforePosition, 1, "X,a,b,c"},
      {O::AddBeforePosition, 2, "a,X,b,c"},
      {O::AddBeforePosition, 3, "a,b,X,c"},
      {O::AddAfterPosition, 1, "a,X,b,c"},
      {O::AddAfterPosition, 2, "a,b,X,c"},
      {O::AddAfterPosition, 3, "a,b,c,X"},
      {O::EndOfCollection, 2, "a,b,c,X"},  // index checked, then unused
  };
  for (const Case& k : cases) {
    auto c = NxFileCollection::Create(sim_);
    NxFileCollection::Internal in(*c);
    for (const char* v : {"a", "b", "c"}) in.Add(Variant(v), v);
    ASSERT_TRUE(in.Add(Variant("X"), "X", k.option, k.index));
    EXPECT_EQ(Order(*c), k.expected) << "option " << static_cast<int>(k.option) << " index " << k.index;
    // Keys must still lead to the values after the positions shifted.
    for (const char* v : {"a", "b", "c", "X"}) {
      auto found = in.Find(v);
      EXPECT_EQ(in.Item(Variant(found.position)).AsString(), v) << k.expected;
    }
  }
}

TEST_F(FileCollectionTest, RefusedAddsShowTheirLabelAndAddNothing) {
  in_.Add(Variant("a"), "a");
  in_.Add(Variant("b"), "B");
  struct Case {
    std::string key;
    O option;
    int32_t index;
    const char* label;
  } cases[] = {
      {"x", O::AddBeforePosition, kNoIndexMarker, "No position supplied."},
      {"x", O::AddAfterPosition, kNoIndexMarker, "No position supplied."},
      {"x", O::AddBeforePosition, 0, "Add item 9"},
      {"x", O::AddAfterPosition, 3, "Add item 9"},
      {"x", O::EndOfCollection, -5, "Add item 9"},
      {"a", O::EndOfCollection, kNoIndexMarker, "Add item 457"},
      {"B", O::AddBeforePosition, 1, "Add item 457"},
  };
  for (const Case& k : cases) {
    sim_->SimBoxes().Clear();
    EXPECT_FALSE(in_.Add(Variant("new"), k.key, k.option, k.index)) << k.label;
    ASSERT_EQ(sim_->SimBoxes().Shown().size(), 1u) << k.label;
    const auto& box = sim_->SimBoxes().Shown()[0];
    EXPECT_EQ(box.title, k.label);
    EXPECT_EQ(box.style, 21);
    // The error state is not set before the box: it still reads 0.
    EXPECT_EQ(box.text, "Error: 0. ") << k.label;
    EXPECT_EQ(Order(*c_), "a,b") << k.label;
    EXPECT_EQ(Keys(*c_), "B,a") << k.label;
  }
}

TEST_F(FileCollectionTest, MessageShowsWhateverTheErrorStateHolds) {
  in_.Add(Variant("a"), "a");
  SetError(53, "File not found");
  in_.Add(Variant("again"), "a");
  ASSERT_EQ(sim_->SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(sim_->SimBoxes().Shown()[0].text, "Error: 53. File not found");
}

TEST_F(FileCollectionTest, RefusedOperationsShowTheirLabelAndChangeNothing) {
  for (const char* v : {"a", "b", "c"}) in_.Add(Variant(v), v);
  struct Case {
    const char* label;
    std::function<bool()> run;  // false when the operation reported refusal
  } cases[] = {
      {"Remove item 9", [&] { return in_.Remove(Variant(0)); }},
      {"Remove item 9", [&] { return in_.Remove(Variant(4)); }},
      {"Remove item. Key not found", [&] { return in_.Remove(Variant("zz")); }},
      {"Remove item. Invalid datatype", [&] { return in_.Remove(Variant()); }},
      {"Remove item. Invalid datatype", [&] { return in_.Remove(Variant(true)); }},
      {"Item. Invalid datatype.", [&] { return !in_.Item(Variant()).IsEmpty(); }},
      {"Item. Key not found.", [&] { return !in_.Item(Variant("zz")).IsEmpty(); }},
      {"Item. Invalid datatype", [&] { return c_->Item(Variant(NullValue{})) != nullptr; }},
      {"Move Item. Invalid datatype.", [&] { return in_.Move(Variant(), O::EndOfCollection, Variant(1)); }},
      {"Move Item. Invalid datatype.", [&] { return in_.Move(Variant(1), O::AddBeforePosition, Variant()); }},
      {"Move Item. Key not found.", [&] { return in_.Move(Variant("zz"), O::EndOfCollection, Variant(1)); }},
      {"Move Item. Key not found.", [&] { return in_.Move(Variant(1), O::AddAfterPosition, Variant("zz")); }},
      {"Move Item. 9", [&] { return in_.Move(Variant(9), O::EndOfCollection, Variant(1)); }},
      {"Move Item. 9", [&] { return in_.Move(Variant(1), O::AddBeforePosition, Variant(0)); }},
      {"Change Key. Key not found", [&] { return in_.ChangeKey("zz", "y"); }},
      {"Change Key 457", [&] { return in_.ChangeKey("a", "b"); }},
      {"Change Key 457", [&] { return in_.ChangeKey("a", "a"); }},
      {"Change Key For Index 457", [&] { return in_.ChangeKeyForIndex(1, "c"); }},
      {"Change Key For Index 9", [&] { return in_.ChangeKeyForIndex(7, "q"); }},
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
    EXPECT_EQ(Titles(), std::vector<std::string>{k.label});
    EXPECT_EQ(Order(*c_), "a,b,c") << k.label;
    EXPECT_EQ(Keys(*c_), "a,b,c") << k.label;
  }
}

TEST_F(FileCollectionTest, CompareModeOnlyWhileEmptyAndInRange) {
  in_.SetCompareMode(2);
  EXPECT_EQ(Titles(), std::vector<std::string>{"Compare Mode 9"});
  in_.SetCompareMode(-1);
  EXPECT_EQ(in_.CompareMode(), COMPARE_MODE::BinaryCompare);
  in_.SetCompareMode(COMPARE_MODE::TextCompare);
  EXPECT_EQ(in_.CompareMode(), COMPARE_MODE::TextCompare);
  EXPECT_EQ(sim_->SimBoxes().Shown().size(), 2u);
}

TEST_F(FileCollectionTest, KeysDifferByCaseOnlyUnderBinaryCompare) {
  ASSERT_TRUE(in_.Add(Variant(1), "A"));
  EXPECT_TRUE(in_.Add(Variant(2), "a"));
  EXPECT_EQ(c_->Count(), 2);

  auto text = NxFileCollection::Create(sim_);
  NxFileCollection::Internal tin(*text);
  tin.SetCompareMode(COMPARE_MODE::TextCompare);
  ASSERT_TRUE(tin.Add(Variant(1), "A"));
  sim_->SimBoxes().Clear();
  EXPECT_FALSE(tin.Add(Variant(2), "a"));
  EXPECT_EQ(Titles(), std::vector<std::string>{"Add item 457"});
  EXPECT_EQ(tin.Item(Variant("a")).AsLong(), 1);
  EXPECT_EQ(tin.Find("\xC3\xA4" "X").position, kNoIndexMarker);
  ASSERT_TRUE(tin.Add(Variant(3), "\xC3\x84x"));  // "Äx"
  EXPECT_EQ(tin.Find("\xC3\xA4" "X").position, 2);  // "äX"
}

TEST_F(FileCollectionTest, KeyOrderFollowsTheCompareMode) {
  const std::vector<std::string> keys = {"b", "B", "a", "_", "Z", "\xEF\xBC\xA1" /* U+FF21 */,
                                         "\xF0\x9F\x98\x80" /* U+1F600 */, "ab", "A1"};
  struct Case {
    COMPARE_MODE mode;
    std::vector<std::string> expected;
  } cases[] = {
      // Code units: the character above U+FFFF (a surrogate pair) sorts
      // before U+FF21 although its code point is larger.
      {COMPARE_MODE::BinaryCompare,
       {"A1", "B", "Z", "_", "a", "ab", "b", "\xF0\x9F\x98\x80", "\xEF\xBC\xA1"}},
      // Without case, "B" and "b" collide, so only the first one stays.
      {COMPARE_MODE::TextCompare, {"_", "a", "A1", "ab", "b", "Z", "\xF0\x9F\x98\x80", "\xEF\xBC\xA1"}},
  };
  for (const Case& k : cases) {
    auto c = NxFileCollection::Create(sim_);
    NxFileCollection::Internal in(*c);
    in.SetCompareMode(k.mode);
    for (const auto& key : keys) in.Add(Variant(key), key);
    ASSERT_EQ(in.KeyCount(), static_cast<int32_t>(k.expected.size()));
    std::vector<std::string> got;
    for (int32_t i = 0; i < in.KeyCount(); ++i) got.push_back(in.KeyByIndex(i));
    EXPECT_EQ(got, k.expected) << "mode " << static_cast<int>(k.mode);

    // CKeys walks the same order and names each key's position.
    auto e = in.NewKeyEnum();
    std::vector<Variant> out;
    EXPECT_FALSE(e->Next(100, out));
    ASSERT_EQ(out.size(), k.expected.size());
    for (size_t i = 0; i < out.size(); ++i) {
      auto key = out[i].As<cKey>();
      ASSERT_TRUE(key);
      EXPECT_EQ(key->Key(), k.expected[i]);
      EXPECT_EQ(in.Item(Variant(key->Position())).AsString(), key->Key());
    }
  }
}

TEST_F(FileCollectionTest, ItemsWithoutKeyAreCountedAndEnumeratedButNotFound) {
  in_.Add(Variant("x"));
  in_.Add(Variant("y"), "");
  in_.Add(Variant("z"), "k");
  EXPECT_EQ(c_->Count(), 3);
  EXPECT_EQ(in_.KeyCount(), 1);
  EXPECT_EQ(in_.Find("").position, kNoIndexMarker);
  auto e = c_->NewEnum();
  std::vector<Variant> out;
  e->Next(3, out);
  ASSERT_EQ(out.size(), 3u);
  EXPECT_EQ(out[1].AsString(), "y");
}

TEST_F(FileCollectionTest, RemoveByPositionOrKeyShiftsLaterPositions) {
  for (const char* v : {"a", "b", "c", "d", "e"}) in_.Add(Variant(v), v);
  EXPECT_TRUE(in_.Remove(Variant(2)));
  EXPECT_EQ(Order(*c_), "a,c,d,e");
  EXPECT_TRUE(in_.Remove(Variant("d")));
  EXPECT_EQ(Order(*c_), "a,c,e");
  EXPECT_EQ(in_.Find("e").position, 3);
  EXPECT_EQ(in_.Find("b").position, kNoIndexMarker);
  EXPECT_EQ(Keys(*c_), "a,c,e");
  EXPECT_TRUE(in_.Remove(Variant(3.0)));
  EXPECT_TRUE(in_.Add(Variant("f"), "b"));  // a removed key is free again
  EXPECT_EQ(Order(*c_), "a,c,f");
  EXPECT_EQ(in_.Find("b").position, 3);
}

TEST_F(FileCollectionTest, MoveRotatesTheItemsInBetween) {
  struct Case {
    Variant from;
    O option;
    Variant to;
    std::string expected;
  } cases[] = {
      // The item ends at the target position (as a new item added there
      // would), so moving forward "before 4" lands behind the old 4th.
      {Variant(1), O::AddBeforePosition, Variant(4), "b,c,d,a,e"},
      {Variant(1), O::AddAfterPosition, Variant(4), "b,c,d,e,a"},
      {Variant(5), O::AddBeforePosition, Variant(2), "a,e,b,c,d"},
      {Variant(5), O::AddAfterPosition, Variant(2), "a,b,e,c,d"},
      {Variant("c"), O::BeginningOfCollection, Variant(), "c,a,b,d,e"},
      {Variant("c"), O::EndOfCollection, Variant(), "a,b,d,e,c"},
      {Variant(2), O::AddAfterPosition, Variant("e"), "a,c,d,e,b"},
      {Variant(3), O::AddBeforePosition, Variant(3), "a,b,c,d,e"},
  };
  for (const Case& k : cases) {
    auto c = NxFileCollection::Create(sim_);
    NxFileCollection::Internal in(*c);
    for (const char* v : {"a", "b", "c", "d", "e"}) in.Add(Variant(v), v);
    in.Remove(Variant("a"));  // leave a hole to move across
    in.Add(Variant("a"), "a", O::BeginningOfCollection, kNoIndexMarker);
    ASSERT_TRUE(in.Move(k.from, k.option, k.to)) << k.expected;
    EXPECT_EQ(Order(*c), k.expected);
    for (const char* v : {"a", "b", "c", "d", "e"}) {
      EXPECT_EQ(in.Item(Variant(in.Find(v).position)).AsString(), v) << k.expected;
    }
  }
}

TEST_F(FileCollectionTest, MoveIsRefusedWhileAnItemEnumeratorLives) {
  for (const char* v : {"a", "b", "c"}) in_.Add(Variant(v), v);
  {
    auto e = c_->NewEnum();
    auto clone = e->Clone();
    EXPECT_EQ(in_.EnumerationCount(), 2);
    e.reset();
    EXPECT_FALSE(in_.Move(Variant(1), O::EndOfCollection, Variant()));
    EXPECT_EQ(Titles(), std::vector<std::string>{"Move Item. Move not allowed while in For...Each loop."});
    // A key enumeration does not count.
    auto keys = in_.NewKeyEnum();
    EXPECT_EQ(in_.EnumerationCount(), 1);
  }
  EXPECT_EQ(in_.EnumerationCount(), 0);
  EXPECT_TRUE(in_.Move(Variant(1), O::EndOfCollection, Variant()));
  EXPECT_EQ(Order(*c_), "b,c,a");
}

TEST_F(FileCollectionTest, EnumeratorNextSkipResetClone) {
  for (const char* v : {"a", "b", "c", "d"}) in_.Add(Variant(v), v);
  auto e = c_->NewEnum();
  std::vector<Variant> out;
  EXPECT_TRUE(e->Next(1, out));
  EXPECT_TRUE(e->Skip(1));
  auto clone = e->Clone();
  EXPECT_FALSE(e->Next(5, out));  // only c and d left
  ASSERT_EQ(out.size(), 3u);
  EXPECT_EQ(out[0].AsString() + out[1].AsString() + out[2].AsString(), "acd");
  EXPECT_FALSE(e->Skip(1));
  out.clear();
  EXPECT_TRUE(clone->Next(1, out));
  EXPECT_EQ(out[0].AsString(), "c");
  e->Reset();
  out.clear();
  EXPECT_TRUE(e->Next(1, out));
  EXPECT_EQ(out[0].AsString(), "a");
  // Removing during the walk is allowed; the cursor reads the live order.
  EXPECT_TRUE(in_.Remove(Variant("b")));
  out.clear();
  e->Next(1, out);
  EXPECT_EQ(out[0].AsString(), "c");
}

TEST_F(FileCollectionTest, EnumeratorOutlivingItsCollectionYieldsNothing) {
  in_.Add(Variant("a"), "a");
  auto e = c_->NewEnum();
  c_.reset();
  std::vector<Variant> out;
  EXPECT_FALSE(e->Next(1, out));
  EXPECT_TRUE(out.empty());
  auto clone = e->Clone();
  EXPECT_FALSE(clone->Next(1, out));
}

TEST_F(FileCollectionTest, RangeForAndForEachYieldItemsInPositionOrder) {
  std::vector<std::shared_ptr<NxFileListItem>> items;
  for (int i = 0; i < 4; ++i) {
    items.push_back(NxFileListItem::Create());
    in_.Add(items.back(), "k" + std::to_string(i));
  }
  in_.Remove(Variant(2));
  in_.Move(Variant(1), O::EndOfCollection, Variant());
  std::vector<std::shared_ptr<NxFileListItem>> seen;
  for (auto item : *c_) seen.push_back(item);
  EXPECT_EQ(seen, (std::vector<std::shared_ptr<NxFileListItem>>{items[2], items[3], items[0]}));
}

TEST_F(FileCollectionTest, ChangeKeyReindexesTheEntry) {
  for (const char* v : {"a", "b", "c"}) in_.Add(Variant(v), v);
  EXPECT_TRUE(in_.ChangeKey("a", "z"));
  EXPECT_EQ(Keys(*c_), "b,c,z");
  EXPECT_EQ(in_.Item(Variant("z")).AsString(), "a");
  EXPECT_EQ(in_.Find("a").position, kNoIndexMarker);
  EXPECT_TRUE(in_.ChangeKeyForIndex(2, "0"));
  EXPECT_EQ(Keys(*c_), "0,c,z");
  EXPECT_EQ(in_.Find("0").position, 2);
  EXPECT_TRUE(in_.ChangeKeyForIndex(3, ""));  // unkeyed from now on
  EXPECT_EQ(Keys(*c_), "0,z");
  EXPECT_EQ(Order(*c_), "a,b,c");
}

TEST_F(FileCollectionTest, IndexBaseShiftsEveryPosition) {
  in_.SetIndexBase(0);
  for (const char* v : {"a", "b"}) in_.Add(Variant(v), v);
  EXPECT_EQ(in_.Find("a").position, 0);
  EXPECT_EQ(in_.Item(Variant(1)).AsString(), "b");
  EXPECT_EQ(c_->Item(Variant(2)), nullptr);
  EXPECT_TRUE(in_.Add(Variant("x"), "x", O::AddBeforePosition, 0));
  EXPECT_EQ(Order(*c_), "x,a,b");
  sim_->SimBoxes().Clear();
  EXPECT_FALSE(in_.Add(Variant("y"), "y", O::AddBeforePosition, 3));
  EXPECT_EQ(Titles(), std::vector<std::string>{"Add item 9"});
  in_.Clear();
  EXPECT_EQ(c_->Count(), 0);
  EXPECT_EQ(in_.IndexBase(), 0);
}

TEST_F(FileCollectionTest, ClearReleasesTheItems) {
  auto item = NxFileListItem::Create();
  std::weak_ptr<NxFileListItem> weak = item;
  in_.Add(item, "k");
  item.reset();
  EXPECT_FALSE(weak.expired());
  in_.Clear();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(c_->Count(), 0);
  EXPECT_EQ(in_.KeyCount(), 0);
  EXPECT_TRUE(in_.Add(Variant(1), "k"));
}

class RecordingCollectionListener : public NxFileCollectionEvents {
 public:
  void GenericEvent(int32_t& Index, std::string& Key) override { seen.emplace_back(Index, Key); }
  std::vector<std::pair<int32_t, std::string>> seen;
};

TEST_F(FileCollectionTest, AnnouncedKeyChangeRaisesGenericEventWithThePosition) {
  auto listener = std::make_shared<RecordingCollectionListener>();
  c_->SetListener(listener);
  for (const char* v : {"a", "b"}) in_.Add(Variant(v), v);
  in_.AnnounceKeyChange("b", nullptr);
  in_.AnnounceKeyChange("absent", nullptr);
  ASSERT_EQ(listener->seen.size(), 1u);
  EXPECT_EQ(listener->seen[0], (std::pair<int32_t, std::string>{2, "b"}));
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
    auto keyOf = [&](uint32_t r) {
      std::string k = "k" + std::to_string(r % 400);
      if (r & 1) k[0] = 'K';
      return k;
    };
    auto present = [&](const std::string& k) {
      return std::find_if(model.begin(), model.end(),
                          [&](auto& e) { return KeysEqual(e.first, k, text); }) != model.end();
    };
    for (int step = 0; step < 3000; ++step) {
      const uint32_t r = rng();
      const int n = static_cast<int>(model.size());
      switch (r % 6) {
        case 0:
        case 1:
        case 2: {
          std::string k = keyOf(rng());
          const bool ok = in.Add(Variant(next), k);
          EXPECT_EQ(ok, !present(k));
          if (ok) model.emplace_back(k, next);
          ++next;
          break;
        }
        case 3:
          if (n > 0) {
            const int p = static_cast<int>(rng() % n);
            ASSERT_TRUE(in.Remove(Variant(p + 1)));
            model.erase(model.begin() + p);
          }
          break;
        case 4:
          if (n > 0) {
            const int from = static_cast<int>(rng() % n), to = static_cast<int>(rng() % n);
            ASSERT_TRUE(in.Move(Variant(from + 1), O::AddBeforePosition, Variant(to + 1)));
            auto e = model[from];
            model.erase(model.begin() + from);
            model.insert(model.begin() + to, e);
          }
          break;
        case 5:
          if (n > 0) {
            const int p = static_cast<int>(rng() % n);
            std::string k = keyOf(rng());
            const bool ok = in.ChangeKeyForIndex(p + 1, k);
            EXPECT_EQ(ok, !present(k));
            if (ok) model[p].first = k;
          }
          break;
      }
      ASSERT_EQ(c->Count(), static_cast<int32_t>(model.size()));
      if (step % 97 == 0 || step > 2900) {
        for (int p = 0; p < static_cast<int>(model.size()); ++p) {
          ASSERT_EQ(in.Item(Variant(p + 1)).AsLong(), model[p].second) << "step " << step;
          ASSERT_EQ(in.Find(model[p].first).position, p + 1) << "step " << step;
        }
        std::vector<std::string> sorted;
        for (auto& e : model) sorted.push_back(e.first);
        std::sort(sorted.begin(), sorted.end(),
                  [&](const std::string& a, const std::string& b) { return CompareKeys(a, b, text) < 0; });
        ASSERT_EQ(in.KeyCount(), static_cast<int32_t>(sorted.size()));
        for (size_t i = 0; i < sorted.size(); ++i) ASSERT_EQ(in.KeyByIndex(static_cast<int32_t>(i)), sorted[i]);
      }
    }
    EXPECT_TRUE(sim_->SimBoxes().Shown().size() > 0);  // the refused duplicates
  }
}

}  // namespace
}  // namespace nxfv
