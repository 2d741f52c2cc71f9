// The file commands end to end on real folders, with a scripted terminal.
#include "nxfv/file_commands.h"

#include <gtest/gtest.h>

#include <sstream>

#include "nxfv/platform/linux/linux_platform.h"
#include "platform_linux/file_ops_fixture.h"

namespace nxfv::cli {
namespace {

using nxfv::testing::Exists;
using nxfv::testing::ReadAll;
using nxfv::testing::ScopedEnv;
using nxfv::testing::TempDir;

struct Cli {
  LinuxPlatform platform;
  std::ostringstream out, err;
  std::istringstream answers;
  Terminal terminal;
  int Run(const std::string& command, const std::vector<std::string>& args, const std::string& typed = "",
          bool tty = false) {
    err.str("");
    answers.clear();
    answers.str(typed);
    terminal = {tty, tty, &answers};
    return RunFileCommand(command, args, platform, out, err, terminal);
  }
};

TEST(FileCommands, UsageErrors) {
  struct Case {
    const char* command;
    std::vector<std::string> args;
    const char* message;
  } cases[] = {
      {"copy", {"/tmp"}, "nxfv copy: needs SRC and DEST"},
      {"move", {}, "nxfv move: missing SRC... DEST"},
      {"rename", {"/tmp/a", "b/c"}, "without '/'"},
      {"rename", {"/tmp/a"}, "needs PATH and NEWNAME"},
      {"delete", {"--bogus", "/tmp/x"}, "unknown option --bogus"},
      {"copy", {"--trash", "/a", "/b"}, "unknown option --trash"},
  };
  for (const Case& c : cases) {
    Cli cli;
    EXPECT_EQ(cli.Run(c.command, c.args), 2) << c.message;
    EXPECT_NE(cli.err.str().find(c.message), std::string::npos) << cli.err.str();
  }
}

TEST(FileCommands, CollisionsAskOnATerminalAndOtherwiseKeepTheTarget) {
  TempDir dir;
  ASSERT_TRUE(dir.ok());
  dir.WriteFile("a.txt", "new");
  dir.WriteFile("b.txt", "b");
  dir.MakeDir("dest");
  dir.WriteFile("dest/a.txt", "old");
  Cli cli;
  // Several sources into one folder; not a terminal: "replace?" is no.
  EXPECT_EQ(cli.Run("copy", {dir / "a.txt", dir / "b.txt", dir / "dest"}), 1);
  EXPECT_NE(cli.err.str().find("replace it? [y/N] no"), std::string::npos) << cli.err.str();
  EXPECT_EQ(ReadAll(dir / "dest/a.txt"), "old");
  EXPECT_EQ(ReadAll(dir / "dest/b.txt"), "b");
  EXPECT_EQ(cli.Run("copy", {"--rename-on-collision", dir / "a.txt", dir / "dest"}), 0);
  EXPECT_EQ(ReadAll(dir / "dest/a (2).txt"), "new");
  EXPECT_EQ(cli.Run("move", {dir / "a.txt", dir / "dest"}, "n\n", true), 1);
  EXPECT_EQ(ReadAll(dir / "dest/a.txt"), "old");
  EXPECT_EQ(cli.Run("move", {dir / "a.txt", dir / "dest"}, "y\n", true), 0);
  EXPECT_EQ(ReadAll(dir / "dest/a.txt"), "new");
  EXPECT_FALSE(Exists(dir / "a.txt"));
}

TEST(FileCommands, ProgressLineOnlyOnATerminalAndNotWhenSilent) {
  TempDir dir;
  ASSERT_TRUE(dir.ok());
  dir.WriteFile("f", "data");
  Cli cli;
  EXPECT_EQ(cli.Run("copy", {dir / "f", dir / "g"}, "", true), 0);
  EXPECT_NE(cli.err.str().find("\r4 B of 4 B, 1 of 1 files  "), std::string::npos) << cli.err.str();
  EXPECT_EQ(cli.err.str().back(), '\n');
  EXPECT_EQ(cli.Run("copy", {"--silent", dir / "f", dir / "h"}, "", true), 0);
  EXPECT_EQ(cli.err.str(), "");
}

TEST(FileCommands, DeleteRenameAndTrash) {
  TempDir dir;
  ASSERT_TRUE(dir.ok());
  dir.MakeDir("data");
  dir.WriteFile("-odd name", "x");
  ScopedEnv dataHome("XDG_DATA_HOME", (dir / "data").c_str());
  Cli cli;
  EXPECT_EQ(cli.Run("rename", {"--", dir / "-odd name", "caf\xe9"}), 0) << cli.err.str();
  EXPECT_EQ(ReadAll(dir / "caf\xe9"), "x");
  EXPECT_EQ(cli.Run("delete", {dir / "caf\xe9"}), 1);  // not asked on a terminal: nothing deleted
  EXPECT_TRUE(Exists(dir / "caf\xe9"));
  EXPECT_EQ(cli.Run("delete", {"--trash", "--no-confirm", dir / "caf\xe9"}), 0);
  EXPECT_EQ(ReadAll(dir / "data/Trash/files/caf\xe9"), "x");
  EXPECT_EQ(cli.Run("delete", {"--no-confirm", dir / "data", dir / "missing"}), 1);
  EXPECT_FALSE(Exists(dir / "data"));
  EXPECT_NE(cli.err.str().find("nxfv: " + dir / "missing" + ": No such file or directory\n"), std::string::npos);
}

}  // namespace
}  // namespace nxfv::cli
