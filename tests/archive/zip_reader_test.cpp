#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <fstream>
#include <sstream>

#include "archive/archive_reader.h"
#include "archive_test_util.h"
#include "platform/date.h"
#include "platform/error_state.h"
#include "platform/linux/linux_platform.h"

namespace nxfv {
namespace {

using namespace testing_archive;

const std::string kBox = "\r\nin cArchive.GetZip component at line ";

TEST(ZipReaderTest, ReportsEveryFieldOfEachEntryInDirectoryOrder) {
  SimulatedPlatform p;
  const ZipEntrySpec a = ZipEntry("docs/readme.txt").Comment("first").Flags(0x0001).Method(8).Crc(0xFFFFFFFF).CompressedSize(0x80000000u).Size(0xFFFFFFFFu).Attributes(0x81A40020);
  const ZipEntrySpec b = ZipEntry("docs/").Method(0).Time(DosTime(0, 0, 0)).Date(DosDate(1999, 12, 31)).Crc(0).CompressedSize(0).Size(0).Attributes(16);
  const ZipEntrySpec c = ZipEntry("top.bin").Extra(std::string(9, 'x')).Flags(0x8000).Method(0xFFFF);
  const Listing l = ListBytes(p, BuildZip({a, b, c}), "zip");
  ASSERT_EQ(l.fileCount, 3);
  const double when = DateSerial(2024, 3, 15, 10, 30, 42);
  const std::vector<Entry> expected = {
      {1, 3, "readme.txt", "zip", when, -1, INT32_MIN, 8, static_cast<int32_t>(0x81A40020), "docs/", 1, -1, "first"},
      {2, 3, "", "zip", DateSerial(1999, 12, 31), 0, 0, 0, 16, "docs/", 0, 0, "first"},
      {3, 3, "top.bin", "zip", when, 20, 10, -1, 32, "", -32768, 0x12345678, "first"},
  };
  EXPECT_EQ(l.entries, expected);
  EXPECT_TRUE(p.SimBoxes().Shown().empty());
}

TEST(ZipReaderTest, CommentOfAnEntryWithoutOneIsTheLastNonEmptyComment) {
  SimulatedPlatform p;
  const Listing l = ListBytes(
      p, BuildZip({ZipEntry("1").Comment(""), ZipEntry("2").Comment("two"), ZipEntry("3"), ZipEntry("4").Comment("four"), ZipEntry("5")}),
      "zip");
  std::vector<std::string> comments;
  for (const auto& e : l.entries) comments.push_back(e.Comments);
  EXPECT_EQ(comments, (std::vector<std::string>{"", "two", "two", "four", "four"}));
}

// Where the end record sits decides whether the tail search finds it.
TEST(ZipReaderTest, TailSearchBoundaries) {
  struct Case {
    const char* boundary;
    std::string bytes;
    int32_t fileCount;  // 777: unchanged, the archive was not recognised
    size_t events;
  };
  const std::string entry = ZipCentralEntry(ZipEntry("a.txt"));
  // A central directory placed after the end record: the offset is absolute.
  const std::string endAtOne = "X" + ZipEndRecord(1, static_cast<uint32_t>(entry.size()), 23) + entry;
  const std::string body = BuildZip({ZipEntry("a.txt")}, "", "");
  auto withComment = [&](size_t length) {
    std::string zip = BuildZip({ZipEntry("a.txt")}, std::string(length, 'c'), std::string(100, 'L'));
    return zip;
  };
  // The stray record's fields are whatever follows it: here zeros, so the
  // archive announces no entries.
  const std::string strayAfterEnd =
      BuildZip({ZipEntry("a.txt")}, "note " + std::string("PK\x05\x06", 4) + std::string(16, '\0') + " end", "");
  const Case cases[] = {
      {"empty file", "", 777, 0},
      {"22-byte empty archive: end record at offset 0 is skipped", ZipEndRecord(0, 0, 0), 777, 0},
      {"end record at offset 1", endAtOne, 1, 1},
      {"no signature anywhere", std::string(5000, 'z'), 777, 0},
      {"signature cut by the end of the file", std::string(100, 'z') + "PK\x05", 777, 0},
      {"comment of 4074 bytes: record starts exactly 4096 from the end", withComment(4074), 1, 1},
      {"comment of 4075 bytes: record starts before the searched tail", withComment(4075), 777, 0},
      {"stray signature in the comment wins", strayAfterEnd, 0, 0},
      {"end record fields cut short read as zero", body.substr(0, body.size() - 22) + "PK\x05\x06\x00\x00\x00", 0, 0},
  };
  for (const Case& c : cases) {
    SimulatedPlatform p;
    const Listing l = ListBytes(p, c.bytes, "zip");
    EXPECT_EQ(l.fileCount, c.fileCount) << c.boundary;
    EXPECT_EQ(l.entries.size(), c.events) << c.boundary;
    if (c.events == 1) {
      EXPECT_EQ(l.entries[0].FileName, "a.txt") << c.boundary;
    }
  }
}

TEST(ZipReaderTest, EntryCountIsSignExtendedSo32768AndMoreListNothing) {
  struct Case {
    uint16_t stored;
    int32_t fileCount;
  };
  for (const Case& c : {Case{32767, 32767}, Case{32768, -32768}, Case{65535, -1}}) {
    SimulatedPlatform p;
    std::string zip = BuildZip({ZipEntry("a")});
    SetU16(zip, zip.size() - 22 + 8, c.stored);
    const Listing l = ListBytes(p, zip, "zip");
    EXPECT_EQ(l.fileCount, c.fileCount) << c.stored;
    EXPECT_EQ(l.entries.size(), static_cast<size_t>(std::max(c.fileCount, 0))) << c.stored;
  }
}

TEST(ZipReaderTest, OnlyExactLowerCaseExtensionsSelectTheReader) {
  struct Case {
    const char* ext;
    bool listed;
  };
  const std::string zip = BuildZip({ZipEntry("a.txt")});
  for (const Case& c : {Case{"zip", true}, Case{".zip", true}, Case{"ZIP", false}, Case{"Zip", false},
                        Case{".ZIP", false}, Case{"zipx", false}, Case{"", false}, Case{"cab", false}}) {
    SimulatedPlatform p;
    const Listing l = ListBytes(p, zip, c.ext);
    EXPECT_EQ(l.entries.size(), c.listed ? 1u : 0u) << c.ext;
    EXPECT_EQ(l.fileCount, c.listed ? 1 : 777) << c.ext;
    if (c.listed) {
      EXPECT_EQ(l.entries[0].ArchiveExt, c.ext);
    }
  }
}

TEST(ZipReaderTest, MissingFileOrFolderListsNothingAndKeepsFileCount) {
  SimulatedPlatform p;
  p.SimFiles().AddFolder("C:\\dir.zip");
  for (const char* path : {"C:\\nope.zip", "C:\\dir.zip"}) {
    cArchive reader(p);
    Recorder r;
    reader.SetListener(&r);
    reader.ArchiveName = path;
    reader.ArchiveExt = "zip";
    reader.FileCount = 5;
    reader.GetInfo();
    EXPECT_EQ(reader.FileCount, 5) << path;
    EXPECT_TRUE(r.entries.empty()) << path;
  }
}

TEST(ZipReaderTest, NamesAndCommentsBecomeUtf8) {
  struct Case {
    const char* what;
    std::string stored;
    uint16_t flags;
    std::string path;
    std::string name;
  };
  const Case cases[] = {
      {"UTF-8 flag", "Gr\xC3\xBC\xC3\x9F" "e/\xC3\xA4.txt", 0x0800, "Grüße/", "ä.txt"},
      {"UTF-8 without the flag, as Unix tools write it", "\xE2\x82\xAC.txt", 0, "", "€.txt"},
      {"code page 437", "\x81" "ber\\\x8E.txt", 0, "über\\", "Ä.txt"},
      {"flag set but bytes are not UTF-8", "\x94" "l", 0x0800, "", "öl"},
      {"box drawing and Greek of 437", "\xC9\xCD\xBB\xE0", 0, "", "╔═╗α"},
  };
  for (const Case& c : cases) {
    SimulatedPlatform p;
    const Listing l = ListBytes(p, BuildZip({ZipEntry(c.stored).Comment("\x9C" "5").Flags(c.flags)}), "zip");
    ASSERT_EQ(l.entries.size(), 1u) << c.what;
    EXPECT_EQ(l.entries[0].Path, c.path) << c.what;
    EXPECT_EQ(l.entries[0].FileName, c.name) << c.what;
    EXPECT_EQ(l.entries[0].Comments, "£5") << c.what;
  }
}

TEST(ZipReaderTest, InvalidDosDatesGiveThe1980Substitute) {
  struct Case {
    uint16_t date;
    uint16_t time;
    double expected;
  };
  const double substitute = DateSerial(1980, 1, 1, 3, 0, 0);
  const Case cases[] = {
      {0, 0, substitute},
      {DosDate(2000, 13, 1), 0, substitute},
      {DosDate(2001, 2, 29), 0, substitute},
      {DosDate(2024, 2, 29), DosTime(23, 59, 58), DateSerial(2024, 2, 29, 23, 59, 58)},
      {DosDate(2024, 1, 1), static_cast<uint16_t>(24 << 11), substitute},
      {DosDate(1980, 1, 1), 0, DateSerial(1980, 1, 1)},
  };
  for (const Case& c : cases) {
    SimulatedPlatform p;
    const Listing l = ListBytes(p, BuildZip({ZipEntry("a").Time(c.time).Date(c.date)}), "zip");
    ASSERT_EQ(l.entries.size(), 1u);
    EXPECT_DOUBLE_EQ(l.entries[0].Modified, c.expected) << c.date << " " << c.time;
  }
}

TEST(ZipReaderTest, EntriesPastTheEndOfTheFileRepeatTheLastHeader) {
  SimulatedPlatform p;
  const std::string entry = ZipCentralEntry(ZipEntry("a.txt").Comment("c"));
  // One entry stored, three announced; the directory follows the end record.
  const std::string zip = "X" + ZipEndRecord(3, 0, 23) + entry;
  const Listing l = ListBytes(p, zip, "zip");
  ASSERT_EQ(l.entries.size(), 3u);
  EXPECT_EQ(l.entries[0].FileName, "a.txt");
  // The header keeps its bytes; the name and comment buffers read as zeros.
  EXPECT_EQ(l.entries[1].FileName, std::string(5, '\0'));
  EXPECT_EQ(l.entries[1].Comments, std::string(1, '\0'));
  EXPECT_EQ(l.entries[2].Size, l.entries[0].Size);
  EXPECT_EQ(l.entries[2].CRC, l.entries[0].CRC);
  EXPECT_TRUE(p.SimBoxes().Shown().empty());
}

TEST(ZipReaderTest, FailingStepShowsOkBoxAndReadingGoesOn) {
  SimulatedPlatform p;
  std::string first = ZipCentralEntry(ZipEntry("good.txt"));
  std::string bad = ZipCentralEntry(ZipEntry("zz").Comment("note"));
  SetU16(bad, 28, 0x8000);  // name length -32768
  const std::string cd = first + bad;
  const std::string zip = cd + ZipEndRecord(2, static_cast<uint32_t>(cd.size()), 0);
  ClearError();
  const Listing l = ListBytes(p, zip, "zip");
  ASSERT_EQ(l.entries.size(), 2u);
  // The failed read leaves the name of the entry before; the comment that
  // follows is still read.
  EXPECT_EQ(l.entries[1].FileName, "good.txt");
  ASSERT_EQ(p.SimBoxes().Shown().size(), 1u);
  const MessageBoxRecord& box = p.SimBoxes().Shown()[0];
  EXPECT_EQ(box.text, "Invalid procedure call or argument" + kBox + "120");
  EXPECT_EQ(box.style, 0);
  EXPECT_EQ(box.title, "NxFileViewer");
  EXPECT_EQ(CurrentError().number, 0);
}

TEST(ZipReaderTest, PositionOverflowIsReportedOncePerEntry) {
  SimulatedPlatform p;
  const std::string zip = "X" + ZipEndRecord(3, 0, 0x7FFFFFF0);
  const Listing l = ListBytes(p, zip, "zip");
  EXPECT_EQ(l.entries.size(), 3u);
  ASSERT_EQ(p.SimBoxes().Shown().size(), 3u);
  for (const auto& box : p.SimBoxes().Shown()) EXPECT_EQ(box.text, "Overflow" + kBox + "110");
}

TEST(ZipReaderTest, NegativeExtraLengthIsReportedAndSkippedBackwards) {
  SimulatedPlatform p;
  std::string e = ZipCentralEntry(ZipEntry("a.txt"));
  SetU16(e, 30, 0xFFFF);  // extra length -1
  const Listing l = ListBytes(p, e + ZipEndRecord(1, static_cast<uint32_t>(e.size()), 0), "zip");
  ASSERT_EQ(l.entries.size(), 1u);
  EXPECT_EQ(l.entries[0].FileName, "a.txt");
  ASSERT_EQ(p.SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(p.SimBoxes().Shown()[0].text, "Invalid procedure call or argument" + kBox + "140");
}

TEST(ZipReaderTest, ThrowingListenerIsReportedAndTheNextEntryStillArrives) {
  struct Thrower : Recorder {
    void FileFound(int32_t Index, int32_t Total, std::string FileName, std::string ArchiveExt, double Modified,
                   int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr, std::string Path, int32_t flags,
                   int32_t CRC, std::string Comments) override {
      Recorder::FileFound(Index, Total, FileName, ArchiveExt, Modified, Size, CompSize, Method, Attr, Path, flags, CRC,
                          Comments);
      if (Index == 1) RaiseError(kErrDuplicateKey);
    }
  };
  SimulatedPlatform p;
  p.SimFiles().AddFileWithContent("C:\\t.zip", BuildZip({ZipEntry("a"), ZipEntry("b")}));
  cArchive reader(p);
  Thrower t;
  reader.SetListener(&t);
  reader.ArchiveName = "C:\\t.zip";
  reader.ArchiveExt = "zip";
  reader.GetInfo();
  EXPECT_EQ(t.entries.size(), 2u);
  ASSERT_EQ(p.SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(p.SimBoxes().Shown()[0].text, StandardErrorDescription(kErrDuplicateKey) + kBox + "190");
}

TEST(ZipReaderTest, LargeDirectoryTakesAHandfulOfReads) {
  std::vector<ZipEntrySpec> specs;
  for (int i = 0; i < 20000; ++i) specs.push_back(ZipEntry("folder/file" + std::to_string(i) + ".txt"));
  const std::string zip = BuildZip(specs);
  CountingPlatform p;
  p.SimFiles().AddFileWithContent("C:\\big.zip", zip);
  cArchive reader(p);
  Recorder r;
  reader.SetListener(&r);
  reader.ArchiveName = "C:\\big.zip";
  reader.ArchiveExt = "zip";
  reader.GetInfo();
  ASSERT_EQ(r.entries.size(), 20000u);
  EXPECT_EQ(r.entries[19999].FileName, "file19999.txt");
  EXPECT_EQ(r.entries[19999].Path, "folder/");
  EXPECT_LE(p.reads(), 4u);
}

TEST(ZipReaderTest, NoListenerIsFine) {
  SimulatedPlatform p;
  p.SimFiles().AddFileWithContent("C:\\t.zip", BuildZip({ZipEntry("a")}));
  cArchive reader(p);
  reader.ArchiveName = "C:\\t.zip";
  reader.ArchiveExt = "zip";
  reader.GetInfo();
  EXPECT_EQ(reader.FileCount, 1);
}

TEST(ZipReaderTest, InertCallbacksAnswerAsDocumented) {
  struct Noti : cArchiveEvents {
    int32_t w = 0, l = 0;
    void FileFound(int32_t, int32_t, std::string, std::string, double, int32_t, int32_t, int32_t, int32_t,
                   std::string, int32_t, int32_t, std::string) override {}
    void noti(int32_t& wParam, int32_t& lParam) override {
      w = wParam;
      l = lParam;
    }
  };
  SimulatedPlatform p;
  cArchive reader(p);
  Noti n;
  reader.SetListener(&n);
  EXPECT_EQ(reader.ChangeVolProc("x", 2), 1);
  EXPECT_EQ(reader.ProcessDataProc(1, 2), 1);
  EXPECT_EQ(reader.NotificationReceipt(7, 9), 0);
  EXPECT_EQ(n.w, 7);
  EXPECT_EQ(n.l, 9);
}

// Archives written by Debian's zip, read on the simulated platform (and on
// the real one when it can open files).
class ZipToolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!HaveTool("zip")) GTEST_SKIP() << "zip is not installed";
    dir_ = std::filesystem::temp_directory_path() / ("nxfv_zip_test_" + std::to_string(std::random_device{}()));
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_ / "src" / "sub");
    std::ofstream(dir_ / "src" / "a.txt") << "hello";
    std::ofstream(dir_ / "src" / "sub" / "Grüße.txt") << std::string(1000, 'x');
    const std::string q = "'" + dir_.string() + "'";
    ASSERT_TRUE(RunTool("cd " + q + "/src && touch -d '2021-06-01 12:34:56' a.txt sub sub/Grüße.txt && "
                        "zip -q -X ../t.zip a.txt sub/ sub/Grüße.txt && printf 'for a\\n' | zip -q -c ../t.zip a.txt"));
    std::ifstream in(dir_ / "t.zip", std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    bytes_ = bytes.str();
  }
  void TearDown() override {
    if (!dir_.empty()) std::filesystem::remove_all(dir_);
  }
  std::filesystem::path dir_;
  std::string bytes_;
};

void ExpectToolZip(const std::vector<Entry>& entries) {
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].FileName, "a.txt");
  EXPECT_EQ(entries[0].Size, 5);
  EXPECT_EQ(entries[0].Comments, "for a");
  EXPECT_EQ(entries[1].Path, "sub/");
  EXPECT_EQ(entries[1].FileName, "");
  EXPECT_EQ(entries[2].Path, "sub/");
  EXPECT_EQ(entries[2].FileName, "Grüße.txt");
  EXPECT_EQ(entries[2].Size, 1000);
  EXPECT_LT(entries[2].CompSize, 1000);
  EXPECT_EQ(entries[2].Method, 8);
  EXPECT_EQ(entries[2].Comments, "for a");  // carried over
  for (const auto& e : entries) EXPECT_DOUBLE_EQ(e.Modified, DateSerial(2021, 6, 1, 12, 34, 56)) << e;
}

TEST_F(ZipToolTest, ReadsArchiveOnSimulatedPlatform) {
  SimulatedPlatform p;
  ExpectToolZip(ListBytes(p, bytes_, "zip").entries);
}

TEST_F(ZipToolTest, ReadsRealFileOnLinuxPlatform) {
  PlatformRef real = std::make_shared<LinuxPlatform>();
  auto file = real->Files().OpenForRead((dir_ / "t.zip").string());
  if (!file) GTEST_SKIP() << "this platform cannot open files for reading yet";
  cArchive reader(real);
  Recorder r;
  reader.SetListener(&r);
  reader.ArchiveName = (dir_ / "t.zip").string();
  reader.ArchiveExt = "zip";
  reader.GetInfo();
  ExpectToolZip(r.entries);
}

}  // namespace
}  // namespace nxfv
