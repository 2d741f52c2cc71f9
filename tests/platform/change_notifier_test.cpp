#include "nxfv/platform/sim/simulated_platform.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

using Kind = FolderChangeKind;

TEST(SimChangeNotifierTest, ReportsOnlyEntriesDirectlyInTheWatchedFolder) {
  SimulatedPlatform p;
  p.SimFiles().AddFolder("C:\\d\\sub");
  p.SimFiles().AddFile("C:\\d\\f.txt", 1);
  ChangeNotifierService& n = p.ChangeNotifier();
  EXPECT_FALSE(n.Watch("C:\\missing"));
  EXPECT_FALSE(n.Watch("C:\\d\\f.txt"));
  ASSERT_TRUE(n.Watch("C:\\d\\"));
  EXPECT_EQ(n.WatchedFolder(), "C:\\d");
  int nudges = 0;
  n.SetCallback([&] { ++nudges; });
  struct Case {
    const char* path;
    bool reported;
  } cases[] = {
      {"C:\\d\\new.txt", true}, {"c:\\D\\Sub\\", true},  {"C:\\d\\sub\\deep.txt", false},
      {"C:\\other\\x", false},  {"C:\\d", false},       {"C:\\dd\\x", false},
  };
  for (const Case& c : cases) EXPECT_EQ(p.SimNotifier().SimulateChange(c.path, Kind::Created), c.reported) << c.path;
  EXPECT_EQ(nudges, 2);
  EXPECT_EQ(n.TakeChanges(), (std::vector<FolderChange>{{Kind::Created, "new.txt"}, {Kind::Created, "Sub"}}));
  EXPECT_TRUE(n.TakeChanges().empty());
}

TEST(SimChangeNotifierTest, TooManyPendingCollapseIntoOverflowAndAGoneFolderEndsTheWatch) {
  SimulatedPlatform p;
  p.SimFiles().AddFolder("C:\\d");
  ChangeNotifierService& n = p.ChangeNotifier();
  ASSERT_TRUE(n.Watch("C:\\d"));
  for (size_t i = 0; i <= ChangeNotifierService::kMaxPendingChanges; ++i) p.SimNotifier().SimulateChange("C:\\d\\f");
  p.SimNotifier().SimulateChange("C:\\d\\g", Kind::Deleted);
  EXPECT_EQ(n.TakeChanges(), (std::vector<FolderChange>{{Kind::Overflow, ""}, {Kind::Deleted, "g"}}));
  p.SimNotifier().SimulateChange("C:\\d\\f");
  n.Unwatch();
  EXPECT_TRUE(n.TakeChanges().empty());
  EXPECT_FALSE(p.SimNotifier().SimulateChange("C:\\d\\f"));
  ASSERT_TRUE(n.Watch("C:\\d"));
  p.SimNotifier().SimulateChange("C:\\d", Kind::FolderGone);
  EXPECT_EQ(n.WatchedFolder(), "");
  EXPECT_EQ(n.TakeChanges(), (std::vector<FolderChange>{{Kind::FolderGone, ""}}));
}

}  // namespace
}  // namespace nxfv
