#include "nxfv/model/k_collection.h"

#include <gtest/gtest.h>

#include "nxfv/platform/error_state.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "nxfv/platform/sim/simulated_platform.h"
#include "platform_linux/temp_dir.h"

namespace nxfv {
namespace {

using Strings = std::vector<std::string>;

Strings Values(const kCollection& k) {
  Strings out;
  for (int32_t i = 0; i < k.Count(); ++i) out.push_back(k.Item(Variant(i)).AsString());
  return out;
}

class KCollectionTest : public ::testing::Test {
 protected:
  std::shared_ptr<SimulatedPlatform> sim_ = std::make_shared<SimulatedPlatform>();
  kCollection k_{sim_};
};

TEST_F(KCollectionTest, ZeroBasedItemAndRemoveCaseBlindKeysBeforeAndAfterIgnored) {
  EXPECT_TRUE(k_.Add(Variant("a")));
  EXPECT_TRUE(k_.Add(Variant("b"), Variant("Key")));
  EXPECT_TRUE(k_.Add(Variant("v"), Variant(), Variant(int32_t{1})));  // Before/After: still appended
  EXPECT_TRUE(k_.Add(Variant("w"), Variant(), Variant(), Variant(int32_t{1})));
  EXPECT_FALSE(k_.Add(Variant("x"), Variant("KEY")));  // a duplicate answers False, raises nothing
  EXPECT_EQ(CurrentError().number, kErrDuplicateKey);
  EXPECT_EQ(Values(k_), (Strings{"a", "b", "v", "w"}));
  EXPECT_EQ(k_.Item(Variant("kEy")), Variant("b"));
  for (const Variant& missing : {Variant(4), Variant(-1), Variant("nokey")}) EXPECT_TRUE(k_.Item(missing).IsEmpty());
  EXPECT_EQ(k_.Colnewb()->Item(Variant(1)), Variant("a"));  // the wrapped one is 1-based

  k_.Remove(Variant(0));
  k_.Remove(Variant("KEY"));
  EXPECT_EQ(Values(k_), (Strings{"v", "w"}));
  struct Case { Variant index; int32_t error; } cases[] = {
      {Variant(2), kErrSubscript}, {Variant(-1), kErrSubscript}, {Variant("zz"), kErrInvalidCall}};
  for (const Case& c : cases) {
    try {
      k_.Remove(c.index);
      ADD_FAILURE() << "no error for " << c.index.AsString();
    } catch (const VbError& e) {
      EXPECT_EQ(e.number(), c.error);
    }
  }
  auto old = k_.Colnewb();
  k_.RemoveAll();  // a fresh collection; the old object is dropped, not emptied
  EXPECT_NE(k_.Colnewb(), old);
  EXPECT_EQ(old->Count(), 2);
}

TEST_F(KCollectionTest, WriteSkipsTheMarkerAndEndsEveryLineWithCrLf) {
  for (const char* v : {"a", kSkipMarker, "b"}) k_.Add(Variant(v));
  k_.Add(Variant(int32_t{-7}));
  k_.Add(Variant(true));
  ASSERT_TRUE(k_.WriteToFile("C:\\list.txt"));
  EXPECT_EQ(*sim_->SimFiles().ReadWholeFile("C:\\list.txt"), "a\r\nb\r\n-7\r\nTrue\r\n");
}

TEST_F(KCollectionTest, ReadSplitsAtCarriageReturnsAndReplacesTheValues) {
  struct Case { std::string bytes; Strings values; } cases[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\r\n\r\nb\r\n", {"a", "", "b"}},
      {"a\rb\r", {"a", "b"}},  // CR alone ends a line too
      {"a\nb\r\n", {"a\nb"}},  // LF alone does not
      {std::string("x\0y\r\n", 5), {std::string("x\0y", 3)}},
  };
  for (const Case& c : cases) {
    sim_->SimFiles().AddFileWithContent("C:\\in.txt", c.bytes);
    k_.Add(Variant("stale"));
    ASSERT_TRUE(k_.ReadFromFile("C:\\in.txt"));
    EXPECT_EQ(Values(k_), c.values) << "bytes: " << c.bytes;
  }
}

TEST_F(KCollectionTest, FileFailuresAnswerFalseAndWriteNothing) {
  k_.Add(Variant("kept"));
  EXPECT_FALSE(k_.ReadFromFile("C:\\missing.txt"));
  EXPECT_EQ(k_.Count(), 0);  // emptied before the read failed
  EXPECT_FALSE(k_.WriteToFile("Q:\\no\\such\\folder\\x.txt"));
  k_.Add(MakeHeaderRecord(headerdatas{}));  // a value without a text form
  EXPECT_FALSE(k_.WriteToFile("C:\\rec.txt"));
  EXPECT_FALSE(sim_->SimFiles().ReadWholeFile("C:\\rec.txt").has_value());
}

// On a real folder: values come back as strings without keys, and a line
// break inside a value splits it.
TEST(KCollectionRealFileTest, RoundTripTurnsValuesIntoStringsAndDropsKeys) {
  testing::TempDir dir;
  auto linux = std::make_shared<LinuxPlatform>();
  kCollection out(linux), back(linux);
  out.Add(Variant(int32_t{42}), Variant("n"));
  out.Add(Variant("two\r\nlines \xC3\xA4"));
  ASSERT_TRUE(out.WriteToFile(dir / "list.txt"));
  ASSERT_TRUE(back.ReadFromFile(dir / "list.txt"));
  EXPECT_EQ(back.Item(Variant(0)), Variant("42"));
  EXPECT_TRUE(back.Item(Variant("n")).IsEmpty());
  EXPECT_EQ(Values(back), (Strings{"42", "two", "lines \xC3\xA4"}));
}

TEST_F(KCollectionTest, HeaderRecordsAreStoredByReferenceAndColumnRecordsByCopy) {
  k_.Add(MakeHeaderRecord(headerdatas{}), Variant("4"));
  HeaderRecordOf(k_.Item(Variant("4")))->data.HeaderWidth = 900;
  EXPECT_EQ(HeaderRecordOf(k_.Item(Variant(0)))->data.HeaderWidth, 900);
  EXPECT_EQ(HeaderRecordOf(Variant("text")), nullptr);
  headerdatas rec;
  rec.AdvInfo.xname = "userd2";
  kCollection::Internal::SetColumnRecord(k_, 20, rec);
  rec.AdvInfo.xname = "changed";
  EXPECT_EQ(kCollection::Internal::ColumnRecord(k_, 20).AdvInfo.xname, "userd2");
  for (int32_t bad : {0, 21}) {
    EXPECT_THROW(kCollection::Internal::ColumnRecord(k_, bad), VbError) << bad;
    EXPECT_THROW(kCollection::Internal::SetColumnRecord(k_, bad, rec), VbError) << bad;
  }
}

}  // namespace
}  // namespace nxfv
