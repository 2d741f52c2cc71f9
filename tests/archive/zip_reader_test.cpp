#include <gtest/gtest.h>

#include <algorithm>

#include "archive_test_util.h"
#include "nxfv/platform/date.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "platform_linux/temp_dir.h"

namespace nxfv {
namespace {

using namespace testing_archive;

const std::string kBox = "\r\nin cArchive.GetZip component at line ";

TEST(ZipReaderTest, ReportsEveryFieldAndCarriesTheLastCommentOver) {
  SimulatedPlatform p;
  const std::string zip = BuildZip({
      ZipEntry("docs/readme.txt").Comment("first").Flags(1).Crc(0xFFFFFFFF).CompressedSize(0x80000000u)
          .Size(0xFFFFFFFFu).Attributes(0x81A40020),
      ZipEntry("docs/").Method(0).Time(0).Date(DosDate(1999, 12, 31)).Crc(0).CompressedSize(0).Size(0).Attributes(16),
      ZipEntry("top.bin").Extra(std::string(9, 'x')).Flags(0x8000).Method(0xFFFF),
      ZipEntry("a\\b.txt").Comment("fourth"),
  });
  const Listing l = ListBytes(p, zip, "zip");
  const double when = DateSerial(2024, 3, 15, 10, 30, 42);
  const std::vector<Entry> expected = {
      {1, 4, "readme.txt", "zip", when, -1, INT32_MIN, 8, static_cast<int32_t>(0x81A40020), "docs/", 1, -1, "first"},
      {2, 4, "", "zip", DateSerial(1999, 12, 31), 0, 0, 0, 16, "docs/", 0, 0, "first"},
      {3, 4, "top.bin", "zip", when, 20, 10, -1, 32, "", -32768, 0x12345678, "first"},
      {4, 4, "b.txt", "zip", when, 20, 10, 8, 32, "a\\", 0, 0x12345678, "fourth"},
  };
  EXPECT_EQ(l.fileCount, 4);
  EXPECT_EQ(l.entries, expected);
  EXPECT_TRUE(p.SimBoxes().Shown().empty());
}

// Where the end record sits decides whether the 4096-byte tail search
// (from offset 1 in small files) finds it.
TEST(ZipReaderTest, TailSearchBoundaries) {
  struct Case { const char* boundary; std::string bytes; int32_t fileCount; /* 777: not recognised */ };
  const std::string entry = ZipCentralEntry(ZipEntry("a.txt"));
  auto withComment = [](size_t n) { return BuildZip({ZipEntry("a.txt")}, std::string(n, 'c'), std::string(100, 'L')); };
  const std::string zip = BuildZip({ZipEntry("a.txt")}, "", "");
  const Case cases[] = {
      {"empty file", "", 777},
      {"22-byte empty archive: offset 0 is skipped", ZipEndRecord(0, 0, 0), 777},
      // The central directory may follow the end record: its offset is absolute.
      {"end record at offset 1", "X" + ZipEndRecord(1, 0, 23) + entry, 1},
      {"no signature", std::string(5000, 'z'), 777},
      {"signature cut by the end of the file", std::string(100, 'z') + "PK\x05", 777},
      {"comment of 4074: record starts 4096 from the end", withComment(4074), 1},
      {"comment of 4075: record starts before the tail", withComment(4075), 777},
      {"stray signature in the comment wins (its fields: zeros)",
       BuildZip({ZipEntry("a.txt")}, "x " + std::string("PK\x05\x06", 4) + std::string(16, '\0') + " y", ""), 0},
      {"end record fields cut short read as zero", zip.substr(0, zip.size() - 22) + "PK\x05\x06\x00\x00\x00", 0},
      {"count 32767", [&] { auto z = zip; SetU16(z, z.size() - 14, 32767); return z; }(), 32767},
      {"count 32768 reads negative", [&] { auto z = zip; SetU16(z, z.size() - 14, 32768); return z; }(), -32768},
      {"count 65535 reads -1", [&] { auto z = zip; SetU16(z, z.size() - 14, 65535); return z; }(), -1},
  };
  for (const Case& c : cases) {
    SimulatedPlatform p;
    const Listing l = ListBytes(p, c.bytes, "zip");
    EXPECT_EQ(l.fileCount, c.fileCount) << c.boundary;
    const int32_t events = c.fileCount == 777 ? 0 : std::max(c.fileCount, 0);
    EXPECT_EQ(l.entries.size(), static_cast<size_t>(events)) << c.boundary;
    if (c.fileCount == 1) { EXPECT_EQ(l.entries[0].FileName, "a.txt") << c.boundary; }
  }
}

TEST(ZipReaderTest, OnlyExactLowerCaseExtensionsAndExistingFilesAreRead) {
  struct Case { const char* path; const char* ext; bool listed; };
  SimulatedPlatform p;
  p.SimFiles().AddFileWithContent("C:\\t.zip", BuildZip({ZipEntry("a.txt")}));
  p.SimFiles().AddFolder("C:\\dir.zip");
  for (const Case& c : {Case{"C:\\t.zip", "zip", true}, Case{"C:\\t.zip", ".zip", true}, Case{"C:\\t.zip", "ZIP", false},
                        Case{"C:\\t.zip", "zipx", false}, Case{"C:\\nope.zip", "zip", false},
                        Case{"C:\\dir.zip", "zip", false}}) {
    const Listing l = ListFile(PlatformRef(PlatformRef(), &p), c.path, c.ext);
    EXPECT_EQ(l.fileCount, c.listed ? 1 : 777) << c.path << " " << c.ext;
    ASSERT_EQ(l.entries.size(), c.listed ? 1u : 0u) << c.path << " " << c.ext;
    if (c.listed) { EXPECT_EQ(l.entries[0].ArchiveExt, c.ext); }
  }
}

TEST(ZipReaderTest, NamesAndCommentsBecomeUtf8) {
  struct Case { const char* what; std::string stored; uint16_t flags; std::string path, name; };
  const Case cases[] = {
      {"UTF-8 flag", "Gr\xC3\xBC\xC3\x9F" "e/\xC3\xA4.txt", 0x0800, "Grüße/", "ä.txt"},
      {"UTF-8 without the flag, as Unix tools write it", "\xE2\x82\xAC.txt", 0, "", "€.txt"},
      {"code page 437", "\x81" "ber\\\x8E.txt", 0, "über\\", "Ä.txt"},
      {"flag set but not UTF-8", "\x94" "l", 0x0800, "", "öl"},
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

TEST(ZipReaderTest, EntriesPastTheEndOfTheFileKeepTheLastHeader) {
  SimulatedPlatform p;
  // One entry stored after the end record, three announced.
  const Listing l = ListBytes(p, "X" + ZipEndRecord(3, 0, 23) + ZipCentralEntry(ZipEntry("a.txt").Comment("c")), "zip");
  ASSERT_EQ(l.entries.size(), 3u);
  EXPECT_EQ(l.entries[0].FileName, "a.txt");
  // The header keeps its bytes; name and comment buffers read as zeros.
  EXPECT_EQ(l.entries[2].FileName, std::string(5, '\0'));
  EXPECT_EQ(l.entries[2].Comments, std::string(1, '\0'));
  EXPECT_EQ(l.entries[2].CRC, l.entries[0].CRC);
  EXPECT_TRUE(p.SimBoxes().Shown().empty());
}

// A failing step shows an OK box and reading goes on with the next step.
TEST(ZipReaderTest, FailingStepsAreReportedAndReadingGoesOn) {
  struct Case { const char* what; std::string zip; std::vector<std::string> boxes, names; };
  std::string badName = ZipCentralEntry(ZipEntry("zz"));
  SetU16(badName, 28, 0x8000);  // name length -32768
  const std::string good = ZipCentralEntry(ZipEntry("good.txt"));
  std::string badExtra = ZipCentralEntry(ZipEntry("e.txt"));
  SetU16(badExtra, 30, 0xFFFF);  // extra length -1
  const std::string invalid = StandardErrorDescription(kErrInvalidCall) + kBox;
  const Case cases[] = {
      {"negative name length keeps the previous name", good + badName + ZipEndRecord(2, 0, 0),
       {invalid + "120"}, {"good.txt", "good.txt"}},
      {"negative extra length", badExtra + ZipEndRecord(1, 0, 0), {invalid + "140"}, {"e.txt"}},
      {"position overflow, once per entry", "X" + ZipEndRecord(2, 0, 0x7FFFFFF0),
       {"Overflow" + kBox + "110", "Overflow" + kBox + "110"}, {"", ""}},
  };
  for (const Case& c : cases) {
    SimulatedPlatform p;
    ClearError();
    const Listing l = ListBytes(p, c.zip, "zip");
    std::vector<std::string> names, boxes;
    for (const auto& e : l.entries) names.push_back(e.FileName);
    for (const auto& b : p.SimBoxes().Shown()) {
      boxes.push_back(b.text);
      EXPECT_EQ(b.style, 0) << c.what;
      EXPECT_EQ(b.title, "NxFileViewer") << c.what;
    }
    EXPECT_EQ(names, c.names) << c.what;
    EXPECT_EQ(boxes, c.boxes) << c.what;
    EXPECT_EQ(CurrentError().number, 0) << c.what;
  }
}

TEST(ZipReaderTest, ThrowingListenerIsReportedAndTheNextEntryStillArrives) {
  struct Thrower : Recorder {
    void FileFound(int32_t Index, int32_t Total, std::string_view FileName, std::string_view ArchiveExt,
                   double Modified, int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr, std::string_view Path,
                   int32_t flags, int32_t CRC, std::string_view Comments) override {
      Recorder::FileFound(Index, Total, FileName, ArchiveExt, Modified, Size, CompSize, Method, Attr, Path, flags, CRC,
                          Comments);
      if (Index == 1) RaiseError(kErrDuplicateKey);
    }
  };
  SimulatedPlatform p;
  p.SimFiles().AddFileWithContent("C:\\t.zip", BuildZip({ZipEntry("a"), ZipEntry("b")}));
  EXPECT_EQ(ListFile(PlatformRef(PlatformRef(), &p), "C:\\t.zip", "zip", Thrower()).entries.size(), 2u);
  ASSERT_EQ(p.SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(p.SimBoxes().Shown()[0].text, StandardErrorDescription(kErrDuplicateKey) + kBox + "190");
}

// Archives written by Debian's zip and gcab, read on both platforms (the
// real one only when it can open files).
TEST(ArchiverToolTest, ReadsArchivesOfTheRealTools) {
  struct Case { const char* tool; const char* ext; const char* write; const char* entries; int32_t method; };
  const Case cases[] = {
      {"zip", "zip", "zip -q -X t.zip a.txt sub/ 'sub/Grüße.txt' && printf 'for a\\n' | zip -q -c t.zip a.txt",
       "|a.txt|5|for a;sub/||0|for a;sub/|Grüße.txt|1000|for a;", 8},  // the comment carries over
      {"gcab", "cab", "gcab -c -z t.cab a.txt 'sub/Grüße.txt'", "|a.txt|5|;sub\\|Grüße.txt|1000|;", 1},  // MSZIP
  };
  for (const Case& c : cases) {
    if (!HaveTool(c.tool)) continue;
    testing::TempDir tmp;
    const std::string& dir = tmp.path();
    ASSERT_TRUE(RunTool("cd '" + dir + "' && mkdir sub && printf hello >a.txt && head -c 1000 /dev/zero >'sub/Grüße.txt' &&"
                        " touch -d '2021-06-01 12:34:56' a.txt sub 'sub/Grüße.txt' && " + c.write));
    const std::string path = dir + "/t." + c.ext;
    SimulatedPlatform sim;
    PlatformRef real = std::make_shared<LinuxPlatform>();
    for (const Listing& l : {ListBytes(sim, ReadHostFile(path), c.ext), ListFile(real, path, c.ext)}) {
      std::string seen;
      for (const auto& e : l.entries) {
        seen += e.Path + "|" + e.FileName + "|" + std::to_string(e.Size) + "|" + e.Comments + ";";
        EXPECT_EQ(e.Method == 0 ? c.method : e.Method, c.method) << e;  // folders are stored
        EXPECT_DOUBLE_EQ(e.Modified, DateSerial(2021, 6, 1, 12, 34, 56)) << e;
      }
      EXPECT_EQ(seen, c.entries) << c.tool;
    }
  }
}

}  // namespace
}  // namespace nxfv
