#include "platform/list_view.h"

#include <gtest/gtest.h>

#include "platform/error_state.h"

namespace nxfv {
namespace {

int ErrorOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const VbError& e) {
    return e.number();
  }
  return 0;
}

TEST(ListViewTest, RowKeyRules) {
  ListView lv;
  lv.AddRow("a.txt", "a.txt");
  struct Case { const char* key; int error; } cases[] = {{"a.txt", 35602}, {"2024", 35603}, {" 7 ", 35603}, {"##$$2024", 0}, {"", 0}, {"", 0}};
  for (const auto& c : cases)
    EXPECT_EQ(ErrorOf([&] { lv.AddRow(c.key, "x"); }), c.error) << "'" << c.key << "'";
  EXPECT_EQ(lv.RowCount(), 4u);  // two unkeyed rows are fine
  EXPECT_EQ(lv.FindRow("##$$2024")->Index(), 1u);
}

TEST(ListViewTest, ColumnKeysAndSubItems) {
  ListView lv;
  EXPECT_EQ(lv.AddColumn("nam", "Name", 1800), 0);
  EXPECT_EQ(lv.AddColumn("ext", "Ext", 500), 1);
  EXPECT_EQ(lv.ColumnIndex("ext"), 1);
  EXPECT_EQ(ErrorOf([&] { lv.ColumnIndex("zzz"); }), 35601);
  EXPECT_EQ(ErrorOf([&] { lv.AddColumn("ext", "again", 1); }), 35602);
  EXPECT_EQ(ErrorOf([&] { lv.AddColumn("", "empty", 1); }), 35603);

  ListRow& r = lv.AddRow("k", "t");
  r.SetSubItem(20, "sortkey");
  r.SetSubItem(2, "12 KB");
  r.SetSubItem(1, "txt");
  r.SetSubItem(2, "");  // replaced by an empty text, still present
  r.SetSubItem(20, "a longer sort key");  // the last text replaced in place
  EXPECT_EQ(r.SubItem(1), "txt");
  EXPECT_EQ(r.SubItem(2), "");
  EXPECT_EQ(r.SubItem(20), "a longer sort key");
  EXPECT_TRUE(r.HasSubItem(2));
  EXPECT_FALSE(r.HasSubItem(3));
  EXPECT_EQ(ErrorOf([&] { r.SetSubItem(0, "x"); }), 5);
}

TEST(ListViewTest, SortIsStableOrdinalAndRemovalKeepsOrder) {
  ListView lv;
  const char* rows[][2] = {{"a", "b"}, {"b", "a"}, {"c", "B"}, {"d", "a"}, {"e", "\xc3\xa4"}};
  for (auto& r : rows) lv.AddRow(r[0], r[0]).SetSubItem(1, r[1]);
  lv.Sort(1);
  std::string order;
  for (size_t i = 0; i < lv.RowCount(); ++i) order += lv.Row(i).Key();
  EXPECT_EQ(order, "cbdae");  // "B" < "a" < "b" < "ä" byte-wise; b before d (stable)
  EXPECT_EQ(lv.RemoveRowsIf([](const ListRow& r) { return r.Key() == "b" || r.Key() == "a"; }), 2u);
  order.clear();
  for (size_t i = 0; i < lv.RowCount(); ++i) order += std::string(lv.Row(i).Key()) + std::to_string(lv.Row(i).Index());
  EXPECT_EQ(order, "c0d1e2");
  EXPECT_EQ(lv.FindRow("a"), nullptr);
  EXPECT_TRUE(lv.RemoveRowByKey("d"));
  EXPECT_EQ(lv.FindRow("e")->Index(), 1u);
}

TEST(ListViewTest, KeysStayFoundAfterSortsAndRemovals) {
  ListView lv;
  for (int i = 0; i < 300; ++i) lv.AddRow("k" + std::to_string(i), "t").SetSubItem(1, std::to_string(1000 - i));
  lv.Sort(1);
  EXPECT_EQ(lv.FindRow("k0")->Index(), 0u);  // "1000" sorts before "701" as text
  EXPECT_EQ(lv.FindRow("k299")->Index(), 1u);
  EXPECT_THROW(lv.AddRow("k5", "dup"), VbError);  // the index, rebuilt after the sort, still knows k5
  lv.RemoveRowsIf([](const ListRow& r) { return r.Key().size() == 2; });  // k0..k9
  EXPECT_EQ(lv.FindRow("k3"), nullptr);
  EXPECT_EQ(lv.FindRow("k10")->Key(), "k10");
  lv.AddRow("k3", "again");
  EXPECT_EQ(lv.FindRow("k3")->Index(), lv.RowCount() - 1);
}

}  // namespace
}  // namespace nxfv
