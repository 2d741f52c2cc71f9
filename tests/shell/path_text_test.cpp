#include "shell/path_text.h"

#include <gtest/gtest.h>

#include "platform/error_state.h"
#include "platform/linux/linux_platform.h"
#include "platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

using namespace std::string_literals;

TEST(AddBackslashTest, AppendsOnlyWhenLastCharacterIsNotOne) {
  struct Case {
    std::string in, out;
  } cases[] = {
      {"", "\\"},
      {"C:\\", "C:\\"},
      {"C:\\x", "C:\\x\\"},
      {"docs/", "docs/\\"},          // a forward slash is not a backslash
      {"a\\\\", "a\\\\"},            // only the last character counts
      {"a\0"s, "a\0\\"s},            // NUL is an ordinary character here
  };
  for (const Case& c : cases) EXPECT_EQ(AddBackslash(c.in), c.out) << "input: " << c.in;
}

TEST(AddBackslashTest, AddSeparatorUsesThePlatformsSeparator) {
  SimulatedPlatform sim;
  LinuxPlatform linux;
  EXPECT_EQ(AddSeparator(sim, "C:\\x"), "C:\\x\\");
  EXPECT_EQ(AddSeparator(sim, "docs/"), "docs/\\");
  EXPECT_EQ(AddSeparator(linux, ""), "/");
  EXPECT_EQ(AddSeparator(linux, "/home/x"), "/home/x/");
  EXPECT_EQ(AddSeparator(linux, "/home/x/"), "/home/x/");
  EXPECT_EQ(AddSeparator(linux, "a\\"), "a\\/");
}

TEST(StripNullTest, CutsAtFirstNulAndTrimsOnlyWithoutOne) {
  struct Case {
    std::string in, out;
  } cases[] = {
      {"", ""},
      {"\0abc"s, ""},
      {"ab\0cd\0"s, "ab"},
      {"  ab \0  "s, "  ab "},  // a NUL present: no trimming
      {"   ", ""},
      {"  x y  ", "x y"},
      {"\tx\t", "\tx\t"},  // only blanks are trimmed
  };
  for (const Case& c : cases) EXPECT_EQ(StripNull(c.in), c.out) << "input size " << c.in.size() << ": " << c.in;
}

TEST(SplitArchivePathTest, ForwardSlashFirstThenBackslash) {
  struct Case {
    std::string in, folder, name;
  } cases[] = {
      {"a\\b/c.txt", "a\\b/", "c.txt"},
      {"a/b\\c.txt", "a/", "b\\c.txt"},  // a later backslash does not win
      {"a\\b\\c.txt", "a\\b\\", "c.txt"},
      {"name.txt", "", "name.txt"},
      {"dir/", "dir/", ""},
      {"/x", "/", "x"},
      {"", "", ""},
      {"Ärger/Öl.txt", "Ärger/", "Öl.txt"},
  };
  for (const Case& c : cases) {
    const ArchivePathParts p = SplitArchivePath(c.in);
    EXPECT_EQ(p.folder, c.folder) << "input: " << c.in;
    EXPECT_EQ(p.name, c.name) << "input: " << c.in;
  }
}

TEST(SplitArchivePathTest, SeparatorPastPosition32767Overflows) {
  ClearError();
  // Position 32767 (1-based) still fits in 16 bits.
  EXPECT_EQ(SplitArchivePath(std::string(32766, 'a') + "/x").name, "x");
  try {
    SplitArchivePath(std::string(32767, 'a') + "/x");
    ADD_FAILURE() << "no overflow at position 32768";
  } catch (const VbError& e) {
    EXPECT_EQ(e.number(), kErrOverflow);
    EXPECT_EQ(CurrentError().number, kErrOverflow);
  }
  // Positions count characters, not bytes: 20000 two-byte letters put the
  // slash at byte 40001 but at character 20001.
  std::string wide;
  for (int i = 0; i < 20000; ++i) wide += "é";
  EXPECT_EQ(SplitArchivePath(wide + "/x").name, "x");
  // A long name is fine as long as the separator is early.
  EXPECT_EQ(SplitArchivePath("d/" + std::string(40000, 'n')).folder, "d/");
  ClearError();
}

TEST(SplitExtensionTest, SplitsAtTheLastDotAnywhere) {
  struct Case {
    std::string in, base, ext;
  } cases[] = {
      {"readme.txt", "readme", "txt"},
      {"a.tar.gz", "a.tar", "gz"},
      {"C:\\my.dir\\readme", "C:\\my", "dir\\readme"},  // a dot in a folder name counts
      {"noext", "noext", ""},
      {".bashrc", "", "bashrc"},
      {"trailing.", "trailing", ""},
      {"", "", ""},
  };
  for (const Case& c : cases) {
    const ExtensionParts p = SplitExtension(c.in);
    EXPECT_EQ(p.base, c.base) << "input: " << c.in;
    EXPECT_EQ(p.extension, c.ext) << "input: " << c.in;
  }
}

TEST(SplitFullPathTest, FolderInPlaceAndExtensionFromTheFirstDot) {
  struct Case {
    std::string in, folder, file, base, ext;
  } cases[] = {
      {"C:\\x\\y.tar.gz", "C:\\x\\", "y.tar.gz", "y", ".tar.gz"},
      {"C:\\x/y\\z.txt", "C:\\x/y\\", "z.txt", "z", ".txt"},
      {"a/b\\c/d.e", "a/b\\c/", "d.e", "d", ".e"},
      {"/home/u/.bashrc", "/home/u/", ".bashrc", "", ".bashrc"},
      {"readme", "", "readme", "", ""},  // no dot: base stays empty
      {"dir\\", "dir\\", "", "", ""},
      {"C:\\my.dir\\file", "C:\\my.dir\\", "file", "", ""},
      {"", "", "", "", ""},
  };
  for (const Case& c : cases) {
    std::string path = c.in;
    const FullPathParts p = SplitFullPath(path);
    EXPECT_EQ(path, c.folder) << "input: " << c.in;
    EXPECT_EQ(p.fileName, c.file) << "input: " << c.in;
    EXPECT_EQ(p.baseName, c.base) << "input: " << c.in;
    EXPECT_EQ(p.extension, c.ext) << "input: " << c.in;
  }
}

}  // namespace
}  // namespace nxfv
