#include "nxfv/platform/error_state.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

class ListingTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    files().AddFile("C:\\d\\a.txt", 10);
    files().AddFile("C:\\d\\.profile", 10);
    files().AddFile("C:\\d\\x.dll", 10);
    files().AddFile("C:\\d\\Y.SYS", 10);
    files().AddFile("C:\\d\\sys.bin", 10, kAttrSystem);
    files().AddFile("C:\\d\\hid.txt", 10, kAttrHidden);
    files().AddFile("C:\\d\\b.doc", 10);
    files().AddFolder("C:\\d\\sysdir", kAttrDirectory | kAttrSystem);
    files().AddFolder("C:\\d\\hiddir", kAttrDirectory | kAttrHidden);
    files().AddFolder("C:\\d\\.git");
  }
  std::vector<std::string> Listed() {
    viewer->setCurrentfolder("C:\\d");
    auto keys = Keys();
    std::sort(keys.begin(), keys.end());
    return keys;
  }
};

TEST_F(ListingTest, FiltersApplyInTheirOrder) {
  struct Case { const char* name; std::function<void(FileViewer&)> set; std::vector<std::string> keys; } cases[] = {
      {"all", [](FileViewer&) {},
       {"a.txt", "b.doc", "hid.txt", "hiddir", "sys.bin", "sysdir", "sysgoup", "x.dll", "Y.SYS"}},
      {"no system", [](FileViewer& v) { v.setShowSysItems(false); },
       {"a.txt", "b.doc", "hid.txt", "hiddir", "sysdir", "sysgoup"}},
      {"no hidden", [](FileViewer& v) { v.setShowHiddenItems(false); },
       {"a.txt", "b.doc", "sys.bin", "sysdir", "sysgoup", "x.dll", "Y.SYS"}},
      {"no files", [](FileViewer& v) { v.setShowFiles(false); }, {"hiddir", "sysdir", "sysgoup"}},
      {"no folders, no go-up", [](FileViewer& v) { v.setShowFolders(false); v.setShowGOUPFolder(false); },
       {"a.txt", "b.doc", "hid.txt", "sys.bin", "x.dll", "Y.SYS"}},
      {"pattern", [](FileViewer& v) { v.setFilePattern("*.txt;*.doc"); },
       {"a.txt", "b.doc", "hid.txt", "hiddir", "sysdir", "sysgoup"}},
  };
  for (const auto& c : cases) {
    SetUp();
    c.set(*viewer);
    auto expected = c.keys;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(Listed(), expected) << c.name;
  }
}

TEST_F(ListingTest, ShowLetsWaitForRefreshButPatternReloadsAtOnce) {
  viewer->setCurrentfolder("C:\\d");
  const size_t before = viewer->ListView1().RowCount();
  viewer->setShowFiles(false);
  EXPECT_EQ(viewer->ListView1().RowCount(), before);
  viewer->RefreshView(true);
  EXPECT_EQ(viewer->ListView1().RowCount(), 3u);
  listener.log.clear();
  viewer->setFilePattern(viewer->FilePattern());  // the same value still reloads
  EXPECT_EQ(listener.log.back().rfind("AfterNewView", 0), 0u);
}

TEST_F(ViewerTest, NumericNamesGetMarkedKeys) {
  for (const char* name : {"2024", "12a", "archive."}) files().AddFile(std::string("C:\\n\\") + name, 1);
  files().AddFolder("C:\\n\\2024x");
  files().AddFolder("C:\\n\\1,000");
  viewer->setCurrentfolder("C:\\n");
  auto keys = Keys();
  std::sort(keys.begin(), keys.end());
  EXPECT_EQ(keys, (std::vector<std::string>{"##$$2024", "12a", "2024x", "archive.", "sysgoup", "~1,000"}));
  auto item = viewer->Items()->Item(Variant("##$$2024"));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->FileName(), "2024");
  // A trailing dot: no extension, no type, and the empty-extension branch's icon 0.
  auto dotted = viewer->Items()->Item(Variant("archive."));
  EXPECT_EQ(dotted->Extension(), "");
  EXPECT_EQ(viewer->ListView1().FindRow("archive.")->Image(), 0);
}

TEST_F(ViewerTest, ItemFieldsAndColumnTexts) {
  FindData& f = files().AddFile("C:\\f\\Report.TXT", 1536, kAttrArchive | kAttrReadOnly);
  f.shortName = "REPORT~1.TXT";
  files().AddFile("C:\\f\\big.bin", 5ULL << 30);
  viewer->setViewOptions(0x1FFBFF);
  viewer->setCurrentfolder("C:\\f\\");  // one trailing separator is stripped
  EXPECT_EQ(viewer->Currentfolder(), "C:\\f");
  auto item = viewer->Items()->Item(Variant("Report.TXT"));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->FileTyp(), "Text Document");
  EXPECT_EQ(item->DosName().AsString(), "REPORT~1.TXT");
  // 2024-03-15 10:30 UTC is 12:30 local on the simulated platform (+2 h);
  // NTFS keeps access times.
  const std::vector<std::string> cells = {"2 KB", "r....a.........", "3/15/2024", "12:30:00 PM",
                                          "3/15/2024 12:30:00 PM", "3/15/2024 12:30:00 PM"};
  std::vector<std::string> got;
  for (const char* column : {"siz", "atr", "mod", "tim", "cre", "acc"}) got.push_back(Cell("Report.TXT", column));
  EXPECT_EQ(got, cells);
  EXPECT_DOUBLE_EQ(item->DateModified().AsDouble(), 45366);
  EXPECT_NEAR(item->TimeModified().AsDouble(), 12.5 / 24, 1e-9);
  // 5 GiB: the real size in the column, the largest Long in FileSize.
  EXPECT_EQ(viewer->Items()->Item(Variant("big.bin"))->FileSize(), 2147483647);
  EXPECT_EQ(Cell("big.bin", "siz"), "5,242,880 KB");
  EXPECT_EQ(Cell("big.bin", "dos"), "BIG.BIN");  // no short name: the name upper-cased
  EXPECT_EQ(Cell("big.bin", "typ"), "File");     // not in the registry: the generic text
  EXPECT_TRUE(platform->SimBoxes().Shown().empty());
}

TEST_F(ViewerTest, FatVolumesShowOnlyTheAccessDate) {
  platform->SimFiles().AddVolume("E:\\", "FAT32");
  files().AddFile("E:\\x.txt", 1);
  files().AddFile("F:\\y.txt", 1);  // no volume information: treated as FAT
  viewer->setViewOptions(31 | 128);
  for (const char* folder : {"E:\\", "F:\\"}) {
    viewer->setCurrentfolder(folder);
    const ListRow& row = viewer->ListView1().Row(viewer->ListView1().RowCount() - 1);
    EXPECT_EQ(row.SubItem(FileViewer::Internal::SubItemIndexOf(*viewer, "acc")), "3/15/2024") << folder;
  }
}

TEST_F(ViewerTest, TypeCacheAndPerFileIcons) {
  for (const char* name : {"a.TXT", "b.txt", "a.EXE", "b.exe"}) files().AddFile(std::string("C:\\i\\") + name, 1);
  viewer->setCurrentfolder("C:\\i");
  const ListView& lv = viewer->ListView1();
  EXPECT_EQ(lv.FindRow("a.TXT")->Image(), lv.FindRow("b.txt")->Image());
  EXPECT_NE(lv.FindRow("a.EXE")->Image(), lv.FindRow("b.exe")->Image());
  EXPECT_EQ(FileViewer::Internal::FileTypes(*viewer).Size(), 2u);  // "exe" and "txt"
  const int32_t queries = platform->SimTypes().Queries();
  viewer->RefreshView(true);
  EXPECT_EQ(platform->SimTypes().Queries(), queries);  // the registry is asked once per extension
}

TEST_F(ViewerTest, GoUpRowAndItsTopFolder) {
  files().AddFile("C:\\g\\a.txt", 1);
  viewer->setCurrentfolder("C:\\g");
  EXPECT_EQ(Texts().front(), "..");
  viewer->setGoUpTopFolder("C:\\g");
  viewer->RefreshView(true);
  EXPECT_EQ(viewer->ListView1().FindRow("sysgoup"), nullptr);
  viewer->setGoUpTopFolder("C:\\g\\");  // a plain text comparison: no match
  viewer->RefreshView(true);
  EXPECT_NE(viewer->ListView1().FindRow("sysgoup"), nullptr);
}

TEST_F(ViewerTest, EventsInOrderAndUserDataFromTheHost) {
  files().AddFile("C:\\e\\a.txt", 1);
  files().AddFolder("C:\\e\\sub");
  listener.onSetUserdata = [](FileViewerEvents::ItemRef& item, std::string& a, std::string& b) {
    a = "A:" + std::string(item->FileName());
    b = "B";
  };
  viewer->setViewOptions(31 | 524288);
  viewer->setCurrentfolder("C:\\e");
  EXPECT_EQ(listener.log, (std::vector<std::string>{"SetUserdata a.txt", "SetUserdata sub", "AfterNewView C:\\e",
                                                    "OnCurrentFolderChanged C:\\e"}));
  EXPECT_EQ(Cell("a.txt", "userd1"), "A:a.txt");
  EXPECT_EQ(viewer->Items()->Item(Variant("sub"))->UserDataB(), "B");
  listener.log.clear();
  viewer->RefreshView(true);  // the same folder: no change announced
  EXPECT_EQ(listener.log.back(), "AfterNewView C:\\e");
}

TEST_F(ViewerTest, UnreadableFolderListsOnlyTheGoUpRow) {
  files().AddFile("C:\\locked\\a.txt", 1);
  files().SetEnumerable("C:\\locked", false);
  viewer->setCurrentfolder("C:\\locked");
  EXPECT_EQ(Keys(), (std::vector<std::string>{"sysgoup"}));
  EXPECT_TRUE(platform->SimBoxes().Shown().empty());
  EXPECT_EQ(listener.log.back(), "OnCurrentFolderChanged C:\\locked");
}

TEST_F(ViewerTest, MissingLocationReportsAndKeepsTheView) {
  files().AddFile("C:\\k\\a.txt", 1);
  viewer->setCurrentfolder("C:\\k");
  viewer->setCurrentfolder("C:\\nowhere");
  EXPECT_EQ(viewer->Currentfolder(), "C:\\k");
  ASSERT_EQ(platform->SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(platform->SimBoxes().Shown()[0],
            (MessageBoxRecord{".Currentfolder", "Error: 76. Path not found", 21}));
  viewer->setCurrentfolder("C:\\k\\a.txt");  // exists, so it passes, and lists as nothing
  EXPECT_EQ(viewer->Currentfolder(), "C:\\k\\a.txt");
  EXPECT_EQ(Keys(), (std::vector<std::string>{"sysgoup"}));
  EXPECT_EQ(platform->SimBoxes().Shown().size(), 1u);
}

TEST_F(ViewerTest, ListingFailureIsReportedAndReleasesTheBusyFlag) {
  files().AddFile("C:\\x\\2024", 1);      // key ##$$2024
  files().AddFile("C:\\x\\##$$2024", 1);  // the same key: the row cannot be added
  viewer->setCurrentfolder("C:\\x");
  ASSERT_EQ(platform->SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(platform->SimBoxes().Shown()[0].title, ".LoadFiles");
  EXPECT_EQ(platform->SimBoxes().Shown()[0].text, "Error: 35602. Key is not unique in collection");
  EXPECT_FALSE(FileViewer::Internal::ListingBusy(*viewer));
  EXPECT_FALSE(platform->SimWindow().Locked());
  files().Remove("C:\\x\\##$$2024");
  viewer->RefreshView(true);
  EXPECT_EQ(viewer->ListView1().RowCount(), 2u);
}

TEST_F(ViewerTest, TheLastHandedItemTalksToItsRow) {
  files().AddFile("C:\\t\\a.txt", 1);
  files().AddFile("C:\\t\\b.txt", 1);
  std::vector<FileViewerEvents::ItemRef> handed;
  listener.onSetUserdata = [&](FileViewerEvents::ItemRef& item, std::string&, std::string&) { handed.push_back(item); };
  viewer->setCurrentfolder("C:\\t");
  ASSERT_EQ(handed.size(), 2u);
  ListView& lv = viewer->ListView1();
  handed[1]->setSelected(true);
  EXPECT_TRUE(lv.FindRow(handed[1]->Key())->Selected());
  handed[1]->setChecked(true);
  EXPECT_TRUE(lv.FindRow(handed[1]->Key())->Checked());
  handed[1]->EnsureVisible();
  EXPECT_EQ(lv.TopRow(), static_cast<int64_t>(lv.FindRow(handed[1]->Key())->Index()));
  // Only one item is listened to: the first one now changes only itself.
  handed[0]->setSelected(true);
  EXPECT_TRUE(handed[0]->Selected());
  EXPECT_FALSE(lv.FindRow(handed[0]->Key())->Selected());
}

}  // namespace
}  // namespace nxfv::testing
