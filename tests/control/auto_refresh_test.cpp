#include "nxfv/control/auto_refresh.h"

#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

constexpr uint32_t kTick = AutoRefresh::kTickMs;
constexpr uint32_t kRefresh = AutoRefresh::kRefreshMs;

class AutoRefreshTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    files().AddFile("C:\\w\\a.txt", 1);
    files().AddFile("C:\\other\\o.txt", 1);
    viewer->setCurrentfolder("C:\\w");
  }
  AutoRefresh& refresher() { return FileViewer::Internal::Core(*viewer).autoRefresh; }
  void Create(const std::string& name) {
    files().AddFile("C:\\w\\" + name, 1);
    platform->SimNotifier().SimulateChange("C:\\w\\" + name, FolderChangeKind::Created);
  }
  bool Shows(const std::string& key) const { return viewer->ListView1().FindRow(key) != nullptr; }
  SimTimers& clock() { return platform->SimTimerQueue(); }
};

TEST_F(AutoRefreshTest, TickStartsTheRefreshTimerWhichRefreshesOnceInPlace) {
  auto kept = viewer->Items()->Item(Variant("a.txt"));
  Create("b.txt");
  clock().Advance(kTick - 1);
  EXPECT_FALSE(Shows("b.txt"));
  clock().Advance(1);  // the tick delivers and hands over to the refresh timer
  EXPECT_FALSE(Shows("b.txt"));
  EXPECT_TRUE(InstanceTable::ForThisThread().Row(viewer->InstanceSlot()).refreshPending);
  clock().Advance(kRefresh);
  EXPECT_TRUE(Shows("b.txt"));
  EXPECT_FALSE(InstanceTable::ForThisThread().Row(viewer->InstanceSlot()).refreshPending);
  EXPECT_EQ(viewer->Items()->Item(Variant("a.txt")), kept);  // in place: kept rows stay
  EXPECT_EQ(refresher().RefreshCount(), 1u);
  EXPECT_EQ(refresher().TickCount(), 1.0);
  clock().Advance(10 * kTick);  // nothing new: no refresh
  EXPECT_EQ(refresher().RefreshCount(), 1u);
  EXPECT_EQ(refresher().TickCount(), 11.0);
}

TEST_F(AutoRefreshTest, ABurstRefreshesAtItsStartOncePerHoldAndAtItsEnd) {
  for (int i = 0; i < 5000; ++i) Create("f" + std::to_string(i) + ".txt");  // past the notifier's queue: overflow
  files().Remove("C:\\w\\a.txt");
  platform->SimNotifier().SimulateChange("C:\\w\\a.txt", FolderChangeKind::Deleted);
  clock().Advance(kTick + kRefresh);
  EXPECT_EQ(refresher().RefreshCount(), 1u);
  EXPECT_EQ(viewer->ItemCount(), 5001);  // the go-up item and the 5000 new files
  EXPECT_FALSE(Shows("a.txt"));
  // The burst goes on, a change in every tick: held, with one refresh per
  // kMaxHoldTicks ticks, then one when a tick is quiet.
  const int ticks = 2 * AutoRefresh::kMaxHoldTicks + 5;
  const std::string last = "s" + std::to_string(ticks - 1);
  for (int i = 0; i < ticks; ++i) {
    Create("s" + std::to_string(i));
    clock().Advance(kTick);
  }
  EXPECT_EQ(refresher().RefreshCount(), 3u);
  EXPECT_FALSE(Shows(last));
  clock().Advance(2 * kTick);
  EXPECT_EQ(refresher().RefreshCount(), 4u);
  EXPECT_TRUE(Shows(last));
}

TEST_F(AutoRefreshTest, TheWatchFollowsTheLocationAndTheSetting) {
  SimChangeNotifier& notifier = platform->SimNotifier();
  viewer->setCurrentfolder("C:\\other");  // that the old watch ends is checked on Linux

  FileViewer::Internal::Core(*viewer).settings.autoUpdate = false;
  files().AddFile("C:\\other\\p.txt", 1);
  notifier.SimulateChange("C:\\other\\p.txt", FolderChangeKind::Created);
  clock().Advance(3 * kTick);
  EXPECT_EQ(notifier.WatchedFolder(), "");
  EXPECT_FALSE(Shows("p.txt"));

  FileViewer::Internal::Core(*viewer).settings.autoUpdate = true;  // the next tick watches again
  clock().Advance(kTick);
  EXPECT_EQ(notifier.WatchedFolder(), "C:\\other");
  files().AddFile("C:\\other\\q.txt", 1);
  notifier.SimulateChange("C:\\other\\q.txt", FolderChangeKind::Created);
  clock().Advance(kTick + kRefresh);
  EXPECT_TRUE(Shows("q.txt"));
}

TEST_F(AutoRefreshTest, AGoneFolderIsNotRefreshedAndShowsNoBox) {
  files().Remove("C:\\w\\a.txt");
  files().Remove("C:\\w");
  platform->SimNotifier().SimulateChange("C:\\w", FolderChangeKind::FolderGone);
  clock().Advance(5 * kTick);
  EXPECT_EQ(refresher().RefreshCount(), 0u);
  EXPECT_TRUE(platform->SimBoxes().Shown().empty());
  EXPECT_TRUE(Shows("a.txt"));
}

TEST_F(AutoRefreshTest, ADestroyedControlLeavesNoTimerAndNoWatch) {
  Create("b.txt");
  viewer.reset();
  EXPECT_EQ(platform->SimNotifier().WatchedFolder(), "");
  EXPECT_EQ(clock().Advance(10 * kTick), 0u);
}

}  // namespace
}  // namespace nxfv::testing
