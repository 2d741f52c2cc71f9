#include "nxfv/settings_command.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "nxfv/list_command.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "platform_linux/temp_dir.h"

namespace nxfv::cli {
namespace {

class SettingsCommandTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(tmp.WriteFile("a.txt", "a") && tmp.WriteFile("b.doc", "b")); }
  testing::TempDir tmp;
  const std::string dir = tmp.path();
  LinuxPlatform platform;
  std::ostringstream out, err;
};

TEST_F(SettingsCommandTest, PrintsTheBagAndKeepsUnknownLines) {
  ASSERT_EQ(RunSettingsCommand({}, platform, out, err), 0) << err.str();
  EXPECT_NE(out.str().find("\npattern=*.*\n"), std::string::npos);
  EXPECT_NE(out.str().find("\nStartingFolder=" + platform.DefaultStartFolder() + "\n"), std::string::npos);

  const std::string file = dir + "/viewer.settings";
  std::ofstream(file) << "# mine\nVirtualFileList=True\npattern=*.doc\nMine=kept\n";
  out.str("");
  ASSERT_EQ(RunSettingsCommand({file}, platform, out, err), 0) << err.str();
  EXPECT_EQ(out.str().rfind("# mine\nVirtualFileList=True\npattern=*.doc\nMine=kept\nBackColor=", 0), 0u) << out.str();
  EXPECT_EQ(RunSettingsCommand({dir + "/missing"}, platform, out, err), 1);
}

TEST_F(SettingsCommandTest, ListReadsTheFileAndOptionsWin) {
  const std::string file = dir + "/viewer.settings";
  std::ofstream(file) << "pattern=*.doc\nShowGOUPFolder=False\nViewOptions=1\n";
  ASSERT_EQ(RunListCommand({"--settings", file, dir}, platform, out, err), 0) << err.str();
  EXPECT_NE(out.str().find("b.doc"), std::string::npos);
  EXPECT_EQ(out.str().find("a.txt"), std::string::npos);
  out.str("");
  ASSERT_EQ(RunListCommand({"--settings", file, "--pattern", "*.txt", dir}, platform, out, err), 0);
  EXPECT_NE(out.str().find("a.txt"), std::string::npos);
  EXPECT_EQ(RunListCommand({"--settings", dir + "/missing", dir}, platform, out, err), 1);
}

}  // namespace
}  // namespace nxfv::cli
