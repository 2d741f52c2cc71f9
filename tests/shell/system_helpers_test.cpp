// FolderSize, LoadResString and SpecialFolderPath.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/linux/linux_platform.h"
#include "platform/sim/simulated_platform.h"
#include "shell/shell_helpers.h"

namespace nxfv {
namespace {

using namespace std::string_literals;

TEST(FolderSizeTest, SumsFilesRecursivelySkippingDotNamesAndLinks) {
  SimulatedPlatform p;
  SimFileSystem& fs = p.SimFiles();
  fs.AddFile("C:\\d\\a.txt", 100);
  fs.AddFile("C:\\d\\big.bin", (5ULL << 32) + 7);  // sizes above 4 GiB add up exactly
  fs.AddFile("C:\\d\\sub\\b.txt", 20);
  fs.AddFile("C:\\d\\sub\\deep\\c.txt", 3);
  fs.AddFile("C:\\d\\.env", 1000);                // dot names are skipped, files too
  fs.AddFile("C:\\d\\.git\\objects", 1000);       // and folders
  fs.AddFolder("C:\\d\\link", kAttrDirectory | kAttrReparsePoint);
  fs.AddFile("C:\\d\\link\\through.txt", 1000);   // never followed
  fs.AddFile("C:\\d\\locked\\x.txt", 1000);
  fs.SetEnumerable("C:\\d\\locked", false);      // adds 0
  const uint64_t expected = 100 + (5ULL << 32) + 7 + 20 + 3;
  EXPECT_EQ(FolderSize(p, "C:\\d"), expected);
  EXPECT_EQ(FolderSize(p, "C:\\d\\"), expected);
  EXPECT_EQ(FolderSize(p, "C:\\d\\sub"), 23u);
  EXPECT_EQ(FolderSize(p, "C:\\missing"), 0u);
  EXPECT_EQ(FolderSize(p, "C:\\d\\locked"), 0u);
}

// The real platform: a symbolic link to a folder is reported with the
// reparse bit and must not be entered.
TEST(FolderSizeTest, LinuxDoesNotFollowSymbolicLinks) {
  namespace fsys = std::filesystem;
  std::string dir = (fsys::temp_directory_path() / "nxfv-shell-XXXXXX").string();
  ASSERT_NE(mkdtemp(dir.data()), nullptr);
  const auto write = [](const fsys::path& f, size_t n) { std::ofstream(f) << std::string(n, 'x'); };
  fsys::create_directories(fsys::path(dir) / "sub" / "deep");
  write(fsys::path(dir) / "a.txt", 10);
  write(fsys::path(dir) / "sub" / "b.txt", 5);
  write(fsys::path(dir) / "sub" / "deep" / "c.txt", 2);
  write(fsys::path(dir) / ".hidden", 1000);
  fsys::create_directory_symlink(fsys::path(dir) / "sub", fsys::path(dir) / "again");
  LinuxPlatform p;
  bool enumerable = p.Files().Enumerate(dir, [](const FindData&) { return false; });
  const uint64_t size = FolderSize(p, dir);
  fsys::remove_all(dir);
  if (!enumerable) GTEST_SKIP() << "the Linux enumeration is not available in this build";
  EXPECT_EQ(size, 17u);
}

TEST(LoadResStringTest, CaptionsMissingStringsAndTheBufferLimit) {
  SimulatedPlatform p;
  EXPECT_EQ(LoadResString(p, "Shell32.Dll", 8976), "Name");
  EXPECT_EQ(LoadResString(p, "shell32.dll", 8980), "Modified");
  EXPECT_EQ(LoadResString(p, "Intl.Cpl", 25), "Time");
  EXPECT_EQ(LoadResString(p, "Shell32.Dll", 1), "");
  EXPECT_EQ(LoadResString(p, "NoSuch.Dll", 8976), "");
  // The platform's buffer holds 259 characters and its terminator.
  p.SimStrings().SetString("Long.Dll", 1, std::string(300, 'x'));
  EXPECT_EQ(LoadResString(p, "Long.Dll", 1), std::string(259, 'x'));
  std::string wide;
  for (int i = 0; i < 300; ++i) wide += "ü";
  p.SimStrings().SetString("Long.Dll", 2, wide);
  EXPECT_EQ(LoadResString(p, "Long.Dll", 2), wide.substr(0, 259 * 2));
  p.SimStrings().SetString("Long.Dll", 3, std::string(259, 'y'));
  EXPECT_EQ(LoadResString(p, "Long.Dll", 3).size(), 259u);
}

TEST(SpecialFolderPathTest, PathsThroughStripNull) {
  SimulatedPlatform p;
  EXPECT_EQ(SpecialFolderPath(p, CSIDL_PERSONAL), "C:\\Users\\User\\Documents");
  EXPECT_EQ(SpecialFolderPath(p, CSIDL_DRIVES), "");  // no file-system path
  EXPECT_EQ(SpecialFolderPath(p, 9999), "");
  p.SimStrings().SetSpecialFolder(CSIDL_FAVORITES, "C:\\Fav\0junk"s);
  EXPECT_EQ(SpecialFolderPath(p, CSIDL_FAVORITES), "C:\\Fav");
  p.SimStrings().SetSpecialFolder(CSIDL_FONTS, "  C:\\Fonts  ");
  EXPECT_EQ(SpecialFolderPath(p, CSIDL_FONTS), "C:\\Fonts");
}

}  // namespace
}  // namespace nxfv
