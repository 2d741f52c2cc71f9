#include "platform/sim/simulated_platform.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

std::vector<std::string> Names(Platform& p, const std::string& folder) {
  std::vector<std::string> names;
  p.Files().Enumerate(folder, [&](const FindData& d) {
    names.push_back(d.name);
    return true;
  });
  return names;
}

TEST(SimFileSystemTest, EnumeratesInInsertionOrderWithDotEntries) {
  SimulatedPlatform p;
  p.SimFiles().AddFile("C:\\d\\b.txt", 5);
  p.SimFiles().AddFolder("C:\\d\\A");
  p.SimFiles().AddFile("c:\\D\\a.txt", (5ULL << 32) + 7);
  EXPECT_EQ(Names(p, "C:\\d\\*.*"), (std::vector<std::string>{".", "..", "b.txt", "A", "a.txt"}));
  const FindData* big = p.SimFiles().Find("C:\\D\\A.TXT");
  ASSERT_NE(big, nullptr);
  EXPECT_EQ(big->sizeHigh, 5u);
  EXPECT_EQ(big->sizeLow, 7u);
  EXPECT_EQ(Names(p, "C:\\").front(), "TEMP");  // roots have no dot entries
  EXPECT_FALSE(p.Files().Enumerate("C:\\nope\\", [](const FindData&) { return true; }));
  p.SimFiles().SetEnumerable("C:\\d", false);
  EXPECT_FALSE(p.Files().Enumerate("C:\\d\\", [](const FindData&) { return true; }));
}

TEST(SimFileSystemTest, ReadsContentAndVolumes) {
  SimulatedPlatform p;
  p.SimFiles().AddFileWithContent("C:\\x.bin", "hello");
  auto f = p.Files().OpenForRead("C:\\x.bin");
  ASSERT_TRUE(f);
  char buf[8] = {};
  EXPECT_EQ(f->ReadAt(1, buf, 8), 4u);
  EXPECT_EQ(std::string(buf, 4), "ello");
  EXPECT_EQ(f->ReadAt(5, buf, 8), 0u);
  std::string fs;
  EXPECT_FALSE(p.Files().VolumeFileSystemName("D:\\", fs));
  EXPECT_TRUE(p.Files().WriteWholeFile("C:\\TEMP\\k.txt", "a\r\n"));
  EXPECT_EQ(p.Files().ReadWholeFile("C:\\temp\\K.TXT").value(), "a\r\n");
  EXPECT_FALSE(p.Files().WriteWholeFile("C:\\missing\\k.txt", "a"));
}

}  // namespace
}  // namespace nxfv
