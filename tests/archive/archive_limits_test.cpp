#include "nxfv/archive/archive_limits.h"

#include <gtest/gtest.h>

#include "archive_writer.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv::testing_archive {
namespace {

std::string TwoEntryZip(const std::string& prefix = "PK-local-data") {
  return BuildZip({ZipEntry("a.txt"), ZipEntry("b.txt")}, "", prefix);
}

// The end record's two entry counts (this disk, total) set to n.
std::string WithCount(std::string zip, uint16_t n) {
  const size_t fields = zip.rfind("PK\x05\x06") + 4;
  SetU16(zip, fields + 4, n);
  SetU16(zip, fields + 6, n);
  return zip;
}

// A ZIP64 locator (disk, record offset, disk count) right before the end record.
std::string WithZip64Locator(std::string zip) {
  std::string locator = "PK\x06\x07";
  PutU32(locator, 0);
  PutU32(locator, 0);
  PutU32(locator, 0);
  PutU32(locator, 1);
  return zip.insert(zip.rfind("PK\x05\x06"), locator);
}

std::string CabWithFiles(uint16_t n) {
  std::string cab = BuildCab({{CabFile("a.txt")}});
  SetU16(cab, 28, n);  // cFiles
  return cab;
}

TEST(ArchiveLimitsTest, SaysWhyAWellFormedArchiveIsNotListed) {
  struct Case {
    const char* what;
    std::string bytes;
    const char* ext;
    const char* noticePart;  // "" = no notice
  } cases[] = {
      {"plain zip", TwoEntryZip(), "zip", ""},
      {"plain zip, dotted extension", TwoEntryZip(), ".zip", ""},
      {"empty zip", BuildZip({}, "", ""), "zip", ""},
      {"zip with a comment", BuildZip({ZipEntry("a")}, "note"), "zip", ""},
      {"zip64 locator", WithZip64Locator(TwoEntryZip()), "zip", "ZIP64"},
      {"16-bit count full", WithCount(TwoEntryZip(), 0xFFFF), "zip", "65,535 entries or more"},
      {"count above the signed limit", WithCount(TwoEntryZip(), 40000), "zip", "40,000 entries"},
      {"count at the limit", WithCount(TwoEntryZip(), 32767), "zip", ""},
      {"data prepended", "SFX stub!" + TwoEntryZip(), "zip", "9 bytes of data before"},
      {"offset past the directory", TwoEntryZip().substr(1), "zip", "1 byte into the end record"},
      {"not a zip at all", std::string(100, 'x'), "zip", ""},
      {"zip read as a cab", TwoEntryZip(), "cab", ""},
      {"cab", BuildCab({{CabFile("a.txt")}}), "cab", ""},
      {"cab at the limit", CabWithFiles(32767), "cab", ""},
      {"cab above the limit", CabWithFiles(32768), "cab", "32,768 files"},
      {"unknown extension", CabWithFiles(40000), "rar", ""},
  };
  for (const Case& c : cases) {
    SimulatedPlatform platform;
    platform.SimFiles().AddFileWithContent("C:\\t.arc", c.bytes);
    const std::string notice = ArchiveLimitNotice(platform, "C:\\t.arc", c.ext);
    if (*c.noticePart == '\0') {
      EXPECT_EQ(notice, "") << c.what;
    } else {
      EXPECT_NE(notice.find(c.noticePart), std::string::npos) << c.what << ": " << notice;
    }
  }
  SimulatedPlatform platform;
  EXPECT_EQ(ArchiveLimitNotice(platform, "C:\\missing.zip", "zip"), "");
}

}  // namespace
}  // namespace nxfv::testing_archive
