#include "nxfv/shell/path_text.h"

#include <gtest/gtest.h>

#include "nxfv/platform/error_state.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

using namespace std::string_literals;

// AddBackslash always appends "\", AddSeparator the platform's separator;
// only the last character decides, and NUL is an ordinary character.
TEST(AddSeparatorTest, AppendsOnlyWhenTheLastCharacterIsNotTheSeparator) {
  SimulatedPlatform sim;
  LinuxPlatform linux;
  struct Case { const Platform* platform; /* null: AddBackslash */ std::string in, out; } cases[] = {
      {nullptr, "", "\\"},          {nullptr, "C:\\", "C:\\"},      {nullptr, "docs/", "docs/\\"},
      {nullptr, "a\0"s, "a\0\\"s},  {&sim, "C:\\x", "C:\\x\\"},     {&sim, "docs/", "docs/\\"},
      {&linux, "", "/"},            {&linux, "/home/x/", "/home/x/"}, {&linux, "a\\", "a\\/"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.platform ? AddSeparator(*c.platform, c.in) : AddBackslash(c.in), c.out) << "input: " << c.in;
  }
}

TEST(StripNullTest, CutsAtFirstNulAndTrimsOnlyWithoutOne) {
  struct Case { std::string in, out; } cases[] = {
      {"\0abc"s, ""},           {"ab\0cd\0"s, "ab"}, {"   ", ""}, {"  x y  ", "x y"},
      {"  ab \0  "s, "  ab "},  // a NUL present: no trimming
      {"\tx\t", "\tx\t"},       // only blanks are trimmed
  };
  for (const Case& c : cases) EXPECT_EQ(StripNull(c.in), c.out) << "input size " << c.in.size() << ": " << c.in;
}

TEST(SplitArchivePathTest, ForwardSlashFirstThenBackslash) {
  struct Case { std::string in, folder, name; } cases[] = {
      {"a\\b/c.txt", "a\\b/", "c.txt"}, {"a/b\\c.txt", "a/", "b\\c.txt"},  // a later backslash does not win
      {"a\\b\\c.txt", "a\\b\\", "c.txt"}, {"name.txt", "", "name.txt"},  {"dir/", "dir/", ""},
      {"Ärger/Öl.txt", "Ärger/", "Öl.txt"},
  };
  for (const Case& c : cases) {
    const ArchivePathParts p = SplitArchivePath(c.in);
    EXPECT_EQ(p.folder + "|" + p.name, c.folder + "|" + c.name) << "input: " << c.in;
  }
}

TEST(SplitArchivePathTest, SeparatorPastCharacter32767Overflows) {
  ClearError();
  EXPECT_EQ(SplitArchivePath(std::string(32766, 'a') + "/x").name, "x");  // position 32767 still fits
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
  EXPECT_EQ(SplitArchivePath("d/" + std::string(40000, 'n')).folder, "d/");
  ClearError();
}

TEST(SplitExtensionTest, SplitsAtTheLastDotAnywhere) {
  struct Case { std::string in, base, ext; } cases[] = {
      {"a.tar.gz", "a.tar", "gz"}, {"noext", "noext", ""}, {".bashrc", "", "bashrc"}, {"trailing.", "trailing", ""},
      {"C:\\my.dir\\readme", "C:\\my", "dir\\readme"},  // a dot in a folder name counts
  };
  for (const Case& c : cases) {
    const ExtensionParts p = SplitExtension(c.in);
    EXPECT_EQ(p.base + "|" + p.extension, c.base + "|" + c.ext) << "input: " << c.in;
  }
}

// The folder stays in the argument; the extension starts at the FIRST dot
// of the file name, unlike SplitExtension.
TEST(SplitFullPathTest, FolderInPlaceAndExtensionFromTheFirstDot) {
  struct Case { std::string in, folder, file, base, ext; } cases[] = {
      {"C:\\x\\y.tar.gz", "C:\\x\\", "y.tar.gz", "y", ".tar.gz"},
      {"a/b\\c/d.e", "a/b\\c/", "d.e", "d", ".e"},
      {"/home/u/.bashrc", "/home/u/", ".bashrc", "", ".bashrc"},
      {"readme", "", "readme", "", ""},  // no dot: base stays empty
      {"C:\\my.dir\\file", "C:\\my.dir\\", "file", "", ""},
      {"dir\\", "dir\\", "", "", ""},
  };
  for (const Case& c : cases) {
    std::string path = c.in;
    const FullPathParts p = SplitFullPath(path);
    EXPECT_EQ(path + "|" + p.fileName + "|" + p.baseName + "|" + p.extension,
              c.folder + "|" + c.file + "|" + c.base + "|" + c.ext)
        << "input: " << c.in;
  }
}

}  // namespace
}  // namespace nxfv
