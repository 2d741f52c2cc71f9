// FolderSize and LoadResString.
#include <gtest/gtest.h>

#include "nxfv/platform/sim/simulated_platform.h"
#include "nxfv/shell/shell_helpers.h"

namespace nxfv {
namespace {

TEST(FolderSizeTest, SumsFilesRecursivelySkippingDotNamesAndLinks) {
  SimulatedPlatform p;
  SimFileSystem& fs = p.SimFiles();
  fs.AddFile("C:\\d\\a.txt", 100);
  fs.AddFile("C:\\d\\big.bin", (5ULL << 32) + 7);  // sizes above 4 GiB add up exactly
  fs.AddFile("C:\\d\\sub\\deep\\c.txt", 23);
  fs.AddFile("C:\\d\\.env", 1000);                // dot names are skipped, files too
  fs.AddFile("C:\\d\\.git\\objects", 1000);       // and folders
  fs.AddFolder("C:\\d\\link", kAttrDirectory | kAttrReparsePoint);
  fs.AddFile("C:\\d\\link\\through.txt", 1000);   // never followed
  fs.AddFile("C:\\d\\locked\\x.txt", 1000);
  fs.SetEnumerable("C:\\d\\locked", false);      // adds 0
  const uint64_t expected = 100 + (5ULL << 32) + 7 + 23;
  EXPECT_EQ(FolderSize(p, "C:\\d"), expected);
  EXPECT_EQ(FolderSize(p, "C:\\d\\"), expected);
  EXPECT_EQ(FolderSize(p, "C:\\missing"), 0u);
}

TEST(LoadResStringTest, CaptionsMissingStringsAndTheBufferLimit) {
  SimulatedPlatform p;
  EXPECT_EQ(LoadResString(p, "shell32.dll", 8980), "Modified");  // library names ignore case
  EXPECT_EQ(LoadResString(p, "Shell32.Dll", 1), "");
  EXPECT_EQ(LoadResString(p, "NoSuch.Dll", 8976), "");
  // The platform's buffer holds 259 characters (not bytes) and its terminator.
  std::string wide;
  for (int i = 0; i < 300; ++i) wide += "ü";
  p.SimStrings().SetString("Long.Dll", 1, std::string(300, 'x'));
  p.SimStrings().SetString("Long.Dll", 2, wide);
  EXPECT_EQ(LoadResString(p, "Long.Dll", 1), std::string(259, 'x'));
  EXPECT_EQ(LoadResString(p, "Long.Dll", 2), wide.substr(0, 259 * 2));
}

}  // namespace
}  // namespace nxfv
