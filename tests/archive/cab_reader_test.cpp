#include <gtest/gtest.h>

#include "archive_test_util.h"
#include "nxfv/platform/date.h"

namespace nxfv {
namespace {

using namespace testing_archive;

TEST(CabReaderTest, ReportsEveryEntryWithTheFirstFolderMethodAndHeaderFlags) {
  SimulatedPlatform p;
  CabLayout layout;
  layout.typeCompress = 0x1503;  // LZX, 2 MiB window
  layout.files = {CabFile("a.txt").Size(5).Attribs(0x21), CabFile("sub\\deeper\\b.doc").Size(0x80000000u).Date(0).Time(0).Attribs(0xA0),
                CabFile("caf\xE9/\xE2\x82\xAC").Size(7)};
  const Listing l = ListBytes(p, BuildCab(layout), "cab");
  const double when = DateSerial(2023, 12, 31, 23, 59, 58);
  const std::vector<Entry> expected = {
      {1, 3, "a.txt", "cab", when, 5, 0, 0x1503, 0x21, "", 0, 0, ""},
      {2, 3, "b.doc", "cab", DateSerial(1980, 1, 1, 3, 0, 0), INT32_MIN, 0, 0x1503, 0xA0, "sub\\deeper\\", 0, 0, ""},
      // Not UTF-8 as a whole: Windows-1252 (and the entry after it is still
      // found: the advance counts stored bytes).
      {3, 3, "â‚¬", "cab", when, 7, 0, 0x1503, 0x20, "café/", 0, 0, ""},
  };
  EXPECT_EQ(l.fileCount, 3);
  EXPECT_EQ(l.entries, expected);
  EXPECT_TRUE(p.SimBoxes().Shown().empty());
}

// The file table is found through coffFiles; only the folder entry is
// taken at offset 36 whatever the flags say lies there.
TEST(CabReaderTest, OptionalHeaderPartsMisplaceOnlyTheMethod) {
  struct Case { const char* what; uint16_t flags, reserve, folders; int32_t method; /* -1: what lies at 36 */ };
  for (const Case& c : {Case{"plain", 0, 0, 1, 2}, Case{"no folder", 0, 0, 0, 0}, Case{"reserve present", 4, 20, 1, -1},
                        Case{"previous cabinet", 1, 0, 2, -1}, Case{"previous and next", 3, 0, 1, -1}}) {
    SimulatedPlatform p;
    CabLayout layout;
    layout.flags = c.flags;
    layout.headerReserve = c.reserve;
    layout.folders = c.folders;
    layout.typeCompress = 2;
    layout.files = {CabFile("one.txt"), CabFile("two\\three.txt")};
    const Listing l = ListBytes(p, BuildCab(layout), ".cab");
    ASSERT_EQ(l.entries.size(), 2u) << c.what;
    EXPECT_EQ(l.entries[1].Path + l.entries[1].FileName, "two\\three.txt") << c.what;
    for (const Entry& e : l.entries) {
      EXPECT_EQ(e.flags, c.flags) << c.what;
      EXPECT_TRUE(c.method >= 0 ? e.Method == c.method : e.Method != 2) << c.what << ": " << e.Method;
    }
  }
}

TEST(CabReaderTest, HeaderDecidesWhetherAnythingIsListed) {
  struct Case { const char* what; std::string bytes; const char* ext; int32_t fileCount; /* 777: unchanged */ };
  CabLayout one;
  one.files = {CabFile("a")};
  const std::string cab = BuildCab(one);
  auto withCount = [&](uint16_t n) { auto c = cab; SetU16(c, 28, n); return c; };
  const Case cases[] = {
      {"empty file", "", "cab", 777},
      {"signature only", "MSCF", "cab", 0},
      {"wrong signature", "mSCF" + cab.substr(4), "cab", 777},
      {"cFiles 0", withCount(0), "cab", 0},
      {"cFiles 32768 reads negative", withCount(0x8000), "cab", -32768},
      {"mixed-case dotted extension", cab, ".Cab", 777},
  };
  for (const Case& c : cases) {
    SimulatedPlatform p;
    const Listing l = ListBytes(p, c.bytes, c.ext);
    EXPECT_EQ(l.fileCount, c.fileCount) << c.what;
    EXPECT_TRUE(l.entries.empty()) << c.what;
  }
}

TEST(CabReaderTest, NameAreaWithoutTerminatorIsTrimmedAndAdvancesByItsLength) {
  SimulatedPlatform p;
  CabLayout layout;
  layout.files = {CabFile("first.txt")};
  std::string cab = BuildCab(layout);
  // A second entry whose 260-byte name area holds "  long" and blanks only.
  PutU32(cab, 42);
  PutU32(cab, 0);
  for (uint32_t v : {0u, uint32_t{DosDate(2020, 1, 2)}, uint32_t{DosTime(3, 4, 6)}, 0x20u}) PutU16(cab, v);
  cab += "  long" + std::string(254, ' ');
  SetU16(cab, 28, 3);
  const Listing l = ListBytes(p, cab, "cab");
  ASSERT_EQ(l.entries.size(), 3u);
  EXPECT_EQ(l.entries[1].FileName, "long");
  EXPECT_EQ(l.entries[1].Size, 42);
  // The third entry starts 17 + 4 (the trimmed length) bytes after the
  // second, on the "g": a size of "g   ", a name of blanks.
  EXPECT_EQ(l.entries[2].Size, 0x20202067);
  EXPECT_EQ(l.entries[2].FileName, "");
}

TEST(CabReaderTest, PositionOverflowIsReportedAndReadingGoesOn) {
  SimulatedPlatform p;
  CabLayout layout;
  layout.files = {CabFile("a"), CabFile("b")};
  std::string cab = BuildCab(layout);
  SetU16(cab, 16, 0xFFF0);  // coffFiles 0x7FFFFFF0: 17 more leave the range
  SetU16(cab, 18, 0x7FFF);
  const Listing l = ListBytes(p, cab, "cab");
  EXPECT_EQ(l.entries.size(), 2u);
  ASSERT_EQ(p.SimBoxes().Shown().size(), 2u);
  EXPECT_EQ(p.SimBoxes().Shown()[1].text, "Overflow\r\nin cArchive.GetCab component at line 140");
  EXPECT_EQ(p.SimBoxes().Shown()[1].style, 0);
}

}  // namespace
}  // namespace nxfv
