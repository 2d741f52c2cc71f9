#include "nxfv/platform/list_view.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "nxfv/platform/error_state.h"

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
  lv.AddColumn("nam", "Name", 1800);
  lv.AddColumn("ext", "Ext", 500);
  EXPECT_EQ(lv.ColumnIndex("ext"), 1);
  EXPECT_EQ(ErrorOf([&] { lv.ColumnIndex("zzz"); }), 35601);
  EXPECT_EQ(ErrorOf([&] { lv.AddColumn("ext", "again", 1); }), 35602);
  EXPECT_EQ(ErrorOf([&] { lv.AddColumn("", "empty", 1); }), 35603);

  ListRow& r = lv.AddRow("k", "t");
  r.SetSubItem(20, "sortkey");
  r.SetSubItem(2, "12 KB");
  r.SetSubItem(2, "");  // replaced by an empty text, still present
  r.SetSubItem(20, "a longer sort key");  // the last text replaced in place
  EXPECT_EQ(r.SubItem(2), "");
  EXPECT_EQ(r.SubItem(20), "a longer sort key");
  EXPECT_TRUE(r.HasSubItem(2));
  EXPECT_FALSE(r.HasSubItem(3));
  EXPECT_EQ(ErrorOf([&] { r.SetSubItem(0, "x"); }), 5);

  // Texts of 255 bytes and more and columns past 254 are stored in the long
  // form; the texts around them stay intact.
  const std::string longText(300, 'x'), edgeText(255, 'y');
  r.SetSubItem(255, longText);
  r.SetSubItem(254, edgeText);
  r.SetSubItem(3, "c");
  EXPECT_EQ(r.SubItem(255), longText);
  EXPECT_EQ(r.SubItem(254), edgeText);
  EXPECT_EQ(r.SubItem(20), "a longer sort key");
  EXPECT_EQ(r.SubItem(3), "c");
  EXPECT_FALSE(r.HasSubItem(256));
  std::vector<std::string_view> all;
  r.SubItemsInto(all, 2);
  ASSERT_EQ(all.size(), 256u);
  EXPECT_EQ(all[255], longText);
  EXPECT_EQ(all[2], "");
}

TEST(ListViewTest, SortIsStableOrdinalAndKeysStayFoundAfterSortsAndRemovals) {
  ListView lv;
  const char* rows[][2] = {{"a", "b"}, {"b", "a"}, {"c", "B"}, {"d", "a"}, {"e", "\xc3\xa4"}};
  for (auto& r : rows) lv.AddRow(r[0], r[0]).SetSubItem(1, r[1]);
  auto order = [&] {
    std::string out;
    for (size_t i = 0; i < lv.RowCount(); ++i) out += std::string(lv.Row(i).Key()) + std::to_string(lv.Row(i).Index());
    return out;
  };
  lv.Sort(1);
  EXPECT_EQ(order(), "c0b1d2a3e4");  // "B" < "a" < "b" < "ä" byte-wise; b before d (stable)
  EXPECT_EQ(lv.RemoveRowsIf([](const ListRow& r) { return r.Key() == "b" || r.Key() == "a"; }), 2u);
  EXPECT_EQ(order(), "c0d1e2");

  lv.ClearRows();
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

// Writes every notification into a shared log as one short word, and runs
// an optional hook after each (to act from inside a notification).
class Recorder : public ListViewObserver {
 public:
  explicit Recorder(std::vector<std::string>& log, std::string name = "") : log_(log), name_(std::move(name)) {}
  std::function<void()> hook;

  void OnReset() override { Log("reset"); }
  void OnRowsInserted(size_t first, size_t count) override { Log("ins" + Range(first, count)); }
  void OnRowsRemoved(size_t first, size_t count) override { Log("del" + Range(first, count)); }
  void OnRowChanged(size_t row, int32_t column) override {
    Log("row" + std::to_string(row) + "." + std::to_string(column));
  }
  void OnRowImageChanged(size_t row) override { Log("img" + std::to_string(row)); }
  void OnRowStateChanged(size_t row) override { Log("state" + std::to_string(row)); }
  void OnSelectionChanged(size_t row) override { Log("sel" + std::to_string(row)); }
  void OnCheckChanged(size_t row) override { Log("chk" + std::to_string(row)); }
  void OnColumnsChanged() override { Log("cols"); }
  void OnSortChanged() override { Log("sort"); }
  void OnAppearanceChanged() override { Log("look"); }
  void OnLabelEditRequested(size_t row) override { Log("edit" + std::to_string(row)); }

 private:
  static std::string Range(size_t first, size_t count) { return std::to_string(first) + "+" + std::to_string(count); }
  void Log(const std::string& what) {
    log_.push_back(name_ + what);
    if (hook) hook();
  }
  std::vector<std::string>& log_;
  std::string name_;
};

std::string Joined(const std::vector<std::string>& log) {
  std::string out;
  for (const auto& s : log) out += (out.empty() ? "" : ",") + s;
  return out;
}

// Columns nam, ext; rows a..e with texts A..E and sub-item 1 "z".."v".
void FillFive(ListView& lv) {
  lv.AddColumn("nam", "Name", 100);
  lv.AddColumn("ext", "Ext", 50);
  for (char i = 0; i < 5; ++i)
    lv.AddRow(std::string(1, 'a' + i), std::string(1, 'A' + i)).SetSubItem(1, std::string(1, 'z' - i));
}

TEST(ListViewObserverTest, EachMutationNotifiesOnlyWhenSomethingChanged) {
  struct Case {
    const char* name;
    std::function<void(ListView&)> change;
    const char* expected;
  } cases[] = {
      {"add row", [](ListView& lv) { lv.AddRow("f", "F"); }, "ins5+1"},
      {"text", [](ListView& lv) { lv.Row(1).SetText("b2"); }, "row1.0"},
      {"text back to the key", [](ListView& lv) { lv.Row(1).SetText("b"); }, "row1.0"},
      {"sub-item", [](ListView& lv) { lv.Row(1).SetSubItem(3, "x"); }, "row1.3"},
      {"image", [](ListView& lv) { lv.Row(2).SetImage(7); }, "img2"},
      {"tag", [](ListView& lv) { lv.Row(2).SetTag(9); }, "state2"},
      {"selected", [](ListView& lv) { lv.Row(3).SetSelected(true); }, "sel3"},
      {"checked", [](ListView& lv) { lv.Row(3).SetChecked(true); }, "chk3"},
      {"remove row", [](ListView& lv) { lv.RemoveRow(0); }, "del0+1"},
      {"remove by key", [](ListView& lv) { lv.RemoveRowByKey("d"); }, "del3+1"},
      {"remove runs, last first",
       [](ListView& lv) { lv.RemoveRowsIf([](const ListRow& r) { return r.Key() != "c" && r.Key() != "e"; }); },
       "del3+1,del0+2"},
      {"clear rows", [](ListView& lv) { lv.ClearRows(); }, "del0+5"},
      {"sort", [](ListView& lv) { lv.Sort(1); }, "sort"},
      {"add column", [](ListView& lv) { lv.AddColumn("siz", "Size", 10); }, "cols"},
      {"clear columns", [](ListView& lv) { lv.ClearColumns(); }, "cols"},
      {"caption", [](ListView& lv) { lv.SetColumnCaption(1, "Type"); }, "cols"},
      {"width", [](ListView& lv) { lv.SetColumnWidth(1, 0); }, "cols"},
      {"order", [](ListView& lv) { lv.SetColumnOrder(1, 0); }, "cols"},
      {"sort indicator", [](ListView& lv) { lv.SetColumnSortIndicator(1, 2, 1); }, "sort"},
      // The same values again: nothing changed, nothing told.
      {"same text", [](ListView& lv) { lv.Row(0).SetText("A"); }, ""},
      {"same sub-item", [](ListView& lv) { lv.Row(0).SetSubItem(1, "z"); }, ""},
      {"unset sub-item to empty", [](ListView& lv) { lv.Row(0).SetSubItem(4, ""); }, ""},
      {"same row state",
       [](ListView& lv) {
         ListRow& r = lv.Row(0);
         r.SetImage(0);
         r.SetTag(0);
         r.SetSelected(false);
         r.SetChecked(false);
       },
       ""},
      {"same column state",
       [](ListView& lv) {
         lv.SetColumnCaption(0, "Name");
         lv.SetColumnWidth(0, 100);
         lv.SetColumnOrder(0, 0);
         lv.SetColumnSortIndicator(0, 0, 0);
       },
       ""},
      {"nothing removed",
       [](ListView& lv) {
         lv.RemoveRow(5);
         lv.RemoveRowByKey("zz");
         lv.RemoveRowsIf([](const ListRow&) { return false; });
       },
       ""},
  };
  for (const Case& c : cases) {
    ListView lv;
    FillFive(lv);
    std::vector<std::string> log;
    Recorder recorder(log);
    lv.AddObserver(&recorder);
    c.change(lv);
    EXPECT_EQ(Joined(log), c.expected) << c.name;
  }
}

TEST(ListViewObserverTest, BatchesNestAndEndInOneReset) {
  ListView lv;
  std::vector<std::string> log;
  Recorder recorder(log);
  lv.AddObserver(&recorder);
  {
    ListView::Batch outer(lv);
    FillFive(lv);
    {
      ListView::Batch inner(lv);
      lv.Row(0).SetSelected(true);
    }
    EXPECT_EQ(Joined(log), "");  // the inner batch closing tells nothing
    lv.Sort(1);
  }
  EXPECT_EQ(Joined(log), "reset");
  log.clear();
  {
    ListView::Batch unchanged(lv);
    lv.FindRow("a")->SetSelected(true);
  }
  lv.EndBatch();  // unmatched: ignored
  lv.FindRow("a")->SetSelected(false);
  EXPECT_EQ(Joined(log), "sel4");  // sorted by sub-item 1, z last
}

TEST(ListViewObserverTest, ObserversInOrderMayLeaveOrJoinOrThrowMidNotification) {
  ListView lv;
  FillFive(lv);
  std::vector<std::string> log;
  Recorder first(log, "1:"), leaver(log, "2:"), joiner(log, "3:"), last(log, "4:");
  leaver.hook = [&] {
    lv.RemoveObserver(&leaver);
    lv.RemoveObserver(&last);  // not yet told: hears nothing of this one either
    lv.AddObserver(&joiner);   // hears from the next notification on
  };
  first.hook = [] { throw std::runtime_error("observer fault"); };
  lv.AddObserver(&first);
  lv.AddObserver(&first);  // already there: still told once
  lv.AddObserver(&leaver);
  lv.AddObserver(&last);
  EXPECT_NO_THROW(lv.Row(2).SetChecked(true));
  EXPECT_EQ(Joined(log), "1:chk2,2:chk2");
  EXPECT_TRUE(lv.Row(2).Checked());
  log.clear();
  // An observer that changes the model hears of it, nested, in order.
  bool once = true;
  joiner.hook = [&] {
    if (std::exchange(once, false)) lv.Row(0).SetTag(1);
  };
  EXPECT_NO_THROW({ ListView::Batch b(lv); lv.Row(1).SetImage(3); });
  EXPECT_EQ(Joined(log), "1:reset,3:reset,1:state0,3:state0");
}

TEST(ListViewLookTest, LookCheckBoxesRowKeysAndLabelEdits) {
  ListView lv;
  lv.AddRow("a", "A");
  lv.AddRow("b", "b");
  std::vector<std::string> log;
  Recorder rec(log);
  lv.AddObserver(&rec);
  ListViewLook look = lv.Look();
  lv.SetLook(look);  // no change, no notice
  EXPECT_EQ(Joined(log), "");
  look.checkBoxes = true;
  lv.SetLook(look);
  EXPECT_EQ(lv.Row(0).StateImage(), 1);
  EXPECT_EQ(lv.AddRow("c", "C").StateImage(), 1);
  EXPECT_EQ(ErrorOf([&] { lv.Row(0).SetStateImage(16); }), 5);
  // A key change keeps the text; taken and numeric keys are refused untouched.
  log.clear();
  lv.SetRowKey(1, "x");
  EXPECT_EQ(lv.Row(1).Text(), "b");
  EXPECT_EQ(lv.FindRow("x"), &lv.Row(1));
  EXPECT_EQ(lv.FindRow("b"), nullptr);
  EXPECT_EQ(ErrorOf([&] { lv.SetRowKey(1, "a"); }), 35602);
  EXPECT_EQ(ErrorOf([&] { lv.SetRowKey(1, "12"); }), 35603);
  EXPECT_EQ(ErrorOf([&] { lv.SetRowKey(9, "q"); }), 9);
  EXPECT_EQ(lv.Row(1).Key(), "x");
  lv.RequestLabelEdit(2);
  lv.RequestLabelEdit(7);  // past the end: nothing
  EXPECT_EQ(lv.LabelEditRow(), 2);
  EXPECT_EQ(Joined(log), "row1.0,edit2");
}

TEST(ListViewSortTest, AppendedRowsMergeExactlyAsAFullSortPlacesThem) {
  // Texts with ties, prefixes and bytes above 0x7F; the keys record the order.
  const std::vector<std::string> kept{"b", "a", "b", "ab", "\xC3\xA9", "", "a"};
  const std::vector<std::string> added{"a", "b", "aa", "", "\xC3\xA9", "c"};
  auto add = [](ListView& lv, const std::vector<std::string>& texts) {
    for (const std::string& t : texts) lv.AddRow("k" + std::to_string(lv.RowCount()), "").SetSubItem(1, t);
  };
  auto keys = [](const ListView& lv) {
    std::string out;
    for (size_t i = 0; i < lv.RowCount(); ++i) out += std::string(lv.Row(i).Key()) + " ";
    return out;
  };
  ListView merged, reference;
  merged.AddColumn("c1", "c1", 0);
  reference.AddColumn("c1", "c1", 0);
  add(merged, kept);
  merged.Sort(1);
  add(merged, added);
  merged.SortAppended(1, kept.size());
  add(reference, kept);
  add(reference, added);
  reference.Sort(1);
  EXPECT_EQ(keys(merged), keys(reference));
  EXPECT_EQ(merged.FindRow("k8")->Index(), reference.FindRow("k8")->Index());  // positions renumbered
}

}  // namespace
}  // namespace nxfv
