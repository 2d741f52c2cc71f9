// The file commands of the control: the exact call of the file-operation
// service (operation, sources, destination, flag word), the clipboard
// bookkeeping of copy / cut / paste, and the wiring of items and keys.
#include "control/viewer_fixture.h"

namespace nxfv::testing {
namespace {

class FileCommandsTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    files().AddFolder("C:\\work");
    files().AddFolder("C:\\work\\docs");
    files().AddFile("C:\\work\\a.txt", 10);
    files().AddFile("C:\\work\\b.txt", 20);
    files().AddFolder("C:\\dest");
    viewer->setCurrentfolder("C:\\work");
    op = viewer->FileCommand();
  }
  void Select(std::initializer_list<const char*> keys) {
    for (const char* k : keys) viewer->ListView1().FindRow(k)->SetSelected(true);
  }
  const std::vector<FileOperationRequest>& Calls() { return platform->SimFileOps().Requests(); }
  std::shared_ptr<NxFileoperation> op;
};

TEST_F(FileCommandsTest, FlagWordFollowsTheOptions) {
  struct Case {
    std::function<void(NxFileoperation&)> set;
    uint16_t flags;
  } cases[] = {
      {[](NxFileoperation&) {}, 0x48},
      {[](NxFileoperation& o) { o.setConfirmOperation(false); o.setConfirmMakeDir(false); }, 0x48 | 0x10 | 0x200},
      {[](NxFileoperation& o) { o.setAllowUndo(false); o.setRenameOnCollision(false); o.setSilentMode(true); }, 0x4},
      {[](NxFileoperation& o) { o.setFilesOnly(false); o.setProgressTitle("Copying"); }, 0x48 | 0x80 | 0x100},
  };
  for (const Case& c : cases) {
    auto fresh = std::make_shared<NxFileoperation>(platform);
    c.set(*fresh);
    EXPECT_EQ(fresh->FlagWord(), c.flags);
  }
}

TEST_F(FileCommandsTest, DeleteHandsTheSelectionToTheServiceOnce) {
  Select({"a.txt", "b.txt", "docs"});
  EXPECT_EQ(op->DeleteSelectedFiles(xFileHandle::OnlyFiles), -1);
  ASSERT_EQ(Calls().size(), 1u);
  EXPECT_EQ(Calls()[0].operation, FO_DELETE);
  EXPECT_EQ(Calls()[0].sources, (std::vector<std::string>{"C:\\work\\a.txt", "C:\\work\\b.txt"}));
  EXPECT_TRUE(Calls()[0].destinations.empty());
  EXPECT_EQ(Calls()[0].flags, 0x48 | 0x1);  // several sources: one destination each

  platform->SimFileOps().Script({{0, true}});  // the user stopped it
  EXPECT_EQ(op->DeleteSelectedFiles(xFileHandle::OnlyFolders), 0);
  EXPECT_EQ(Calls()[1].sources, (std::vector<std::string>{"C:\\work\\docs"}));
  EXPECT_EQ(Calls()[1].flags, 0x48);
}

TEST_F(FileCommandsTest, NothingSelectedIsReportedAndCallsNothing) {
  EXPECT_EQ(op->DeleteSelectedFiles(), 0);
  EXPECT_EQ(op->CutSelectedFiles(), 0);
  viewer->ListView1().Row(0).SetSelected(true);  // the go-up row is no file
  EXPECT_EQ(op->RenameSelectedFiles(), 0);
  EXPECT_TRUE(Calls().empty());
  const auto& boxes = platform->SimBoxes().Shown();
  ASSERT_EQ(boxes.size(), 3u);
  for (const auto& box : boxes) EXPECT_EQ(box.title, "No source files specified file operation");
}

TEST_F(FileCommandsTest, CopyAndCutGoThroughTheClipboard) {
  Select({"a.txt", "b.txt"});
  EXPECT_EQ(op->CopySelectedFiles(), -1);
  EXPECT_TRUE(Calls().empty());
  EXPECT_EQ(op->PasteFiles("C:\\dest"), -1);
  EXPECT_EQ(op->PasteFiles("C:\\dest"), -1);  // a copy can be pasted again
  ASSERT_EQ(Calls().size(), 2u);
  EXPECT_EQ(Calls()[0].operation, FO_COPY);
  EXPECT_EQ(Calls()[0].destinations, (std::vector<std::string>{"C:\\dest"}));

  xFileHandle which = xFileHandle::FilesAndFolders;
  viewer->UnSelectAll();
  Select({"docs"});
  EXPECT_EQ(op->CutSelectedFiles(which), -1);
  EXPECT_EQ(op->PasteFiles("C:\\dest"), -1);
  EXPECT_EQ(Calls()[2].operation, FO_MOVE);
  EXPECT_EQ(Calls()[2].sources, (std::vector<std::string>{"C:\\work\\docs"}));
  EXPECT_FALSE(platform->Clipboard().HasFiles());  // moved files are not pasted twice

  // Nothing on the clipboard: the usual report, no call.
  EXPECT_EQ(op->PasteFiles("C:\\dest"), 0);
  EXPECT_EQ(Calls().size(), 3u);
}

TEST_F(FileCommandsTest, RenameAsksTheHostAndRenamesInItsFolder) {
  struct Host : RecordingListener {
    void OnItemRename(ItemRef& item, std::string& newname, bool& cancel) override {
      if (item->FileName() == "a.txt") newname = "z.txt"; else cancel = true;
    }
  } host;
  viewer->SetEventListener(&host);
  Select({"a.txt", "b.txt"});
  EXPECT_EQ(op->RenameSelectedFiles(), 0);  // b.txt was cancelled
  ASSERT_EQ(Calls().size(), 1u);
  EXPECT_EQ(Calls()[0].operation, FO_RENAME);
  EXPECT_EQ(Calls()[0].sources, (std::vector<std::string>{"C:\\work\\a.txt"}));
  EXPECT_EQ(Calls()[0].destinations, (std::vector<std::string>{"C:\\work\\z.txt"}));
}

TEST_F(FileCommandsTest, AFailedRenameLeavesTheRow) {
  platform->SimFileOps().Script({{5, false}});
  EXPECT_FALSE(viewer->EndLabelEdit(viewer->ListView1().FindRow("a.txt")->Index(), "q.txt"));
  EXPECT_TRUE(viewer->ListView1().FindRow("a.txt"));
  EXPECT_EQ(Calls().size(), 1u);
}

TEST_F(FileCommandsTest, ItemCommandsActOnTheOneItem) {
  // The control acts for the item it handed out last.
  auto a = [&] { return viewer->GetItemFromName("a.txt"); };
  EXPECT_TRUE(a()->ExecuteShellCommand(ItemFileCommands::IcCopy));
  EXPECT_TRUE(viewer->GetItemFromName("docs")->ExecuteShellCommand(ItemFileCommands::IcPaste));  // into the folder
  EXPECT_TRUE(a()->ExecuteShellCommand(ItemFileCommands::IcPaste));  // into the item's folder
  EXPECT_TRUE(a()->ExecuteShellCommand(ItemFileCommands::IcDelete));
  ASSERT_EQ(Calls().size(), 3u);
  EXPECT_EQ(Calls()[0].destinations, (std::vector<std::string>{"C:\\work\\docs"}));
  EXPECT_EQ(Calls()[1].destinations, (std::vector<std::string>{"C:\\work"}));
  EXPECT_EQ(Calls()[2].operation, FO_DELETE);

  EXPECT_TRUE(a()->ExecuteShellCommand(ItemFileCommands::IcEdit));
  platform->SimLaunches().Script({false});
  EXPECT_FALSE(a()->ExecuteShellCommand(ItemFileCommands::IcPrint));
  const auto& launches = platform->SimLaunches().Requests();
  ASSERT_EQ(launches.size(), 2u);
  EXPECT_EQ(launches[0].verb, "edit");
  EXPECT_EQ(launches[1].verb, "print");
  EXPECT_EQ(platform->SimBoxes().Shown().back().title, ".ExeCmd");

  // Links: one per clipboard file, a taken name gets a number.
  EXPECT_TRUE(a()->ExecuteShellCommand(ItemFileCommands::IcCreateShortcut));
  uint32_t attributes = 0;
  ASSERT_TRUE(files().GetAttributes("C:\\work\\a (2).txt", attributes));
  EXPECT_EQ(attributes & kAttrReparsePoint, kAttrReparsePoint);
  // The same links for files dropped with the link action.
  EXPECT_EQ(op->LinkFiles({"C:\\work\\a.txt"}, "C:\\work\\docs"), -1);
  EXPECT_TRUE(files().GetAttributes("C:\\work\\docs\\a.txt", attributes));
  EXPECT_EQ(op->LinkFiles({}, "C:\\work\\docs"), 0);
}

TEST_F(FileCommandsTest, KeysRunTheCommandsOfTheSelection) {
  Select({"a.txt"});
  viewer->UserKeyDown(67, 2);  // Ctrl+C
  viewer->UserKeyDown(86, 2);  // Ctrl+V: into the current folder
  viewer->UserKeyDown(46, 1);  // Shift+Delete: for good
  viewer->UserKeyDown(46, 0);  // Delete: to the trash
  ASSERT_EQ(Calls().size(), 3u);
  EXPECT_EQ(Calls()[0].operation, FO_COPY);
  EXPECT_EQ(Calls()[0].destinations, (std::vector<std::string>{"C:\\work"}));
  EXPECT_EQ(Calls()[1].flags & FOF_ALLOWUNDO, 0);
  EXPECT_EQ(Calls()[2].flags & FOF_ALLOWUNDO, FOF_ALLOWUNDO);
  EXPECT_TRUE(op->AllowUndo());
}

TEST_F(FileCommandsTest, ParseAndComparePaths) {
  struct Parse {
    const char* in;
    const char* path;
    const char* name;
    const char* ext;
  } parses[] = {
      {"C:\\x\\report.final.txt", "C:\\x\\", "report.final", "txt"},
      {"/home/u/.bashrc", "/home/u/", ".bashrc", ""},
      {"readme", "", "readme", ""},
      {"C:\\x\\", "C:\\x\\", "", ""},
  };
  for (const Parse& p : parses) {
    std::string path, name, ext;
    op->ParsePath(p.in, path, name, ext);
    EXPECT_EQ(path + "|" + name + "|" + ext, std::string(p.path) + "|" + p.name + "|" + p.ext) << p.in;
  }
  EXPECT_TRUE(op->ComparePath("C:\\Work\\", "c:/work"));
  EXPECT_TRUE(op->ComparePath("C:\\", "c:\\"));
  EXPECT_FALSE(op->ComparePath("C:\\work", "C:\\work2"));
}

}  // namespace
}  // namespace nxfv::testing
