#include <thread>

#include "nxfv/control/instance_table.h"
#include "nxfv/platform/error_state.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

using ColumnsTest = ViewerTest;

TEST_F(ColumnsTest, LockedColumnListIsPublishedInTheSlot) {
  EXPECT_EQ(viewer->LockedColumns(), " 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19,20");
  viewer->setViewOptions(0x1FFBFF);
  // Inside a folder the archive-only columns are still locked at width 0.
  EXPECT_EQ(viewer->LockedColumns(), " 6, 7, 8, 12, 13, 14, 15, 16,20");
  headerdatas fixed;
  fixed.ShowHeaderItem = header_Name;
  fixed.HeaderSizeable = false;
  viewer->HeaderModifying(fixed);
  FileViewer::Internal::BuildColumns(*viewer, true);
  EXPECT_EQ(viewer->LockedColumns().substr(0, 5), " 0, 6");
  EXPECT_EQ(InstanceTable::ForThisThread().Row(viewer->InstanceSlot()).lockedColumns, viewer->LockedColumns());
}

TEST_F(ColumnsTest, AllSizeableAndVisibleLeavesOnlyTheSortColumn) {
  files().AddFileWithContent("C:\\a.zip", std::string("PK\x05\x06", 4) + std::string(18, '\0'));
  viewer->setViewOptions(0x1FFBFF);
  viewer->setCurrentfolder("C:\\a.zip");
  EXPECT_EQ(viewer->LockedColumns(), " 17,20");  // the short name has no width inside an archive
  headerdatas dos;
  dos.ShowHeaderItem = header_DosName;
  dos.HeaderSizeable = true;
  viewer->HeaderOptionsNew();
  for (const auto& row : BuiltInColumns()) {
    if (row.bit == header_DosName) continue;
    headerdatas h;
    h.ShowHeaderItem = row.bit;
    h.HeaderSizeable = true;
    viewer->HeaderOptionsAdd(h);
  }
  viewer->HeaderOptionsActivate();  // the short name is appended at the end
  EXPECT_EQ(viewer->ListView1().Column(19).key, "dos");
  EXPECT_EQ(viewer->LockedColumns(), " 19,20");
}

TEST_F(ColumnsTest, HeaderModifyingReplacesOnlyWhatItShould) {
  struct Case { const char* text; int32_t width; bool sizeable; const char* wantCaption; int32_t wantWidth; } cases[] = {
      {"", 0, false, "Type", 1400},
      {"Kind", 0, true, "Kind", 1400},
      {"", 2222, true, "Kind", 2222},
  };
  for (const auto& c : cases) {
    headerdatas h;
    h.ShowHeaderItem = header_Type;
    h.HeaderText = c.text;
    h.HeaderWidth = c.width;
    h.HeaderSizeable = c.sizeable;
    h.AdvInfo.xname = "zzz";  // never taken from the host
    viewer->HeaderModifying(h);
    headerdatas* rec = nullptr;
    ASSERT_TRUE(FindHeaderOption(viewer->HeaderOptions(), header_Type, rec));
    EXPECT_EQ(rec->HeaderText, c.wantCaption);
    EXPECT_EQ(rec->HeaderWidth, c.wantWidth);
    EXPECT_EQ(rec->HeaderSizeable, c.sizeable);
    EXPECT_EQ(rec->AdvInfo.xname, "typ");
  }
  headerdatas unknown;
  unknown.ShowHeaderItem = 1024;
  viewer->HeaderModifying(unknown);  // no such column: nothing happens
  EXPECT_EQ(viewer->HeaderOptions().Count(), 20);
  headerdatas extra;
  extra.ShowHeaderItem = 4096;
  ClearError();
  viewer->HeaderOptionsAdd(extra);  // the record table has twenty places
  EXPECT_EQ(CurrentError().number, 9);
  EXPECT_EQ(viewer->HeaderOptions().Count(), 20);
}

TEST_F(ColumnsTest, HostOrderFirstThenTheRestAndDuplicateAddFails) {
  viewer->HeaderOptionsNew();
  EXPECT_EQ(viewer->ListView1().ColumnCount(), 21);  // the screen changes at the next listing
  headerdatas size;
  size.ShowHeaderItem = header_FileSize;
  size.HeaderText = "Bytes";
  viewer->HeaderOptionsAdd(size);
  headerdatas name;
  name.ShowHeaderItem = header_Name;
  viewer->HeaderOptionsAdd(name);
  ClearError();
  viewer->HeaderOptionsAdd(size);
  EXPECT_EQ(CurrentError().number, 457);
  EXPECT_EQ(viewer->HeaderOptions().Count(), 2);
  ClearError();
  viewer->setCurrentfolder("C:\\TEMP");
  viewer->HeaderOptionsActivate();
  const ListView& lv = viewer->ListView1();
  EXPECT_EQ(lv.Column(0).key + lv.Column(1).key + lv.Column(2).key, "siznamext");
  EXPECT_EQ(lv.Column(0).caption + "|" + lv.Column(1).caption, "Bytes|Name");
}

TEST_F(ColumnsTest, ViewOptionsAtDesignTimeIsIgnored) {
  struct Changes : PropertyChangeListener {
    std::vector<std::string> keys;
    void PropertyChanged(const std::string& key) override { keys.push_back(key); }
  } changes;
  viewer->SetPropertyChangeListener(&changes);
  viewer->SetUserMode(false);
  viewer->setViewOptions(1);
  EXPECT_EQ(viewer->ViewOptions(), 31);
  viewer->SetUserMode(true);
  viewer->setViewOptions(1 | 256);
  EXPECT_EQ(viewer->ViewOptions(), 257);
  EXPECT_GT(Width("atr"), 0);
  EXPECT_EQ(Width("ext"), 0);
  EXPECT_EQ(changes.keys, std::vector<std::string>{"ViewOptions"});
}

TEST(InstanceSlotTest, EleventhAndLaterControlsShareSlotTen) {
  std::vector<int16_t> slots;
  std::thread([&] {
    auto platform = std::make_shared<SimulatedPlatform>();
    std::vector<std::shared_ptr<FileViewer>> viewers;
    for (int i = 0; i < 12; ++i) {
      viewers.push_back(FileViewer::Create(platform));
      slots.push_back(viewers.back()->InstanceSlot());
    }
    viewers.clear();  // slots are never given back
    slots.push_back(FileViewer::Create(platform)->InstanceSlot());
  }).join();
  EXPECT_EQ(slots, (std::vector<int16_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 10, 10}));
}

}  // namespace
}  // namespace nxfv::testing
