// Auto-refresh on the Linux platform, with inotify on a
// real temporary folder. Waiting is done by the platform's own dispatch
// (poll on the timer and notifier descriptors), with a generous deadline.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <set>

#include "nxfv/control/auto_refresh.h"
#include "nxfv/platform/linux/event_wait.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "platform_linux/temp_dir.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

class LinuxAutoRefreshTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(tmp.ok());
    viewer->setShowGOUPFolder(false);
  }
  bool Touch(const std::string& name) { return tmp.WriteFile(name); }
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

  TempDir tmp;
  const std::string dir = tmp.path();
  std::shared_ptr<LinuxPlatform> platform = std::make_shared<LinuxPlatform>();
  std::shared_ptr<FileViewer> viewer = FileViewer::Create(platform);
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

}  // namespace
}  // namespace nxfv::testing
