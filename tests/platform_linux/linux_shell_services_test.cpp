// Icons, the message box and the platform's drive list and start folder.
#include "nxfv/platform/linux/linux_shell_services.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "nxfv/platform/linux/icon_table.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "nxfv/platform/linux/mime_database.h"
#include "temp_dir.h"

namespace nxfv {
namespace {

using nxfv::testing::TempDir;

class LinuxIconsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir.ok());
    ASSERT_TRUE(dir.MakeDir("sub"));
    ASSERT_TRUE(dir.WriteFile("notes.txt"));
    ASSERT_TRUE(dir.WriteFile("tool", "", 0755));
    ASSERT_TRUE(dir.WriteFile("data", "", 0644));
    ASSERT_TRUE(dir.WriteFile("run.sh", "", 0755));
    ASSERT_EQ(symlink("sub", (dir / "link-to-sub").c_str()), 0);
  }
  std::string IconName(const std::string& path, uint32_t attributes, uint32_t flags) {
    const int32_t index = icons.SysIconIndex(path, attributes, flags);
    return index == 0 ? "(none)" : table.NameOf(index);
  }
  TempDir dir;
  IconTable table;
  LinuxIcons icons{nullptr, &table};
};

TEST_F(LinuxIconsTest, IconNamesByAttributesOrByTheFileItself) {
  constexpr uint32_t kByPath = kShgfiSysIconIndex | kShgfiSmallIcon;
  constexpr uint32_t kByAttributes = kByPath | kShgfiUseFileAttributes;
  struct Case { std::string path; uint32_t attributes, flags; const char* icon; } cases[] = {
      {"/nowhere/X.TXT", kAttrNormal, kByAttributes, "text-x-generic"},
      {"/nowhere/pic.png", kAttrNormal, kByAttributes, "image-x-generic"},
      {"/nowhere/noext", kAttrNormal, kByAttributes, "application-x-generic"},
      {"/nowhere/dir.d", kAttrDirectory, kByAttributes, "folder"},
      {dir / "sub", kAttrNormal, kByPath, "folder"},         // the disk decides, not the attributes
      {dir / "link-to-sub", 0, kByPath, "folder"},
      {dir / "notes.txt", kAttrDirectory, kByPath, "text-x-generic"},
      {dir / "tool", 0, kByPath, "application-x-executable"},
      {dir / "data", 0, kByPath, "application-x-generic"},
      {dir / "run.sh", 0, kByPath, "text-x-script"},          // a known type keeps its icon
      {dir / "missing.txt", kAttrNormal, kByPath, "(none)"},
  };
  for (const Case& c : cases) EXPECT_EQ(IconName(c.path, c.attributes, c.flags), c.icon) << c.path;
  // One stable index per icon name; the folder is always the first icon.
  EXPECT_EQ(icons.SysIconIndex("a.txt", kAttrNormal, kByAttributes), icons.SysIconIndex("b.log", 0, kByAttributes));
  EXPECT_EQ(icons.SysIconIndex("d", kAttrDirectory, kByAttributes), 1);
}

TEST(LinuxMessageBox, AnswersWithTheButtonThatGoesOnLeastOrTheHandlers) {
  struct Case { int32_t style, answer; } cases[] = {
      {kMbOkOnly | kMbInformation, kAnswerOk}, {kMbYesNoCancel, kAnswerCancel},
      {kMbYesNo, kAnswerNo},                   {kMbAbortRetryIgnore, kAnswerAbort},
  };
  for (const Case& c : cases) EXPECT_EQ(LinuxMessageBox::UnattendedAnswer(c.style), c.answer) << c.style;
  // Unattended boxes go to standard error, one line each, after the host's
  // prefix if it set one, unless a handler takes over.
  LinuxMessageBox box;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(box.Show("Error: 5.\r\nbad\n", kMbRetryCancel | kMbCritical, "Add item 457"), kAnswerCancel);
  box.SetPrefix("host");
  box.Show("x", kMbOkOnly, "T");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "[Add item 457] Error: 5.\\nbad\\n\nhost: [T] x\n");

  // Identical boxes in a row print once, then one line for the rest.
  ::testing::internal::CaptureStderr();
  for (int i = 0; i < 4; ++i) box.Show("same", kMbOkOnly, "T");
  box.Show("same", kMbOkCancel, "T");  // another style is another box
  box.FlushRepeats();
  box.FlushRepeats();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "host: [T] same\n(repeated 3 times)\nhost: [T] same\n");

  std::string seen;
  box.SetHandler([&](const std::string& text, int32_t style, const std::string& title) {
    seen = title + "|" + text + "|" + std::to_string(style);
    return kAnswerRetry;
  });
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(box.Show("t", kMbRetryCancel, "T"), kAnswerRetry);
  EXPECT_EQ(box.Show("t", kMbRetryCancel, "T"), kAnswerRetry);  // a handler hears every box, with the count
  EXPECT_EQ(box.RepeatCount(), 1u);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(seen, "T|t|5");
}

TEST(LinuxPlatform, DrivesAndStartFolder) {
  LinuxPlatform platform;
  const std::vector<std::string> drives = platform.Drives();
  EXPECT_NE(std::find(drives.begin(), drives.end(), "/"), drives.end());

  testing::ScopedEnv home("HOME", "/home/someone");
  EXPECT_EQ(platform.DefaultStartFolder(), "/home/someone");
  home.Set("/home/caf\xE9");
  EXPECT_EQ(platform.DefaultStartFolder(), "/home/caf\\xE9");
  home.Set(nullptr);
  EXPECT_FALSE(platform.DefaultStartFolder().empty()) << "from the password database";
}

}  // namespace
}  // namespace nxfv
