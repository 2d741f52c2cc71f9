#include "model/k_collection.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/error_state.h"
#include "platform/linux/linux_platform.h"
#include "platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

class KCollectionTest : public ::testing::Test {
 protected:
  std::vector<std::string> Values(const kCollection& k) {
    std::vector<std::string> out;
    for (int32_t i = 0; i < k.Count(); ++i) out.push_back(k.Item(Variant(i)).AsString());
    return out;
  }
  std::shared_ptr<SimulatedPlatform> sim_ = std::make_shared<SimulatedPlatform>();
  kCollection k_{sim_};
};

TEST_F(KCollectionTest, NumbersAreZeroBasedAndKeysIgnoreCase) {
  EXPECT_TRUE(k_.Add(Variant("a")));
  EXPECT_TRUE(k_.Add(Variant("b"), Variant("Key")));
  EXPECT_TRUE(k_.Add(Variant(int32_t{3})));
  EXPECT_EQ(k_.Count(), 3);
  EXPECT_EQ(k_.Item(Variant(0)), Variant("a"));
  EXPECT_EQ(k_.Item(Variant(2)), Variant(int32_t{3}));
  EXPECT_EQ(k_.Item(Variant("KEY")), Variant("b"));
  EXPECT_TRUE(k_.Item(Variant(3)).IsEmpty());
  EXPECT_TRUE(k_.Item(Variant(-1)).IsEmpty());
  EXPECT_TRUE(k_.Item(Variant("nokey")).IsEmpty());
  // The wrapped collection itself is 1-based.
  EXPECT_EQ(k_.Colnewb()->Item(Variant(1)), Variant("a"));
}

TEST_F(KCollectionTest, DuplicateKeyAddReturnsFalseAndKeepsOneValue) {
  EXPECT_TRUE(k_.Add(Variant("x"), Variant("k")));
  EXPECT_FALSE(k_.Add(Variant("x"), Variant("K")));
  EXPECT_EQ(k_.Count(), 1);
  EXPECT_EQ(CurrentError().number, kErrDuplicateKey);
}

TEST_F(KCollectionTest, BeforeAndAfterAreIgnored) {
  k_.Add(Variant("a"));
  k_.Add(Variant("b"));
  EXPECT_TRUE(k_.Add(Variant("v"), Variant(), Variant(int32_t{1})));
  EXPECT_TRUE(k_.Add(Variant("w"), Variant(), Variant(), Variant(int32_t{1})));
  EXPECT_EQ(Values(k_), (std::vector<std::string>{"a", "b", "v", "w"}));
}

TEST_F(KCollectionTest, RemoveIsZeroBasedAndRaisesWhenMissing) {
  for (const char* v : {"a", "b", "c"}) k_.Add(Variant(v), Variant(std::string("k") + v));
  k_.Remove(Variant(0));
  EXPECT_EQ(Values(k_), (std::vector<std::string>{"b", "c"}));
  k_.Remove(Variant("KC"));
  EXPECT_EQ(Values(k_), (std::vector<std::string>{"b"}));
  struct Case {
    Variant index;
    int32_t error;
  } cases[] = {{Variant(1), kErrSubscript}, {Variant(-1), kErrSubscript}, {Variant("zz"), kErrInvalidCall}};
  for (const Case& c : cases) {
    try {
      k_.Remove(c.index);
      ADD_FAILURE() << "no error for " << c.error;
    } catch (const VbError& e) {
      EXPECT_EQ(e.number(), c.error);
    }
  }
  EXPECT_EQ(k_.Count(), 1);
}

TEST_F(KCollectionTest, RemoveAllStartsAFreshCollection) {
  k_.Add(Variant("a"), Variant("k"));
  auto old = k_.Colnewb();
  k_.RemoveAll();
  EXPECT_EQ(k_.Count(), 0);
  EXPECT_NE(k_.Colnewb(), old);
  EXPECT_EQ(old->Count(), 1);  // the old object is not emptied, only dropped
  EXPECT_TRUE(k_.Add(Variant("a"), Variant("k")));
}

TEST_F(KCollectionTest, WriteSkipsTheMarkerAndEndsEveryLineWithCrLf) {
  for (const char* v : {"a", kSkipMarker, "b"}) k_.Add(Variant(v));
  k_.Add(Variant(int32_t{-7}));
  k_.Add(Variant(true));
  k_.Add(Variant(std::string("\xC3\xA4")));
  ASSERT_TRUE(k_.WriteToFile("C:\\list.txt"));
  EXPECT_EQ(*sim_->SimFiles().ReadWholeFile("C:\\list.txt"), "a\r\nb\r\n-7\r\nTrue\r\n\xC3\xA4\r\n");
}

TEST_F(KCollectionTest, ReadSplitsAtCarriageReturns) {
  struct Case {
    std::string bytes;
    std::vector<std::string> values;
  } cases[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\r\n", {"a"}},
      {"a\r\nb", {"a", "b"}},
      {"a\r\n\r\nb\r\n", {"a", "", "b"}},
      {"a\rb\r", {"a", "b"}},          // CR alone ends a line too
      {"a\nb\r\n", {"a\nb"}},           // LF alone does not
      {"\r\n", {""}},
      {std::string("x\0y\r\n", 5), {std::string("x\0y", 3)}},
  };
  for (const Case& c : cases) {
    sim_->SimFiles().AddFileWithContent("C:\\in.txt", c.bytes);
    k_.Add(Variant("stale"));
    ASSERT_TRUE(k_.ReadFromFile("C:\\in.txt"));
    EXPECT_EQ(Values(k_), c.values) << "bytes: " << c.bytes;
  }
}

TEST_F(KCollectionTest, RoundTripTurnsValuesIntoStringsAndDropsKeys) {
  k_.Add(Variant(int32_t{42}), Variant("n"));
  k_.Add(Variant("two\r\nlines"));
  ASSERT_TRUE(k_.WriteToFile("C:\\rt.txt"));
  kCollection back(sim_);
  ASSERT_TRUE(back.ReadFromFile("C:\\rt.txt"));
  EXPECT_EQ(back.Item(Variant(0)), Variant("42"));
  EXPECT_TRUE(back.Item(Variant("n")).IsEmpty());
  EXPECT_EQ(Values(back), (std::vector<std::string>{"42", "two", "lines"}));
}

TEST_F(KCollectionTest, FileFailuresAnswerFalse) {
  EXPECT_FALSE(k_.ReadFromFile("C:\\missing.txt"));
  EXPECT_FALSE(k_.WriteToFile("Q:\\no\\such\\folder\\x.txt"));
  // A value without a text form fails the write and writes nothing.
  k_.Add(MakeHeaderRecord(headerdatas{}));
  EXPECT_FALSE(k_.WriteToFile("C:\\rec.txt"));
  EXPECT_FALSE(sim_->SimFiles().ReadWholeFile("C:\\rec.txt").has_value());
}

TEST_F(KCollectionTest, HeaderRecordsAreStoredByReference) {
  headerdatas rec;
  rec.ShowHeaderItem = header_FileSize;
  rec.HeaderText = "Size";
  k_.Add(MakeHeaderRecord(rec), Variant("4"));
  HeaderRecord* stored = HeaderRecordOf(k_.Item(Variant("4")));
  ASSERT_NE(stored, nullptr);
  stored->data.HeaderWidth = 900;
  EXPECT_EQ(HeaderRecordOf(k_.Item(Variant(0)))->data.HeaderWidth, 900);
  EXPECT_EQ(HeaderRecordOf(Variant("text")), nullptr);
  k_.Colnewb()->Replace(1, MakeHeaderRecord(headerdatas{}));
  EXPECT_EQ(HeaderRecordOf(k_.Item(Variant(0)))->data.HeaderWidth, 0);
}

TEST_F(KCollectionTest, ColumnRecordTableHoldsTwentyCopies) {
  headerdatas rec;
  rec.ShowHeaderItem = header_UserdataB;
  rec.AdvInfo.xname = "userd2";
  kCollection::Internal::SetColumnRecord(k_, 20, rec);
  rec.AdvInfo.xname = "changed";
  EXPECT_EQ(kCollection::Internal::ColumnRecord(k_, 20).AdvInfo.xname, "userd2");
  EXPECT_EQ(kCollection::Internal::ColumnRecord(k_, 1), headerdatas{});
  for (int32_t bad : {0, 21, -1}) {
    EXPECT_THROW(kCollection::Internal::ColumnRecord(k_, bad), VbError) << bad;
    EXPECT_THROW(kCollection::Internal::SetColumnRecord(k_, bad, rec), VbError) << bad;
  }
}

// Real files: the same round trip through the Linux file system.
TEST(KCollectionLinuxTest, RoundTripThroughARealTemporaryFolder) {
  auto real = std::make_shared<LinuxPlatform>();
  char tmpl[] = "/tmp/nxfv_kcoll_XXXXXX";
  ASSERT_NE(mkdtemp(tmpl), nullptr);
  const std::string dir = tmpl;
  const std::string file = dir + "/values.txt";
  kCollection k(real);
  for (const char* v : {"one", kSkipMarker, "zwei \xC3\xBC", ""}) k.Add(Variant(v));
  const bool written = k.WriteToFile(file);
  if (!written && !std::filesystem::exists(file)) {
    std::filesystem::remove_all(dir);
    GTEST_SKIP() << "the Linux platform cannot write files yet";
  }
  ASSERT_TRUE(written);
  kCollection back(real);
  ASSERT_TRUE(back.ReadFromFile(file));
  ASSERT_EQ(back.Count(), 3);
  EXPECT_EQ(back.Item(Variant(1)), Variant("zwei \xC3\xBC"));
  EXPECT_EQ(back.Item(Variant(2)), Variant(""));
  EXPECT_FALSE(back.ReadFromFile(dir + "/missing.txt"));
  EXPECT_EQ(back.Count(), 0);
  std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace nxfv
