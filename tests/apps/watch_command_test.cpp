#include "nxfv/watch_command.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "nxfv/list_command.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "platform_linux/temp_dir.h"

namespace nxfv::cli {
namespace {

TEST(WatchCommand, PrintsTheListingAgainAfterAChangeAsOneJsonLineEach) {
  testing::TempDir tmp;
  const std::string dir = tmp.path();
  LinuxPlatform platform;
  std::ostringstream out, err;
  int turns = 0;
  // The host loop's turns: after the first listing a file appears; the
  // command stops once a second listing was printed (or after 10 s).
  const int rc = RunWatchCommand({"--json", dir}, platform, out, err, [&] {
    if (turns++ == 0) std::ofstream(dir + "/new.txt") << "x";
    return out.str().find("new.txt") == std::string::npos && turns < 100;
  }, 100);
  EXPECT_EQ(rc, 0) << err.str();
  std::istringstream lines(out.str());
  std::string first, second;
  ASSERT_TRUE(std::getline(lines, first) && std::getline(lines, second)) << out.str();
  EXPECT_EQ(first.find("new.txt"), std::string::npos);
  EXPECT_NE(second.find("\"key\":\"new.txt\""), std::string::npos);
  EXPECT_EQ(second.front(), '{');
}

TEST(WatchCommand, UsageAndMissingFolder) {
  LinuxPlatform platform;
  std::ostringstream out, err;
  EXPECT_EQ(RunWatchCommand({}, platform, out, err), 2);
  EXPECT_NE(err.str().find("nxfv watch: missing PATH"), std::string::npos);
  EXPECT_EQ(RunWatchCommand({"/no/such/place"}, platform, out, err), 1);
  EXPECT_EQ(RunWatchCommand({"/etc/passwd"}, platform, out, err), 1);
  EXPECT_NE(err.str().find("nxfv: /no/such/place: no such file or folder\n"), std::string::npos);
  EXPECT_NE(err.str().find("nxfv: /etc/passwd: not a folder\n"), std::string::npos);
}

TEST(ListCommandDrives, ListsTheRootVolume) {
  LinuxPlatform platform;
  std::ostringstream out, err;
  EXPECT_EQ(RunListCommand({"--drives", "--json"}, platform, out, err), 0) << err.str();
  EXPECT_NE(out.str().find("\"key\":\"/\""), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("\"ListItemTyp\":3"), std::string::npos) << "a Drive item";
  EXPECT_EQ(out.str().find("\"key\":\"/proc\""), std::string::npos) << "no system mount";
}

}  // namespace
}  // namespace nxfv::cli
