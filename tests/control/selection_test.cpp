#include "archive/archive_writer.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

using testing_archive::BuildZip;
using testing_archive::ZipEntry;

class SelectionTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    for (const char* name : {"a.txt", "b.txt", "c.txt"}) files().AddFile(std::string("C:\\d\\") + name, 10);
    viewer->setCurrentfolder("C:\\d");  // rows: .., a.txt, b.txt, c.txt
  }
  ListRow& Row(const std::string& key) { return *viewer->ListView1().FindRow(key); }
  static std::string Name(const FileViewer::ItemRef& item) { return item ? std::string(item->FileName()) : "<null>"; }
  std::vector<std::string> WalkSelected() {
    std::vector<std::string> out;
    for (auto item = viewer->FirstSelectedItem(); item; item = viewer->NextSelectedItem()) out.push_back(Name(item));
    return out;
  }
  std::vector<std::string> WalkChecked() {
    std::vector<std::string> out;
    for (auto item = viewer->FirstCheckedItem(); item; item = viewer->NextCheckedItem()) out.push_back(Name(item));
    return out;
  }
};

TEST_F(SelectionTest, WalksSkipTheGoUpRowAndSynchroniseTheItems) {
  ASSERT_EQ(Texts(), (std::vector<std::string>{"..", "a.txt", "b.txt", "c.txt"}));
  viewer->ListView1().Row(0).SetSelected(false);  // the listing selected the first row
  for (const char* key : {"sysgoup", "a.txt", "c.txt"}) Row(key).SetSelected(true);
  Row("b.txt").SetChecked(true);
  Row("sysgoup").SetChecked(true);
  EXPECT_EQ(viewer->SelectedCount(), 3);
  EXPECT_EQ(viewer->CheckedCount(), 2);
  EXPECT_EQ(WalkSelected(), (std::vector<std::string>{"a.txt", "c.txt"}));
  EXPECT_EQ(WalkChecked(), (std::vector<std::string>{"b.txt"}));
  auto items = viewer->Items();
  EXPECT_TRUE(items->Item(Variant("a.txt"))->Selected());
  EXPECT_FALSE(items->Item(Variant("b.txt"))->Selected());
  EXPECT_TRUE(items->Item(Variant("b.txt"))->Checked());
  EXPECT_FALSE(items->Item(Variant("sysgoup"))->Selected());  // never synchronised
}

TEST_F(SelectionTest, QuirksOfTheCursorsAndTheGoUpRow) {
  ListView& lv = viewer->ListView1();
  for (size_t i = 0; i < lv.RowCount(); ++i) lv.Row(i).SetSelected(i == 0);
  // Only the go-up row selected: the list view counts it, no item comes back.
  EXPECT_EQ(viewer->SelectedCount(), 1);
  EXPECT_EQ(viewer->FirstSelectedItem(), nullptr);
  // A new control's cursor is at row 0: Next never returns row 0 itself.
  auto fresh = FileViewer::Create(platform);
  fresh->setShowGOUPFolder(false);
  fresh->setCurrentfolder("C:\\d");
  fresh->ListView1().Row(0).SetSelected(true);
  fresh->ListView1().Row(2).SetSelected(true);
  EXPECT_EQ(Name(fresh->NextSelectedItem()), "c.txt");
  EXPECT_EQ(Name(fresh->FirstSelectedItem()), "a.txt");
}

TEST_F(SelectionTest, RowsWithoutStateImageAreNotCounted) {
  EXPECT_EQ(Row("a.txt").StateImage(), 0);
  viewer->setShowCheckBoxes(true);
  EXPECT_EQ(Row("a.txt").StateImage(), 1);
  Row("a.txt").SetStateImage(3);  // some other state image: not the checked one
  Row("b.txt").SetChecked(true);
  EXPECT_EQ(viewer->CheckedCount(), 1);
  viewer->CheckAll();
  EXPECT_EQ(viewer->CheckedCount(), 4);
  viewer->FirstCheckedItem();
  viewer->UnCheckAll();
  EXPECT_EQ(viewer->CheckedCount(), 0);
  EXPECT_EQ(Row("c.txt").StateImage(), 1);
  for (const auto& item : *viewer->Items()) EXPECT_FALSE(item->Checked()) << item->Key();
}

TEST_F(SelectionTest, SelectAllAndUnSelectAll) {
  viewer->SelectAll();
  EXPECT_EQ(viewer->SelectedCount(), 4);
  EXPECT_EQ(WalkSelected().size(), 3u);
  viewer->UnSelectAll();
  EXPECT_EQ(viewer->SelectedCount(), 0);
  // The items read False at once, before any synchronisation.
  for (const auto& item : *viewer->Items()) EXPECT_FALSE(item->Selected()) << item->Key();
  viewer->setAllowMultipleSelection(false);
  viewer->SelectAll();
  EXPECT_EQ(viewer->SelectedCount(), 0);
}

TEST_F(SelectionTest, ListItemAndGetItemFromName) {
  Row("b.txt").SetSelected(true);
  Row("b.txt").SetChecked(true);
  auto b = viewer->ListItem(2);
  ASSERT_TRUE(b);
  EXPECT_TRUE(b->Selected());
  EXPECT_TRUE(b->Checked());
  EXPECT_EQ(viewer->ListItem(0), nullptr);  // the go-up row
  EXPECT_EQ(viewer->ListItem(4), nullptr);  // past the end
  EXPECT_EQ(Name(viewer->GetItemFromName("c.txt")), "c.txt");
  EXPECT_EQ(viewer->GetItemFromName("C.TXT"), nullptr);
}

TEST_F(SelectionTest, ArchiveEntriesInSubFoldersFindTheirRow) {
  files().AddFileWithContent("C:\\d\\t.zip", BuildZip({ZipEntry("a.dat"), ZipEntry("sub/b.dat")}));
  viewer->setCurrentfolder("C:\\d\\t.zip");
  ASSERT_TRUE(viewer->ListView1().FindRow("sub/b.dat"));
  auto b = viewer->GetItemFromName("b.dat");
  ASSERT_TRUE(b);
  EXPECT_EQ(b->Key(), "b.dat");
  b->setSelected(true);
  b->setChecked(true);
  EXPECT_TRUE(Row("sub/b.dat").Selected());
  EXPECT_TRUE(Row("sub/b.dat").Checked());
  EXPECT_EQ(WalkChecked(), (std::vector<std::string>{"b.dat"}));
}

class RenameListener : public RecordingListener {
 public:
  std::string answer;  // "" leaves the proposed name
  bool cancel = false;
  void OnItemRename(ItemRef& item, std::string& newname, bool& Cancel) override {
    log.push_back("OnItemRename " + std::string(item->FileName()) + " -> " + newname);
    if (!answer.empty()) newname = answer;
    Cancel = cancel;
  }
};

TEST_F(SelectionTest, LabelEditRenamesOnlyWhenTheHostAgrees) {
  RenameListener host;
  viewer->SetEventListener(&host);
  ListView& lv = viewer->ListView1();
  lv.Row(0).SetSelected(false);
  Row("b.txt").SetSelected(true);
  Row("c.txt").SetSelected(true);
  viewer->StartLabelEdit();
  EXPECT_EQ(lv.LabelEditRow(), 2);
  EXPECT_EQ(viewer->SelectedCount(), 0);
  EXPECT_TRUE(viewer->Items()->Item(Variant("b.txt"))->Selected());

  host.cancel = true;
  EXPECT_FALSE(viewer->EndLabelEdit(2, "x.doc"));
  EXPECT_EQ(Keys(), (std::vector<std::string>{"sysgoup", "a.txt", "b.txt", "c.txt"}));
  EXPECT_EQ(lv.LabelEditRow(), -1);

  host.cancel = false;
  EXPECT_FALSE(viewer->EndLabelEdit(2, "c.txt"));  // taken: refused with a report
  EXPECT_EQ(platform->SimBoxes().Shown().back().title, ".EndLabelEdit");
  EXPECT_TRUE(viewer->Items()->Item(Variant("b.txt")));

  EXPECT_TRUE(viewer->EndLabelEdit(2, "x.doc"));
  EXPECT_EQ(host.log.back(), "OnItemRename b.txt -> x.doc");
  auto x = viewer->Items()->Item(Variant("x.doc"));
  ASSERT_TRUE(x);
  EXPECT_EQ(x->Key(), "x.doc");
  EXPECT_EQ(x->Extension(), "doc");
  EXPECT_EQ(lv.Row(2).Key(), "x.doc");
  EXPECT_EQ(lv.Row(2).Text(), "x.doc");
  EXPECT_EQ(viewer->Items()->Item(Variant("b.txt")), nullptr);

  // IcRename without a name asks the host; a digit-only name gets the mark.
  host.answer = "2024";
  EXPECT_TRUE(x->ExecuteShellCommand(ItemFileCommands::IcRename));
  EXPECT_EQ(lv.Row(2).Key(), "##$$2024");
  Variant given("y.txt");
  EXPECT_TRUE(x->ExecuteShellCommand(ItemFileCommands::IcRename, given));
  EXPECT_EQ(x->FileName(), "y.txt");

  viewer->setAllowitemRenaming(false);
  lv.Row(1).SetSelected(true);
  viewer->StartLabelEdit();
  EXPECT_EQ(lv.LabelEditRow(), -1);
}

}  // namespace
}  // namespace nxfv::testing
