// Navigation and history on the simulated platform.
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

// Records each AfterNewView with its history flags.
struct HistoryListener : RecordingListener {
  void AfterNewView(std::string& Path, bool& CanGoPrevious, bool& CanGoNext, bool&) override {
    log.push_back(Path + (CanGoPrevious ? " <" : " -") + (CanGoNext ? ">" : "-"));
  }
  void OnCurrentFolderChanged(std::string&) override {}
  void SetUserdata(ItemRef&, std::string&, std::string&) override {}
};

class NavigationTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    viewer->SetEventListener(&history);
    for (const char* f : {"C:\\a\\b\\c", "C:\\d", "C:\\Users\\User\\Documents"}) files().AddFolder(f);
    files().AddFileWithContent("C:\\a\\z.zip", std::string("PK\x05\x06", 4) + std::string(18, '\0'));
  }
  ViewerCore& core() { return FileViewer::Internal::Core(*viewer); }
  std::vector<std::string> Boxes() {
    std::vector<std::string> out;
    for (const auto& b : platform->SimBoxes().Shown()) out.push_back(b.title);
    return out;
  }
  HistoryListener history;
};

TEST_F(NavigationTest, HistoryFollowsBrowserRules) {
  for (const char* f : {"C:\\a", "C:\\a\\b", "C:\\d"}) viewer->setCurrentfolder(f);
  viewer->RefreshView(true);  // the same place again is no step
  viewer->HistoryPrevious();
  viewer->HistoryPrevious();
  viewer->HistoryPrevious();  // nothing further back
  viewer->HistoryNext();
  EXPECT_EQ(history.log, (std::vector<std::string>{"C:\\a --", "C:\\a\\b <-", "C:\\d <-", "C:\\d <-", "C:\\a\\b <>",
                                                    "C:\\a ->", "C:\\a\\b <>"}));
  viewer->setCurrentfolder("C:\\a\\b\\c");  // a new place drops the forward part (C:\d)
  EXPECT_EQ(history.log.back(), "C:\\a\\b\\c <-");
  EXPECT_FALSE(viewer->CanGoNext());
  viewer->HistoryPrevious();
  viewer->HistoryNext();
  EXPECT_EQ(viewer->Currentfolder(), "C:\\a\\b\\c");
}

TEST_F(NavigationTest, AVanishedPlaceIsReportedAndPassedOver) {
  for (const char* f : {"C:\\a", "C:\\d", "C:\\a\\b"}) viewer->setCurrentfolder(f);
  files().Remove("C:\\d");
  history.log.clear();
  viewer->HistoryPrevious();
  EXPECT_EQ(viewer->Currentfolder(), "C:\\a\\b");
  EXPECT_TRUE(history.log.empty());
  EXPECT_EQ(Boxes(), (std::vector<std::string>{".HistoryPrevious"}));
  viewer->HistoryPrevious();
  EXPECT_EQ(viewer->Currentfolder(), "C:\\a");
  EXPECT_TRUE(viewer->CanGoNext());
  EXPECT_FALSE(viewer->CanGoPrevious());
}

TEST_F(NavigationTest, GoUpStopsAtTheTopFolderAndLeavesArchivesAndRoots) {
  struct Case {
    const char* from;
    const char* top;
    bool moved;
    const char* to;
  };
  const Case cases[] = {
      {"C:\\a\\b\\c", "", true, "C:\\a\\b"},
      {"C:\\a\\b", "C:\\a\\b\\", false, "C:\\a\\b"},  // the top folder itself
      {"C:\\A\\B", "c:\\a", true, "C:\\A"},          // letter case ignored here
      {"C:\\a", "", true, "C:\\"},
      {"C:\\a\\z.zip", "C:\\a", true, "C:\\a"},      // out of an archive, whatever the top
  };
  for (const Case& k : cases) {
    viewer->setGoUpTopFolder(k.top);
    viewer->setCurrentfolder(k.from);
    EXPECT_EQ(viewer->GoUP(), k.moved) << k.from;
    EXPECT_EQ(viewer->Currentfolder(), k.to) << k.from;
    EXPECT_FALSE(viewer->InsideArchive()) << k.from;
  }
  viewer->setGoUpTopFolder("");
  viewer->setCurrentfolder("C:\\");
  EXPECT_TRUE(viewer->GoUP());  // above a root: the drives view
  EXPECT_TRUE(core().showingDrives);
  EXPECT_FALSE(viewer->GoUP());
  viewer->HistoryPrevious();
  EXPECT_EQ(viewer->Currentfolder(), "C:\\");
  viewer->HistoryNext();
  EXPECT_TRUE(core().showingDrives);
  viewer->UserDoubleClick("C:\\");  // a drive opens at its root
  EXPECT_FALSE(core().showingDrives);
  EXPECT_EQ(viewer->Currentfolder(), "C:\\");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(NavigationTest, SpecialFoldersStartingFolderAndPicker) {
  EXPECT_EQ(viewer->GetSpecialFolder(CSIDL_PERSONAL), "C:\\Users\\User\\Documents");
  EXPECT_TRUE(viewer->SetToSpecialFolder(CSIDL_PERSONAL));
  EXPECT_EQ(viewer->Currentfolder(), "C:\\Users\\User\\Documents");
  EXPECT_EQ(viewer->GetSpecialFolder(CSIDL_BITBUCKET), "");
  EXPECT_FALSE(viewer->SetToSpecialFolder(CSIDL_BITBUCKET));
  EXPECT_EQ(viewer->Currentfolder(), "C:\\Users\\User\\Documents");

  viewer->setStartingFolder("C:\\d");
  viewer->ResetToStartingFolder();
  EXPECT_EQ(viewer->Currentfolder(), "C:\\d");

  platform->SimPicker().Script({"C:\\a\\b\\", std::nullopt});
  EXPECT_TRUE(viewer->SelectCurrentFolder("Pick one"));
  EXPECT_EQ(viewer->Currentfolder(), "C:\\a\\b");
  EXPECT_FALSE(viewer->SelectCurrentFolder());
  EXPECT_EQ(viewer->Currentfolder(), "C:\\a\\b");
  EXPECT_EQ(platform->SimPicker().Requests(),
            (std::vector<FolderPickRecord>{{"Pick one", "C:\\d"}, {"", "C:\\a\\b"}}));
}

TEST_F(NavigationTest, CreateNewFolderFindsAFreeNameAndReportsFailures) {
  viewer->setCurrentfolder("C:\\d");
  EXPECT_TRUE(viewer->CreateNewFolder());
  EXPECT_TRUE(viewer->CreateNewFolder());
  EXPECT_TRUE(viewer->CreateNewFolder("x", "C:\\a\\"));
  EXPECT_NE(files().Find("C:\\a\\x"), nullptr);
  ASSERT_NE(viewer->ListView1().FindRow("New Folder (2)"), nullptr);
  EXPECT_TRUE(viewer->ListView1().FindRow("New Folder (2)")->Selected());
  EXPECT_FALSE(viewer->ListView1().FindRow("New Folder")->Selected());
  EXPECT_TRUE(Boxes().empty());

  struct Case {
    const char* name;
    const char* path;
    const char* error;
  };
  const Case failures[] = {
      {"new folder", "", "Error: 58. File already exists"},
      {"a\\b", "", "Error: 52. Bad file name or number"},
      {"..", "", "Error: 52. Bad file name or number"},
      {"y", "C:\\nowhere", "Error: 76. Path not found"},
  };
  for (const Case& k : failures) {
    platform->SimBoxes().Clear();
    EXPECT_FALSE(viewer->CreateNewFolder(k.name, k.path)) << k.name;
    ASSERT_EQ(platform->SimBoxes().Shown().size(), 1u) << k.name;
    EXPECT_EQ(platform->SimBoxes().Shown()[0].title, ".CreateNewFolder");
    EXPECT_EQ(platform->SimBoxes().Shown()[0].text, k.error) << k.name;
  }
}

}  // namespace
}  // namespace nxfv::testing
