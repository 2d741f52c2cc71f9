// The user's input: event order, vetoes, activation and keys, on the
// simulated platform.
#include "nxfv/control/activation.h"

#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

struct InputListener : RecordingListener {
  bool cancelDblClick = false;
  bool cancelSelection = false;
  bool swallowKeys = false;
  void AfterNewView(std::string& Path, bool&, bool&, bool&) override { log.push_back("AfterNewView " + Path); }
  void OnItemClick(ItemRef& item) override { log.push_back("OnItemClick " + std::string(item->Key())); }
  void Click() override { log.push_back("Click"); }
  void DblClick() override { log.push_back("DblClick"); }
  void OnItemRightClick(ItemRef& item) override { log.push_back("OnItemRightClick " + std::string(item->Key())); }
  void OnItemDblClick(ItemRef& item, bool& Cancel) override {
    log.push_back("OnItemDblClick " + std::string(item->Key()));
    Cancel = cancelDblClick;
  }
  void OnSelectionChange(ItemRef& item, bool& Selecting, bool& Cancel) override {
    log.push_back("OnSelectionChange " + std::string(item->Key()) + (Selecting ? " on" : " off"));
    Cancel = cancelSelection;
  }
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override {
    log.push_back("KeyDown " + std::to_string(KeyCode) + "/" + std::to_string(Shift));
    if (swallowKeys) KeyCode = 0;
  }
  void KeyUp(int16_t& KeyCode, int16_t&) override { log.push_back("KeyUp " + std::to_string(KeyCode)); }
  void KeyPress(int16_t& KeyAscii) override { log.push_back("KeyPress " + std::to_string(KeyAscii)); }
  void MouseDown(int16_t& b, int16_t&, float& x, float&) override {
    log.push_back("MouseDown " + std::to_string(b) + " " + std::to_string(int(x)));
  }
  void MouseUp(int16_t& b, int16_t&, float&, float&) override { log.push_back("MouseUp " + std::to_string(b)); }
  void MouseMove(int16_t&, int16_t&, float&, float&) override { log.push_back("MouseMove"); }
};

class InputTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    viewer->SetEventListener(&input);
    files().AddFolder("C:\\w\\sub");
    files().AddFile("C:\\w\\doc.txt", 3);
    files().AddFileWithContent("C:\\w\\pack.zip", std::string("PK\x05\x06", 4) + std::string(18, '\0'));
    viewer->setCurrentfolder("C:\\w");
    input.log.clear();
  }
  ViewerSettings& settings() { return FileViewer::Internal::Core(*viewer).settings; }
  bool Selected(const char* key) { return viewer->ListView1().FindRow(key)->Selected(); }
  InputListener input;
};

TEST_F(InputTest, MouseClicksRaiseTheirEventsInOrder) {
  viewer->UserMouseDown(1, 0, 10, 20);
  EXPECT_TRUE(viewer->UserSelectionChange("doc.txt", true));
  viewer->UserMouseUp(1, 0, 10, 20);
  viewer->UserClick("doc.txt");
  viewer->UserMouseMove(0, 0, 11, 21);
  viewer->UserClick("");
  viewer->UserRightClick("doc.txt");
  viewer->UserRightClick("");
  viewer->UserDoubleClick("");
  EXPECT_EQ(input.log, (std::vector<std::string>{"MouseDown 1 10", "OnSelectionChange doc.txt on", "MouseUp 1",
                                                 "OnItemClick doc.txt", "Click", "MouseMove", "Click",
                                                 "OnItemRightClick doc.txt", "DblClick"}));
  EXPECT_TRUE(Selected("doc.txt"));
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");
}

TEST_F(InputTest, DoubleClickOnAFolderDivesAfterTheEvents) {
  viewer->UserDoubleClick("sub");
  EXPECT_EQ(input.log, (std::vector<std::string>{"OnItemDblClick sub", "DblClick", "AfterNewView C:\\w\\sub",
                                                 "OnCurrentFolderChanged C:\\w\\sub"}));
  input.log.clear();
  viewer->UserDoubleClick("sysgoup");
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");
}

TEST_F(InputTest, HostVetoesAndADisabledControlChangeNothing) {
  input.cancelDblClick = true;
  viewer->UserDoubleClick("sub");
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");
  input.cancelSelection = true;
  EXPECT_FALSE(viewer->UserSelectionChange("sub", true));
  EXPECT_FALSE(Selected("sub"));

  input.cancelSelection = input.cancelDblClick = false;
  input.log.clear();
  settings().enabled = false;
  viewer->UserMouseDown(1, 0, 0, 0);
  viewer->UserClick("sub");
  viewer->UserDoubleClick("sub");
  viewer->UserKeyDown(kKeyBack, 0);
  viewer->UserKeyPress(65);
  viewer->ClickColumnHeader(0, false);
  EXPECT_FALSE(viewer->UserSelectionChange("sub", true));
  EXPECT_TRUE(input.log.empty());
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");
}

TEST_F(InputTest, SingleSelectionKeepsOneRow) {
  settings().allowMultipleSelection = false;
  viewer->UserSelectionChange("sub", true);
  viewer->UserSelectionChange("doc.txt", true);
  EXPECT_FALSE(Selected("sub"));
  EXPECT_TRUE(Selected("doc.txt"));
}

TEST_F(InputTest, ActivationFollowsTheAllowSwitches) {
  struct Case {
    const char* row;
    bool folders, archives, execution;
    const char* folderAfter;
    size_t launches;
  };
  const Case cases[] = {
      {"sub", true, true, true, "C:\\w\\sub", 0},
      {"sub", false, true, true, "C:\\w", 0},
      {"pack.zip", true, true, true, "C:\\w\\pack.zip", 0},
      {"pack.zip", true, false, true, "C:\\w", 1},  // no diving: opened as a file
      {"pack.zip", true, false, false, "C:\\w", 0},
      {"doc.txt", true, true, true, "C:\\w", 1},
      {"doc.txt", true, true, false, "C:\\w", 0},
  };
  for (const Case& k : cases) {
    viewer->setCurrentfolder("C:\\w");
    platform->SimLaunches().Clear();
    settings().allowDiveIntoFolders = k.folders;
    settings().allowDiveIntoArchives = k.archives;
    settings().allowFileExecution = k.execution;
    viewer->UserDoubleClick(k.row);
    EXPECT_EQ(viewer->Currentfolder(), k.folderAfter) << k.row;
    EXPECT_EQ(platform->SimLaunches().Requests().size(), k.launches) << k.row;
  }
  settings().allowFileExecution = true;
  viewer->UserDoubleClick("doc.txt");
  ASSERT_FALSE(platform->SimLaunches().Requests().empty());
  EXPECT_EQ(platform->SimLaunches().Requests().back(), (LaunchRecord{"C:\\w\\doc.txt", "open"}));
}

TEST_F(InputTest, DefaultKeysAndSwallowedKeys) {
  viewer->ListView1().FindRow("sub")->SetSelected(true);
  viewer->UserKeyDown(kKeyReturn, 0);
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w\\sub");
  viewer->UserKeyDown(kKeyBack, 0);
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");
  viewer->UserKeyDown(kKeyLeft, kAltMask);
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w\\sub");
  viewer->UserKeyDown(kKeyRight, kAltMask);
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");
  viewer->UserKeyDown(kKeyLeft, 0);  // a plain arrow is the front end's
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");

  files().AddFile("C:\\w\\late.txt");
  viewer->UserKeyDown(kKeyF5, 0);
  ASSERT_NE(viewer->ListView1().FindRow("late.txt"), nullptr);
  viewer->UserKeyDown(kKeyA, kCtrlMask);
  for (const char* key : {"sub", "doc.txt", "late.txt"}) EXPECT_TRUE(Selected(key)) << key;

  input.swallowKeys = true;
  viewer->UserKeyDown(kKeyBack, 0);
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");
  input.swallowKeys = false;
  settings().defaultKeyHandling = false;
  viewer->UserKeyDown(kKeyBack, 0);
  EXPECT_EQ(viewer->Currentfolder(), "C:\\w");
  input.log.clear();
  viewer->UserKeyPress(13);
  viewer->UserKeyUp(kKeyBack, 0);
  EXPECT_EQ(input.log, (std::vector<std::string>{"KeyPress 13", "KeyUp 8"}));
}

}  // namespace
}  // namespace nxfv::testing
