#include "nxfv/columns/sort_keys.h"

#include <gtest/gtest.h>

#include "nxfv/platform/list_view.h"

namespace nxfv {
namespace {

TEST(SortKeyBodiesTest, DatesBecomeLettersOfElevenDigits) {
  struct Case {
    std::optional<int64_t> seconds;
    bool descending;
    const char* body;
  } cases[] = {
      {0, false, "AAAAAAAAAAA"},
      {1234567890, false, "ABCDEFGHIJA"},
      {1234567890, true, "JIHGFEDCBAJ"},
      {-5, false, "AAAAAAAAA-F"},  // a date before 1980 keeps its sign character
      {std::nullopt, false, ""},   // not a date: the part is left out
  };
  for (const auto& c : cases) EXPECT_EQ(DateSortBody(c.seconds, c.descending), c.body) << c.body;
}

TEST(SortKeyBodiesTest, SizesSortNumericallyWithUnitLetter) {
  struct Case {
    const char* text;
    bool descending;
    const char* body;
  } cases[] = {
      {"1 KB", false, "BAAAAAAAAAAAAAAB"},
      {"999 KB", false, "BAAAAAAAAAAAAJJJ"},
      {"1,000 KB", false, "BAAAAAAAAAAABAAA"},
      {"1.000 KB", false, "BAAAAAAAAAAABAAA"},
      {"1,234,567 KB", false, "BAAAAAAAABCDEFGH"},
      {"12", false, "AAAAAAAAAAAAAABC"},  // archive sizes carry no unit
      {"12", true, "DJJJJJJJJJJJJJIH"},
      {"1 KB", true, "CJJJJJJJJJJJJJJI"},
      {"", false, "AAAAAAAAAAAAAAAA"},
  };
  for (const auto& c : cases) EXPECT_EQ(SizeSortBody(c.text, c.descending, ","), c.body) << c.text;
  EXPECT_LT(SizeSortBody("999 KB", false, "."), SizeSortBody("1.000 KB", false, "."));
  EXPECT_GT(SizeSortBody("999 KB", true, "."), SizeSortBody("1.000 KB", true, "."));
}

TEST(SortKeyBodiesTest, TextIsPaddedOrCutAndMirroredWhenDescending) {
  EXPECT_EQ(TextSortBody("AB1", false, 5), "AB1AA");
  EXPECT_EQ(TextSortBody("AZ09-", true, 5), "ZA90-");
  EXPECT_EQ(TextSortBody("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123", false, 26), "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  EXPECT_EQ(TextSortBody("\xC3\x84X", false, 3), "\xC3\x84XA");  // counts characters, not bytes
}

class RowKeyTest : public ::testing::Test {
 protected:
  std::string Key(const char* text, const char* type, std::vector<SortColumn> cols) {
    ListView lv;
    ListRow& r = lv.AddRow("", text);
    r.SetSubItem(3, type);
    r.SetSubItem(1, "txt");
    return BuildRowSortKey(r, type, cols, ctx);
  }
  SortKeyContext ctx;
};

TEST_F(RowKeyTest, GroupingPrefixByTypeAndDirection) {
  const std::vector<SortColumn> asc{{"nam", 0, false}}, desc{{"nam", 0, true}};
  EXPECT_EQ(Key("a", "Text", asc).substr(0, 2), " A");
  EXPECT_EQ(Key("a", "Text", desc).substr(0, 1), "Z");
  EXPECT_EQ(Key("a", "Folder", asc).substr(0, 1), "A");
  EXPECT_EQ(Key("a", "Ordner", desc).substr(0, 2), " Z");
  EXPECT_EQ(Key("..", "", asc).substr(0, 2), "  ");
  EXPECT_EQ(Key("..", "Folder", desc).substr(0, 2), "  ");  // the go-up row: first in both directions
}

TEST_F(RowKeyTest, SeveralColumnsConcatenateInPriorityOrder) {
  const std::string k = Key("b", "Text", {{"ext", 1, false}, {"nam", 0, false}});
  EXPECT_EQ(k, " TXTAA BAAAAAAAAAAAAAAAAAAAAAAAAA");
  // A sort column with no sub-item contributes only its prefix and padding.
  EXPECT_EQ(Key("b", "Text", {{"dos", -1, false}}), " " + std::string(26, 'A'));
}

TEST_F(RowKeyTest, AnUndatedDateColumnAddsNeitherPrefixNorBody) {
  ctx.dateSeconds = [](std::string_view) { return std::nullopt; };
  const std::string name = Key("..", "", {{"nam", 0, false}});
  EXPECT_EQ(Key("..", "", {{"mod", 5, false}, {"nam", 0, false}}), name);  // two blanks, not four
  EXPECT_EQ(Key("b", "Text", {{"mod", 5, true}, {"nam", 0, false}}), " B" + std::string(25, 'A'));
}

}  // namespace
}  // namespace nxfv
