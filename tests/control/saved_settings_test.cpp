#include "nxfv/control/saved_settings.h"

#include "nxfv/control/text_property_bag.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

struct KeyRecorder : PropertyChangeListener {
  std::vector<std::string> keys;
  void PropertyChanged(const std::string& key) override { keys.push_back(key); }
};

class SavedSettingsTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    files().AddFile("C:\\start\\s.txt", 1);
    files().AddFile("C:\\d\\a.txt", 1);
  }
  std::vector<std::string> Written(FileViewer& v) {
    MemoryPropertyBag bag;
    v.WriteProperties(bag);
    std::vector<std::string> out;
    for (const auto& [key, value] : bag.Values()) out.push_back(key + "=" + value.AsString());
    return out;
  }
};

TEST_F(SavedSettingsTest, EmptyBagGivesTheDefaultsAndListsTheStartingFolder) {
  MemoryPropertyBag empty;
  viewer->ReadProperties(empty);
  EXPECT_EQ(viewer->Currentfolder(), "c:\\");
  EXPECT_GT(viewer->ListView1().RowCount(), 0u);
  EXPECT_TRUE(platform->SimBoxes().Shown().empty());
  auto fresh = FileViewer::Create(platform);
  auto defaults = Written(*fresh);
  defaults[2] = "CurrentFolder=c:\\";
  EXPECT_EQ(Written(*viewer), defaults);
}

TEST_F(SavedSettingsTest, AllValuesRoundTripThroughATextBag) {
  viewer->setBackColor(0x00123456);
  viewer->setTextColor(0x80000012);
  viewer->setCurrentfolder("C:\\d");
  viewer->setViewOptions(7);
  viewer->setShowFolders(false);
  viewer->setShowFiles(false);
  viewer->setShowHiddenItems(false);
  viewer->setShowSysItems(false);
  viewer->setShowGOUPFolder(false);
  viewer->setGoUpTopFolder("C:\\");
  viewer->setFilePattern("*.txt;%odd\nname");
  viewer->setViewStyle(FvList);
  viewer->setStartingFolder("C:\\start");
  viewer->setAllowDiveIntoFolders(false);
  viewer->setAllowDiveIntoArchives(false);
  viewer->setAllowitemRenaming(false);
  viewer->setAllowMultiColumnSort(false);
  viewer->setAllowFileExecution(false);
  viewer->setAllowMultipleSelection(false);
  viewer->setAutoUpdate(false);
  viewer->setDefaultKeyHandling(false);
  viewer->setBorderstyle(1);
  viewer->setAppearance(0);
  viewer->setEnabled(false);
  viewer->setHideColumnHeaders(true);
  viewer->setHideSelection(true);
  viewer->setTrackSelection(true);
  viewer->setAllowMoveColumns(false);
  viewer->setFullRowSelection(false);
  viewer->setShowGridLines(true);
  viewer->setShowCheckBoxes(true);
  viewer->setVirtualFileList(true);
  auto before = Written(*viewer);

  auto text = TextPropertyBag::FromText("# kept\nUnknown=1\n");
  viewer->WriteProperties(text);
  const std::string saved = text.ToText();
  EXPECT_EQ(saved.rfind("# kept\nUnknown=1\nBackColor=1193046\n", 0), 0u) << saved;
  EXPECT_NE(saved.find("pattern=*.txt;%25odd%0Aname\n"), std::string::npos);

  auto reader = FileViewer::Create(platform);
  KeyRecorder changes;
  reader->SetPropertyChangeListener(&changes);
  auto again = TextPropertyBag::FromText(saved);
  reader->ReadProperties(again);
  EXPECT_EQ(Written(*reader), before);
  EXPECT_EQ(reader->FilePattern(), "*.txt;%odd\nname");
  // VirtualFileList: nothing listed, the stored folder only remembered.
  EXPECT_EQ(reader->ListView1().RowCount(), 0u);
  EXPECT_EQ(changes.keys,
            (std::vector<std::string>{"ShowCheckBoxes", "ShowGridLines", "FullRowSelection", "TrackSelection"}));
}

TEST_F(SavedSettingsTest, TrackSelectionFalseIsNotApplied) {
  MemoryPropertyBag bag;
  bag.WriteProperty("TrackSelection", Variant(false), Variant(int16_t{0}));
  viewer->setTrackSelection(true);
  KeyRecorder changes;
  viewer->SetPropertyChangeListener(&changes);
  viewer->ReadProperties(bag);
  EXPECT_TRUE(viewer->TrackSelection());  // its let did not run
  EXPECT_EQ(std::count(changes.keys.begin(), changes.keys.end(), "TrackSelection"), 0);
}

TEST_F(SavedSettingsTest, DamagedValuesKeepTheirDefaultsWithOneReport) {
  auto bag = TextPropertyBag::FromText(
      "garbage line\nViewOptions=lots\nShowFiles=maybe\nViewStyle=99999\n"
      "pattern=*.doc\nBackColor=4294967295\nno-newline-at-end");
  viewer->ReadProperties(bag);
  EXPECT_EQ(viewer->ViewOptions(), 31);
  EXPECT_TRUE(viewer->ShowFiles());
  EXPECT_EQ(viewer->ViewStyle(), FvReport);
  EXPECT_EQ(viewer->FilePattern(), "*.doc");
  EXPECT_EQ(viewer->BackColor(), 0xFFFFFFFFu);
  ASSERT_EQ(platform->SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(platform->SimBoxes().Shown()[0].title, ".ReadProperties");
  // The damaged lines are written back as they were.
  viewer->WriteProperties(bag);
  const std::string text = bag.ToText();
  EXPECT_EQ(text.rfind("garbage line\nViewOptions=31\n", 0), 0u) << text;
  EXPECT_NE(text.find("no-newline-at-end\n"), std::string::npos);
}

TEST(TextPropertyBagTest, EscapesAndLineEnds) {
  struct Case {
    const char* in;
    const char* out;
  } cases[] = {
      {"%41", "A"}, {"%4", "%4"}, {"%zz", "%zz"}, {"100%", "100%"}, {"%0a%0D", "\n\r"}, {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(TextPropertyBag::Unescape(c.in), c.out) << c.in;
  auto crlf = TextPropertyBag::FromText("a=1\r\nb=x=y\r\n");
  EXPECT_EQ(crlf.ReadProperty("b", Variant()).AsString(), "x=y");
  crlf.WriteProperty("c", Variant(true), Variant(false));
  EXPECT_EQ(crlf.ToText(), "a=1\r\nb=x=y\r\nc=True\r\n");
  std::string error;
  TextPropertyBag missing;
  EXPECT_FALSE(missing.LoadFile("/nonexistent/nxfv/bag.txt", error));
  EXPECT_FALSE(error.empty());
}

}  // namespace
}  // namespace nxfv::testing
