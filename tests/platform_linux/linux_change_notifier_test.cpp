#include "nxfv/platform/linux/linux_change_notifier.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdio.h>
#include <sys/stat.h>

#include "platform_linux/temp_dir.h"

namespace nxfv {
namespace {

using Kind = FolderChangeKind;
using testing::TempDir;

// Waits for the descriptor (at most a second), dispatches, takes the changes.
std::vector<FolderChange> Collect(LinuxChangeNotifier& n) {
  pollfd p{n.PollFd(), POLLIN, 0};
  if (poll(&p, 1, 1000) > 0) n.Dispatch();
  return n.TakeChanges();
}

TEST(LinuxChangeNotifierTest, ReportsEachKindOfEntryChangeButNotInsideSubfolders) {
  TempDir dir;
  ASSERT_TRUE(dir.ok() && dir.MakeDir("sub"));
  LinuxChangeNotifier n;
  int nudges = 0;
  n.SetCallback([&] { ++nudges; });
  EXPECT_FALSE(n.Watch(dir / "missing"));
  ASSERT_TRUE(dir.WriteFile("plain"));
  EXPECT_FALSE(n.Watch(dir / "plain"));  // a file is not a folder
  ASSERT_TRUE(n.Watch(dir.path()));
  EXPECT_EQ(n.WatchedFolder(), dir.path());

  ASSERT_TRUE(dir.WriteFile("sub/deep"));  // not reported: the watch is not recursive
  ASSERT_TRUE(dir.WriteFile("caf\xE9 new"));
  ASSERT_EQ(rename((dir / "caf\xE9 new").c_str(), (dir / "renamed").c_str()), 0);
  ASSERT_EQ(chmod((dir / "renamed").c_str(), 0600), 0);
  ASSERT_EQ(unlink((dir / "renamed").c_str()), 0);
  EXPECT_EQ(Collect(n), (std::vector<FolderChange>{{Kind::Created, "caf\\xE9 new"},
                                                   {Kind::MovedOut, "caf\\xE9 new"},
                                                   {Kind::MovedIn, "renamed"},
                                                   {Kind::AttributesChanged, "renamed"},
                                                   {Kind::Deleted, "renamed"}}));
  EXPECT_EQ(nudges, 1);
  const int fd = open((dir / "plain").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
  ASSERT_GE(fd, 0);
  EXPECT_EQ(write(fd, "x", 1), 1);
  close(fd);
  EXPECT_EQ(Collect(n), (std::vector<FolderChange>{{Kind::Modified, "plain"}}));
}

TEST(LinuxChangeNotifierTest, FloodBecomesOverflowAndARemovedFolderEndsTheWatch) {
  TempDir dir;
  ASSERT_TRUE(dir.ok() && dir.MakeDir("w"));
  LinuxChangeNotifier n;
  ASSERT_TRUE(n.Watch(dir / "w"));
  for (size_t i = 0; i <= ChangeNotifierService::kMaxPendingChanges; ++i)
    ASSERT_TRUE(dir.WriteFile("w/" + std::to_string(i)));
  std::vector<FolderChange> changes = Collect(n);
  ASSERT_FALSE(changes.empty());
  EXPECT_EQ(changes.front(), (FolderChange{Kind::Overflow, ""}));
  EXPECT_LT(changes.size(), 16u);

  for (size_t i = 0; i <= ChangeNotifierService::kMaxPendingChanges; ++i)
    ASSERT_EQ(unlink((dir / ("w/" + std::to_string(i))).c_str()), 0);
  n.Dispatch();
  n.TakeChanges();
  ASSERT_EQ(rmdir((dir / "w").c_str()), 0);
  changes = Collect(n);
  ASSERT_FALSE(changes.empty());
  EXPECT_EQ(changes.back(), (FolderChange{Kind::FolderGone, ""}));
  EXPECT_EQ(n.WatchedFolder(), "");
}

}  // namespace
}  // namespace nxfv
