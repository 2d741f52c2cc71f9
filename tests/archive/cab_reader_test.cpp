#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "archive/archive_reader.h"
#include "archive_test_util.h"
#include "platform/date.h"
#include "platform/linux/linux_platform.h"

namespace nxfv {
namespace {

using namespace testing_archive;

TEST(CabReaderTest, ReportsEveryEntryWithTheFirstFolderMethodAndHeaderFlags) {
  SimulatedPlatform p;
  CabSpec spec;
  spec.typeCompress = 0x1503;  // LZX with a 2 MiB window
  spec.files = {CabFile("a.txt").Size(5).Attribs(0x21),
                CabFile("sub\\deeper\\b.doc").Size(0x80000000u).Date(0).Time(0).Attribs(0xA0),
                CabFile("x/y").Size(7)};
  const Listing l = ListBytes(p, BuildCab(spec), "cab");
  ASSERT_EQ(l.fileCount, 3);
  const double when = DateSerial(2023, 12, 31, 23, 59, 58);
  const std::vector<Entry> expected = {
      {1, 3, "a.txt", "cab", when, 5, 0, 0x1503, 0x21, "", 0, 0, ""},
      {2, 3, "b.doc", "cab", DateSerial(1980, 1, 1, 3, 0, 0), INT32_MIN, 0, 0x1503, 0xA0, "sub\\deeper\\", 0, 0, ""},
      {3, 3, "y", "cab", when, 7, 0, 0x1503, 0x20, "x/", 0, 0, ""},
  };
  EXPECT_EQ(l.entries, expected);
  EXPECT_TRUE(p.SimBoxes().Shown().empty());
}

// The file table is found through coffFiles, whatever lies between; only
// the folder entry is taken at offset 36 regardless of the flags.
TEST(CabReaderTest, OptionalHeaderPartsMisplaceOnlyTheMethod) {
  struct Case {
    const char* what;
    uint16_t flags;
    uint16_t reserve;
    uint16_t folders;
    bool methodIsReal;
  };
  const Case cases[] = {
      {"plain", 0, 0, 1, true},
      {"no folder: method 0", 0, 0, 0, false},
      {"reserve present", 4, 20, 1, false},
      {"previous cabinet", 1, 0, 2, false},
      {"previous and next cabinet", 3, 0, 1, false},
  };
  for (const Case& c : cases) {
    SimulatedPlatform p;
    CabSpec spec;
    spec.flags = c.flags;
    spec.headerReserve = c.reserve;
    spec.folders = c.folders;
    spec.typeCompress = 2;
    spec.files = {CabFile("one.txt"), CabFile("two\\three.txt")};
    const Listing l = ListBytes(p, BuildCab(spec), ".cab");
    ASSERT_EQ(l.entries.size(), 2u) << c.what;
    EXPECT_EQ(l.entries[1].FileName, "three.txt") << c.what;
    EXPECT_EQ(l.entries[1].Path, "two\\") << c.what;
    for (const Entry& e : l.entries) {
      EXPECT_EQ(e.flags, c.flags) << c.what;
      EXPECT_EQ(e.ArchiveExt, ".cab") << c.what;
      if (c.methodIsReal) {
        EXPECT_EQ(e.Method, 2) << c.what;
      }
    }
    if (c.folders == 0) {
      EXPECT_EQ(l.entries[0].Method, 0) << c.what;
    } else if (!c.methodIsReal) {
      EXPECT_NE(l.entries[0].Method, 2) << c.what;
    }
  }
}

TEST(CabReaderTest, HeaderDecidesWhetherAnythingIsListed) {
  struct Case {
    const char* what;
    std::string bytes;
    int32_t fileCount;  // 777: unchanged
  };
  CabSpec one;
  one.files = {CabFile("a")};
  std::string negative = BuildCab(one);
  SetU16(negative, 28, 0x8000);
  std::string zero = BuildCab(one);
  SetU16(zero, 28, 0);
  std::string lower = BuildCab(one);
  lower[0] = 'm';
  const Case cases[] = {
      {"empty file", "", 777},
      {"signature only", "MSCF", 0},
      {"wrong signature", lower, 777},
      {"cFiles 0", zero, 0},
      {"cFiles 32768 reads negative", negative, -32768},
  };
  for (const Case& c : cases) {
    SimulatedPlatform p;
    const Listing l = ListBytes(p, c.bytes, "cab");
    EXPECT_EQ(l.fileCount, c.fileCount) << c.what;
    EXPECT_TRUE(l.entries.empty()) << c.what;
  }
  SimulatedPlatform p;
  for (const char* ext : {"CAB", "Cab", ".CAB", "cabx"}) EXPECT_TRUE(ListBytes(p, BuildCab(one), ext).entries.empty()) << ext;
}

TEST(CabReaderTest, NameAreaWithoutTerminatorIsTrimmedAndAdvancesByItsLength) {
  SimulatedPlatform p;
  CabSpec spec;
  spec.files = {CabFile("first.txt")};
  std::string cab = BuildCab(spec);
  // A second entry whose 260-byte name area has no zero: "  long  " padded
  // with blanks to the end, then a third entry right after the trimmed name.
  std::string second;
  PutU32(second, 42);
  PutU32(second, 0);
  PutU16(second, 0);
  PutU16(second, DosDate(2020, 1, 2));
  PutU16(second, DosTime(3, 4, 6));
  PutU16(second, 0x20);
  second += "  long" + std::string(254, ' ');
  cab += second;
  SetU16(cab, 28, 3);
  const Listing l = ListBytes(p, cab, "cab");
  ASSERT_EQ(l.entries.size(), 3u);
  EXPECT_EQ(l.entries[0].FileName, "first.txt");
  EXPECT_EQ(l.entries[1].FileName, "long");
  EXPECT_EQ(l.entries[1].Size, 42);
  EXPECT_DOUBLE_EQ(l.entries[1].Modified, DateSerial(2020, 1, 2, 3, 4, 6));
  // The third entry starts 17 + 4 bytes after the second (the trimmed
  // length), on the "g" of its name: a size of "g   ", a name of blanks.
  EXPECT_EQ(l.entries[2].Size, 0x20202067);
  EXPECT_EQ(l.entries[2].FileName, "");
}

TEST(CabReaderTest, NamesBecomeUtf8) {
  struct Case {
    std::string stored;
    std::string name;
  };
  for (const Case& c : {Case{"caf\xE9.txt", "café.txt"}, Case{"\x80\x99", "€™"}, Case{"\x81", "\xC2\x81"},
                        Case{"gr\xC3\xBC\xC3\x9F" "e", "grüße"}}) {
    SimulatedPlatform p;
    CabSpec spec;
    spec.files = {CabFile(c.stored), CabFile("next")};
    const Listing l = ListBytes(p, BuildCab(spec), "cab");
    ASSERT_EQ(l.entries.size(), 2u);
    EXPECT_EQ(l.entries[0].FileName, c.name);
    EXPECT_EQ(l.entries[1].FileName, "next");  // advanced by the stored length in bytes
  }
}

TEST(CabReaderTest, PositionOverflowIsReportedAndReadingGoesOn) {
  SimulatedPlatform p;
  CabSpec spec;
  spec.files = {CabFile("a"), CabFile("b")};
  std::string cab = BuildCab(spec);
  SetU32(cab, 16, 0x7FFFFFF0);
  const Listing l = ListBytes(p, cab, "cab");
  EXPECT_EQ(l.entries.size(), 2u);
  ASSERT_EQ(p.SimBoxes().Shown().size(), 2u);
  EXPECT_EQ(p.SimBoxes().Shown()[0].text, "Overflow\r\nin cArchive.GetCab component at line 140");
  EXPECT_EQ(p.SimBoxes().Shown()[0].title, "NxFileViewer");
  EXPECT_EQ(p.SimBoxes().Shown()[0].style, 0);
}

TEST(CabReaderTest, LargeTableTakesAHandfulOfReads) {
  CabSpec spec;
  for (int i = 0; i < 20000; ++i) spec.files.push_back(CabFile("dir\\file" + std::to_string(i)));
  CountingPlatform p;
  p.SimFiles().AddFileWithContent("C:\\big.cab", BuildCab(spec));
  cArchive reader(p);
  Recorder r;
  reader.SetListener(&r);
  reader.ArchiveName = "C:\\big.cab";
  reader.ArchiveExt = "cab";
  reader.GetInfo();
  ASSERT_EQ(r.entries.size(), 20000u);
  EXPECT_EQ(r.entries[19999].FileName, "file19999");
  EXPECT_LE(p.reads(), 4u);
}

// A cabinet written by gcab.
TEST(CabToolTest, ReadsGcabArchive) {
  if (!HaveTool("gcab")) GTEST_SKIP() << "gcab is not installed";
  const auto dir = std::filesystem::temp_directory_path() / ("nxfv_cab_test_" + std::to_string(std::random_device{}()));
  std::filesystem::create_directories(dir / "sub");
  std::ofstream(dir / "a.txt") << "hello";
  std::ofstream(dir / "sub" / "Grüße.txt") << std::string(300, 'y');
  const std::string q = "'" + dir.string() + "'";
  ASSERT_TRUE(RunTool("cd " + q + " && touch -d '2022-02-03 04:05:06' a.txt sub/Grüße.txt && gcab -c -z t.cab a.txt sub/Grüße.txt"));
  std::ifstream in(dir / "t.cab", std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  auto check = [](const std::vector<Entry>& entries) {
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].FileName, "a.txt");
    EXPECT_EQ(entries[0].Size, 5);
    EXPECT_EQ(entries[1].Path, "sub\\");
    EXPECT_EQ(entries[1].FileName, "Grüße.txt");
    EXPECT_EQ(entries[1].Size, 300);
    for (const auto& e : entries) {
      EXPECT_EQ(e.Method, 1) << e;  // MSZIP
      EXPECT_DOUBLE_EQ(e.Modified, DateSerial(2022, 2, 3, 4, 5, 6)) << e;
    }
  };
  SimulatedPlatform sim;
  check(ListBytes(sim, bytes.str(), "cab").entries);

  PlatformRef real = std::make_shared<LinuxPlatform>();
  if (real->Files().OpenForRead((dir / "t.cab").string())) {
    cArchive reader(real);
    Recorder r;
    reader.SetListener(&r);
    reader.ArchiveName = (dir / "t.cab").string();
    reader.ArchiveExt = "cab";
    reader.GetInfo();
    check(r.entries);
  }
  std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace nxfv
