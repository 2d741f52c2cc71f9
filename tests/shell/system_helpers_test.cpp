// FolderSize, LoadResString, SpecialFolderPath and the SHFolders values.
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

TEST(SHFoldersTest, MembersCarryThePlatformsValues) {
  struct Case {
    SHFolders member;
    int32_t value;
  } cases[] = {
      {CSIDL_DESKTOP, 0}, {CSIDL_INTERNET, 1}, {CSIDL_PROGRAMS, 2}, {CSIDL_CONTROLS, 3},
      {CSIDL_PRINTERS, 4}, {CSIDL_PERSONAL, 5}, {CSIDL_FAVORITES, 6}, {CSIDL_STARTUP, 7},
      {CSIDL_RECENT, 8}, {CSIDL_SENDTO, 9}, {CSIDL_BITBUCKET, 10}, {CSIDL_STARTMENU, 11},
      {CSIDL_MYDOCUMENTS, 12}, {CSIDL_MYMUSIC, 13}, {CSIDL_MYVIDEO, 14}, {CSIDL_DESKTOPDIRECTORY, 16},
      {CSIDL_DRIVES, 17}, {CSIDL_NETWORK, 18}, {CSIDL_NETHOOD, 19}, {CSIDL_FONTS, 20},
      {CSIDL_TEMPLATES, 21}, {CSIDL_COMMON_STARTMENU, 22}, {CSIDL_COMMON_PROGRAMS, 23},
      {CSIDL_COMMON_STARTUP, 24}, {CSIDL_COMMON_DESKTOPDIRECTORY, 25}, {CSIDL_APPDATA, 26},
      {CSIDL_PRINTHOOD, 27}, {CSIDL_LOCAL_APPDATA, 28}, {CSIDL_ALTSTARTUP, 29},
      {CSIDL_COMMON_ALTSTARTUP, 30}, {CSIDL_COMMON_FAVORITES, 31}, {CSIDL_INTERNET_CACHE, 32},
      {CSIDL_COOKIES, 33}, {CSIDL_HISTORY, 34}, {CSIDL_COMMON_APPDATA, 35}, {CSIDL_WINDOWS, 36},
      {CSIDL_SYSTEM, 37}, {CSIDL_PROGRAM_FILES, 38}, {CSIDL_MYPICTURES, 39}, {CSIDL_PROFILE, 40},
  };
  for (const Case& c : cases) EXPECT_EQ(static_cast<int32_t>(c.member), c.value);
}

}  // namespace
}  // namespace nxfv
