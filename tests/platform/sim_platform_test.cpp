#include "nxfv/platform/sim/simulated_platform.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

// The rest of the simulated file system is exercised by every listing and
// archive test; here what those take for granted.
TEST(SimFileSystemTest, EnumeratesInInsertionOrderWithDotEntriesAndIgnoresCase) {
  SimulatedPlatform p;
  p.SimFiles().AddFile("C:\\d\\b.txt", 5);
  p.SimFiles().AddFolder("C:\\d\\A");
  p.SimFiles().AddFile("c:\\D\\a.txt", (5ULL << 32) + 7);
  auto names = [&](const std::string& folder) {
    std::vector<std::string> out;
    p.Files().Enumerate(folder, [&](const FindData& d) {
      out.push_back(d.name);
      return true;
    });
    return out;
  };
  EXPECT_EQ(names("C:\\d\\*.*"), (std::vector<std::string>{".", "..", "b.txt", "A", "a.txt"}));
  EXPECT_EQ(names("C:\\").front(), "TEMP");  // roots have no dot entries
  const FindData* big = p.SimFiles().Find("C:\\D\\A.TXT");
  ASSERT_NE(big, nullptr);
  EXPECT_EQ(big->sizeHigh, 5u);
  EXPECT_EQ(big->sizeLow, 7u);
  EXPECT_FALSE(p.Files().Enumerate("C:\\nope\\", [](const FindData&) { return true; }));
  p.SimFiles().SetEnumerable("C:\\d", false);
  EXPECT_FALSE(p.Files().Enumerate("C:\\d\\", [](const FindData&) { return true; }));
}

}  // namespace
}  // namespace nxfv
