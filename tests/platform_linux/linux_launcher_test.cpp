#include "nxfv/platform/linux/linux_launcher.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <cerrno>
#include <fstream>
#include <sstream>

#include "platform_linux/temp_dir.h"

namespace nxfv {
namespace {

using testing::TempDir;

// A stand-in handler: appends each argument it receives, NUL-terminated,
// to the file "args" beside it.
class RecordingHandler {
 public:
  RecordingHandler() {
    script_ = dir_ / "handler.sh";
    EXPECT_TRUE(dir_.WriteFile("handler.sh",
                               "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\0' \"$a\"; done >> '" + (dir_ / "args") + "'\n",
                               0755));
  }
  const std::string& script() const { return script_; }
  const TempDir& dir() const { return dir_; }
  std::vector<std::string> Arguments() const {
    std::ifstream in(dir_ / "args", std::ios::binary);
    std::vector<std::string> args;
    for (std::string a; std::getline(in, a, '\0');) args.push_back(a);
    return args;
  }

 private:
  TempDir dir_;
  std::string script_;
};

TEST(LinuxLauncherTest, EachPathReachesTheHandlerAsOneArgument) {
  unsetenv("VISUAL");  // edit falls back to the open program
  unsetenv("EDITOR");
  RecordingHandler handler;
  LinuxLauncher launcher(handler.script());
  const std::string d = handler.dir().path();
  struct Case {
    std::string path;
    std::string verb;
    std::string received;
  } cases[] = {
      {d + "/a b.txt", "open", d + "/a b.txt"},
      {d + "/it's \"q\" $HOME `x`;|", "EDIT", d + "/it's \"q\" $HOME `x`;|"},
      {"-rf", "", "./-rf"},
      {d + "/caf\\xE9", "open", d + "/caf\xE9"},  // the library's escaped text becomes raw bytes
      {handler.script(), "explore", d},           // a file: the folder holding it
      {d, "explore", d},
  };
  for (const Case& c : cases) EXPECT_TRUE(launcher.Launch(c.path, c.verb)) << c.path;
  ASSERT_TRUE(launcher.WaitForPrograms(5000));
  // Handlers may finish in any order; each wrote one argument.
  std::vector<std::string> received = handler.Arguments();
  std::vector<std::string> expected;
  for (const Case& c : cases) expected.push_back(c.received);
  std::sort(received.begin(), received.end());
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(received, expected);
  // Every child has been reaped: none is left, not even a zombie.
  EXPECT_EQ(launcher.RunningPrograms(), 0u);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST(LinuxLauncherTest, FailsForUnknownOrUnhandledVerbsAndProgramsThatCannotStart) {
  RecordingHandler handler;
  LinuxLauncher launcher(handler.script());
  EXPECT_FALSE(launcher.Launch("/x", "openwith"));
  EXPECT_FALSE(launcher.Launch("/x", "open "));  // verbs are matched whole, in any case
  EXPECT_FALSE(launcher.Launch("", "open"));
  EXPECT_FALSE(launcher.Launch("/x", "print"));  // no handler until the host sets one
  launcher.SetVerbCommand(LaunchVerb::Print, {handler.script(), "--print"});
  EXPECT_TRUE(launcher.Launch("/x", "print"));
  launcher.SetVerbCommand(LaunchVerb::Edit, {});
  EXPECT_FALSE(launcher.Launch("/x", "edit"));
  ASSERT_TRUE(handler.dir().WriteFile("not-executable", "#!/bin/sh\n", 0644));
  EXPECT_FALSE(LinuxLauncher(handler.dir() / "not-executable").Launch("/x"));
  EXPECT_FALSE(LinuxLauncher(handler.dir() / "missing").Launch("/x"));
  EXPECT_FALSE(LinuxLauncher("nxfv-no-such-program-anywhere").Launch("/x"));
  ASSERT_TRUE(launcher.WaitForPrograms(5000));
  EXPECT_EQ(handler.Arguments(), (std::vector<std::string>{"--print", "/x"}));
}

TEST(LinuxLauncherTest, EditRunsTheUsersEditorAndHostHandlersComeFirst) {
  RecordingHandler handler;
  setenv("VISUAL", (handler.script() + "  --wait").c_str(), 1);
  LinuxLauncher launcher("nxfv-no-such-program-anywhere");
  unsetenv("VISUAL");
  EXPECT_TRUE(launcher.Launch("/x", "edit"));
  std::string asked;
  launcher.SetVerbHandler(LaunchVerb::Properties, [&](const std::string& path) { asked = path; return true; });
  launcher.SetVerbHandler(LaunchVerb::Find, [](const std::string&) -> bool { throw 1; });
  EXPECT_TRUE(launcher.Launch("/y", "properties"));
  EXPECT_FALSE(launcher.Launch("/y", "find"));
  EXPECT_EQ(asked, "/y");
  ASSERT_TRUE(launcher.WaitForPrograms(5000));
  EXPECT_EQ(handler.Arguments(), (std::vector<std::string>{"--wait", "/x"}));
}

}  // namespace
}  // namespace nxfv
