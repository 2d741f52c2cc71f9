// Auto-refresh and the drives view on the Linux platform, with inotify on a
// real temporary folder. Waiting is done by the platform's own dispatch
// (poll on the timer and notifier descriptors), with a generous deadline.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <set>

#include "nxfv/control/auto_refresh.h"
#include "nxfv/control/drives_view.h"
#include "nxfv/platform/linux/event_wait.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

class LinuxAutoRefreshTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char tmpl[] = "/tmp/nxfv-refresh-XXXXXX";
    ASSERT_NE(mkdtemp(tmpl), nullptr);
    dir = tmpl;
    platform = std::make_shared<LinuxPlatform>();
    viewer = FileViewer::Create(platform);
    viewer->setShowGOUPFolder(false);
  }
  void TearDown() override {
    viewer.reset();
    std::system(("rm -rf '" + dir + "'").c_str());
  }
  bool Touch(const std::string& name) {
    const int fd = open((dir + "/" + name).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    return fd >= 0 && close(fd) == 0;
  }
  AutoRefresh& refresher() { return FileViewer::Internal::Core(*viewer).autoRefresh; }
  // Runs the host loop until done() holds or ten seconds pass.
  template <class Done>
  bool RunUntil(Done done) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done()) {
      if (std::chrono::steady_clock::now() > deadline || WaitAndDispatch(*platform, 100) < 0) return false;
    }
    return true;
  }
  std::set<std::string> Shown() const {
    std::set<std::string> out;
    for (size_t i = 0; i < viewer->ListView1().RowCount(); ++i) out.emplace(viewer->ListView1().Row(i).Key());
    return out;
  }

  std::string dir;
  std::shared_ptr<LinuxPlatform> platform;
  std::shared_ptr<FileViewer> viewer;
};

TEST_F(LinuxAutoRefreshTest, ABurstOfCreationsAndDeletionsFoldsIntoAFewRefreshes) {
  ASSERT_TRUE(Touch("keep.txt"));
  viewer->setCurrentfolder(dir);
  for (int i = 0; i < 10000; ++i) ASSERT_TRUE(Touch("f" + std::to_string(i)));
  ASSERT_TRUE(RunUntil([&] { return viewer->ItemCount() == 10001; }));
  for (int i = 0; i < 10000; i += 2) ASSERT_EQ(unlink((dir + "/f" + std::to_string(i)).c_str()), 0);
  ASSERT_TRUE(RunUntil([&] { return viewer->ItemCount() == 5001; }));
  EXPECT_LE(refresher().RefreshCount(), 5u);

  // The view equals a fresh listing of the same folder.
  const std::set<std::string> refreshed = Shown();
  viewer->RefreshView(true);
  EXPECT_EQ(refreshed, Shown());
}

TEST_F(LinuxAutoRefreshTest, LeavingAFolderStopsWatchingIt) {
  ASSERT_EQ(mkdir((dir + "/sub").c_str(), 0755), 0);
  viewer->setCurrentfolder(dir);
  viewer->setCurrentfolder(dir + "/sub");
  EXPECT_EQ(platform->ChangeNotifier().WatchedFolder(), dir + "/sub");
  ASSERT_TRUE(Touch("outside.txt"));
  ASSERT_TRUE(Touch("sub/inside.txt"));
  ASSERT_TRUE(RunUntil([&] { return viewer->ItemCount() == 1; }));
  EXPECT_EQ(refresher().RefreshCount(), 1u);
}

TEST(LinuxDrivesView, ListsTheRootWithItsFigures) {
  auto platform = std::make_shared<LinuxPlatform>();
  auto viewer = FileViewer::Create(platform);
  LoadDrives(FileViewer::Internal::Core(*viewer));
  auto root = viewer->Items()->Item(Variant("/"));
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->ListItemTyp(), typeoffitem::Drive);
  EXPECT_EQ(root->Path(), "/");
  EXPECT_FALSE(root->FileTyp().empty());
  const ListView& lv = viewer->ListView1();
  EXPECT_NE(lv.FindRow("/")->SubItem(lv.ColumnIndex("siz")), "");
  EXPECT_EQ(viewer->Items()->Item(Variant("/proc")), nullptr);
}

}  // namespace
}  // namespace nxfv::testing
