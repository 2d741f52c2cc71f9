// LinuxFileSystem on real temporary folders.
#include "nxfv/platform/linux/linux_file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>

#include "nxfv/platform/linux/file_name_escape.h"
#include "temp_dir.h"

namespace nxfv {
namespace {

using nxfv::testing::TempDir;

std::map<std::string, FindData> ListAll(LinuxFileSystem& fs, const std::string& folder) {
  std::map<std::string, FindData> entries;
  const bool ok = fs.Enumerate(folder, [&](const FindData& d) {
    EXPECT_TRUE(entries.emplace(d.name, d).second) << "reported twice: " << d.name;
    return true;
  });
  EXPECT_TRUE(ok) << folder;
  return entries;
}

uint64_t SizeOf(const FindData& d) { return (uint64_t{d.sizeHigh} << 32) | d.sizeLow; }

class LinuxFileSystemTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(dir.ok()); }
  TempDir dir;
  LinuxFileSystem fs;
};

TEST_F(LinuxFileSystemTest, EnumerateMapsEveryKindOfEntry) {
  ASSERT_TRUE(dir.WriteFile("plain.txt", "hello") && dir.WriteFile("locked.txt", "x", 0444) &&
              dir.WriteFile("secret.txt") && dir.WriteFile(".hidden", "secret.txt\nsecret-dir\nnot-there\n"));
  ASSERT_TRUE(dir.MakeDir("folder") && dir.MakeDir("secret-dir") && dir.MakeDir("locked-dir", 0555));
  for (const auto& [target, link] : {std::pair<const char*, const char*>{"plain.txt", "link-file"},
                                     {"folder", "link-dir"}, {"nowhere", "link-dangling"},
                                     {"loop-b", "loop-a"}, {"loop-a", "loop-b"}}) {
    ASSERT_EQ(symlink(target, (dir / link).c_str()), 0) << link;
  }
  ASSERT_EQ(mkfifo((dir / "fifo").c_str(), 0644), 0);

  const auto entries = ListAll(fs, dir.path());
  struct Case { const char* name; uint32_t attributes; } cases[] = {
      {"plain.txt", kAttrNormal},      {"locked.txt", kAttrReadOnly},
      {"secret.txt", kAttrHidden},     {".hidden", kAttrNormal},
      {"folder", kAttrDirectory},      {"secret-dir", kAttrDirectory | kAttrHidden},
      {"locked-dir", kAttrDirectory | kAttrReadOnly},
      {"link-file", kAttrReparsePoint}, {"link-dir", kAttrReparsePoint | kAttrDirectory},
      {"link-dangling", kAttrReparsePoint}, {"loop-a", kAttrReparsePoint}, {"loop-b", kAttrReparsePoint},
      {"fifo", kAttrSystem},
  };
  EXPECT_EQ(entries.size(), std::size(cases)) << "\".\" and \"..\" are not reported";
  // The refresh's cheap enumeration is sure of the bits that decide what shows.
  constexpr uint32_t kSure = kAttrDirectory | kAttrHidden | kAttrSystem | kAttrReparsePoint;
  std::map<std::string, uint32_t> light;
  EXPECT_TRUE(
      fs.EnumerateNames(dir.path(), [&](const FindData& d) { return light.emplace(d.name, d.attributes).second; }));
  EXPECT_EQ(light.size(), std::size(cases));
  // Looked up by name, an entry's record is the one the enumeration gives;
  // what is not there, or is a path rather than a name, is skipped.
  std::vector<std::string> names = {"not-there", "folder/../plain.txt", ".."};
  for (const auto& [name, data] : entries) names.push_back(name);
  std::map<std::string, FindData> found;
  fs.FindEntries(dir.path(), names, [&](const FindData& d) { return found.emplace(d.name, d).second; });
  EXPECT_EQ(found.size(), entries.size());
  for (const Case& c : cases) {
    const auto it = entries.find(c.name);
    ASSERT_NE(it, entries.end()) << c.name;
    EXPECT_EQ(light[c.name] & kSure, c.attributes & kSure) << "EnumerateNames of " << c.name;
    EXPECT_EQ(found[c.name].attributes, c.attributes) << "FindEntries of " << c.name;
    EXPECT_EQ(found[c.name].lastWriteTime, it->second.lastWriteTime) << "FindEntries of " << c.name;
    EXPECT_EQ(it->second.attributes, c.attributes) << c.name;
    EXPECT_EQ(it->second.shortName, "") << c.name;
    uint32_t single = 0;
    EXPECT_TRUE(fs.GetAttributes(dir / c.name, single)) << c.name;
    EXPECT_EQ(single, c.attributes) << "GetAttributes of " << c.name;
  }
  EXPECT_EQ(SizeOf(entries.at("plain.txt")), 5u);
}

TEST_F(LinuxFileSystemTest, EnumerateReportsTheThreeTimes) {
  ASSERT_TRUE(dir.WriteFile("f"));
  const timespec times[2] = {{1600000000, 123456789}, {1500000000, 987654321}};  // access, write
  ASSERT_EQ(utimensat(AT_FDCWD, (dir / "f").c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
  const FindData f = ListAll(fs, dir.path()).at("f");
  constexpr uint64_t k1970 = 116444736000000000ull;
  EXPECT_EQ(f.lastAccessTime, k1970 + 16000000000000000ull + 1234567);
  EXPECT_EQ(f.lastWriteTime, k1970 + 15000000000000000ull + 9876543);
  // Birth time (now, after both) when the file system keeps one, else the write time.
  EXPECT_TRUE(f.creationTime == f.lastWriteTime || f.creationTime > f.lastAccessTime) << f.creationTime;
}

TEST_F(LinuxFileSystemTest, SizesAbove4GiBSplitIntoHighAndLow) {
  const uint64_t size = (uint64_t{5} << 32) + 7;  // sparse: takes no disk space
  ASSERT_TRUE(dir.WriteFile("big.bin"));
  ASSERT_EQ(truncate((dir / "big.bin").c_str(), static_cast<off_t>(size)), 0);
  const FindData big = ListAll(fs, dir.path()).at("big.bin");
  EXPECT_EQ(big.sizeHigh, 5u);
  EXPECT_EQ(big.sizeLow, 7u);
  auto file = fs.OpenForRead(dir / "big.bin");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->Size(), size);
  char byte = 'x';
  EXPECT_EQ(file->ReadAt(size - 1, &byte, 1), 1u);
  EXPECT_EQ(byte, '\0');
}

TEST_F(LinuxFileSystemTest, NamesThatAreNotUtf8AreEscapedAndOpenAgain) {
  const std::string raw = "caf\xE9.txt";
  ASSERT_TRUE(dir.WriteFile(raw, "latin-1"));
  ASSERT_TRUE(dir.WriteFile("a\\xC3", "look-alike"));  // a valid name that looks escaped
  const auto entries = ListAll(fs, dir.path());
  ASSERT_EQ(entries.count("caf\\xE9.txt"), 1u);
  ASSERT_EQ(entries.count("a\\x5CxC3"), 1u);
  for (const auto& [name, content] : {std::pair<std::string, std::string>{"caf\\xE9.txt", "latin-1"},
                                      {"a\\x5CxC3", "look-alike"}}) {
    const std::string path = EscapeFileName(dir.path()) + "/" + name;
    EXPECT_EQ(fs.ReadWholeFile(path).value_or("?"), content) << name;
    uint32_t attributes = 0;
    EXPECT_TRUE(fs.GetAttributes(path, attributes)) << name;
    EXPECT_NE(fs.OpenForRead(path), nullptr) << name;
  }
  // An escaped folder name enumerates too.
  ASSERT_TRUE(dir.MakeDir("d\xFF"));
  ASSERT_TRUE(dir.WriteFile("d\xFF/inner"));
  EXPECT_EQ(ListAll(fs, dir.path() + "/d\\xFF").count("inner"), 1u);
}

TEST_F(LinuxFileSystemTest, EnumerationStopsWhenAskedAndFailsOnWhatIsNoFolder) {
  for (int i = 0; i < 5; ++i) ASSERT_TRUE(dir.WriteFile("f" + std::to_string(i)));
  int seen = 0;
  EXPECT_TRUE(fs.Enumerate(dir.path(), [&](const FindData&) { return ++seen < 3; }));
  EXPECT_EQ(seen, 3);
  ASSERT_TRUE(dir.WriteFile("file"));
  ASSERT_EQ(symlink("missing", (dir / "dangling").c_str()), 0);
  const auto never = [](const FindData&) {
    ADD_FAILURE() << "visited";
    return true;
  };
  for (const std::string& path : {dir / "missing", dir / "file", dir / "dangling", std::string()}) {
    EXPECT_FALSE(fs.Enumerate(path, never)) << path;
  }
  uint32_t attributes = 99;
  EXPECT_FALSE(fs.GetAttributes(dir / "missing", attributes));
  EXPECT_EQ(attributes, 99u);
  EXPECT_TRUE(fs.GetAttributes(dir.path() + "/", attributes)) << "a trailing slash is ignored";
  EXPECT_EQ(attributes, kAttrDirectory);
  EXPECT_TRUE(fs.GetAttributes("/", attributes));
}

TEST_F(LinuxFileSystemTest, UnsearchableFolderStillListsNamesWithoutDetails) {
  ASSERT_TRUE(dir.MakeDir("d"));
  ASSERT_TRUE(dir.WriteFile("d/f"));
  ASSERT_TRUE(dir.MakeDir("d/sub"));
  ASSERT_TRUE(dir.MakeDir("closed"));
  ASSERT_EQ(chmod(dir.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod((dir / "d").c_str(), 0444), 0);  // readable, not searchable
  ASSERT_EQ(chmod((dir / "closed").c_str(), 0000), 0);
  const std::string d = dir / "d", closed = dir / "closed";
  EXPECT_TRUE(testing::AsUnprivilegedUser([&] {
    std::map<std::string, FindData> seen;
    const bool listed = fs.Enumerate(d, [&](const FindData& e) { return seen.emplace(e.name, e).second; });
    return listed && seen.size() == 2 && seen["f"].attributes == kAttrNormal && seen["f"].lastWriteTime == 0 &&
           seen["sub"].attributes == kAttrDirectory &&
           !fs.Enumerate(closed, [](const FindData&) { return true; });
  }));
}

TEST_F(LinuxFileSystemTest, PositionedReadsStopAtTheEndAndVolumeNames) {
  ASSERT_TRUE(dir.WriteFile("data", "0123456789"));
  auto file = fs.OpenForRead(dir / "data");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->Size(), 10u);
  struct Case { uint64_t offset; size_t n; std::string expected; } cases[] = {
      {6, 4, "6789"}, {8, 5, "89"}, {10, 1, ""}, {UINT64_MAX, 1, ""}, {uint64_t{1} << 63, 1, ""},
  };
  for (const Case& c : cases) {
    std::string buffer(c.n, '#');
    const size_t got = file->ReadAt(c.offset, buffer.data(), c.n);
    EXPECT_EQ(buffer.substr(0, got), c.expected) << "offset " << c.offset << " n " << c.n;
  }
  EXPECT_EQ(fs.OpenForRead(dir / "missing"), nullptr);
  EXPECT_EQ(fs.OpenForRead(dir.path()), nullptr) << "a folder is not a file";
  // A FIFO without a writer would block a plain open for ever.
  ASSERT_EQ(mkfifo((dir / "x.zip").c_str(), 0600), 0);
  EXPECT_EQ(fs.OpenForRead(dir / "x.zip"), nullptr);
  EXPECT_EQ(fs.ReadWholeFile(dir / "x.zip"), std::nullopt);
  EXPECT_EQ(fs.OpenForRead("/dev/zero"), nullptr);
  std::string name;
  EXPECT_TRUE(fs.VolumeFileSystemName("/proc", name) && name == "proc") << name;
  EXPECT_FALSE(fs.VolumeFileSystemName(dir / "missing", name));
  EXPECT_EQ(fs.TempPath().back(), '/');
}

TEST_F(LinuxFileSystemTest, WholeFilesWriteReplaceAndReadBack) {
  const std::string path = dir / "whole.txt";
  const std::string binary("a\0b\xFF", 4);
  EXPECT_TRUE(fs.WriteWholeFile(path, "first version, longer"));
  EXPECT_TRUE(fs.WriteWholeFile(path, binary));
  EXPECT_EQ(fs.ReadWholeFile(path), binary);
  EXPECT_FALSE(fs.WriteWholeFile(dir / "no-such-folder/x", "x"));
  EXPECT_FALSE(fs.WriteWholeFile(dir.path(), "x"));
  EXPECT_EQ(fs.ReadWholeFile(dir.path()), std::nullopt);
  // Files whose size the kernel does not know up front read to the end.
  EXPECT_NE(fs.ReadWholeFile("/proc/self/status").value_or(""), "");
}


TEST_F(LinuxFileSystemTest, WhyNotReadableGivesTheSystemsReason) {
  ASSERT_TRUE(dir.WriteFile("file", "x"));
  ASSERT_TRUE(dir.MakeDir("sub"));
  ASSERT_EQ(symlink("loop", (dir / "loop").c_str()), 0);
  const std::string tooLong = dir.path() + "/" + std::string(300, 'n');
  struct Case {
    std::string path;
    bool asFolder;
    const char* reason;
  } cases[] = {
      {dir / "sub", true, ""},
      {dir / "file", false, ""},
      {dir / "sub/", true, ""},
      {dir / "file", true, "not a folder"},
      {dir / "file/inner", false, "not a folder"},
      {dir / "sub", false, "is a folder"},
      {dir / "loop", true, "too many levels of symbolic links"},
      {dir / "loop", false, "too many levels of symbolic links"},
      {tooLong, true, "path too long"},
      {dir / "none", true, "no such file or folder"},
      {dir / "none", false, "no such file or folder"},
      {"/dev/null", false, "not a regular file"},
  };
  for (const Case& c : cases) EXPECT_EQ(fs.WhyNotReadable(c.path, c.asFolder), c.reason) << c.path;

  ASSERT_TRUE(dir.MakeDir("locked", 0));
  ASSERT_TRUE(dir.WriteFile("secret", "x", 0));
  ASSERT_EQ(chmod(dir.path().c_str(), 0755), 0);
  EXPECT_TRUE(testing::AsUnprivilegedUser([&] {
    return fs.WhyNotReadable(dir / "locked", true) == "permission denied" &&
           fs.WhyNotReadable(dir / "secret", false) == "permission denied" &&
           fs.WhyNotReadable(dir / "locked/inner", true) == "permission denied";
  }));
}

}  // namespace
}  // namespace nxfv
