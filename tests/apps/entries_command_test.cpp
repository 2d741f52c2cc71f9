#include "nxfv/entries_command.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "archive/archive_writer.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv::cli {
namespace {

using namespace testing_archive;

// Entries as the tests below expect them: encrypted + UTF-8 flags, deflate,
// 2024-03-15 10:30:42, CRC 0xDEADBEEF, a size of 2 GiB.
std::string Zip(const std::vector<std::pair<std::string, std::string>>& namesAndComments) {
  std::vector<ZipEntryLayout> entries;
  for (const auto& [name, comment] : namesAndComments) {
    entries.push_back(ZipEntry(name).Comment(comment).Flags(0x0801).Crc(0xDEADBEEF).CompressedSize(7).Size(0x80000000u));
  }
  return BuildZip(entries, "", "L");
}

struct CommandRun {
  int code;
  std::string out, err;
};

CommandRun Entries(Platform& p, const std::vector<std::string>& args) {
  std::ostringstream out, err;
  const int code = RunEntriesCommand(args, p, out, err);
  return {code, out.str(), err.str()};
}

TEST(EntriesCommandTest, PrintsOneJsonObjectPerEntryWithKeysInEventOrder) {
  SimulatedPlatform p;
  p.SimFiles().AddFileWithContent("C:\\data\\Pack.ZIP", Zip({{"docs/\"q\"\\\x01.txt", "note"}, {"b", ""}}));
  const CommandRun r = Entries(p, {"C:\\data\\Pack.ZIP"});
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out,
            "{\"Index\":1,\"Total\":2,\"FileName\":\"\\\"q\\\"\\\\\\u0001.txt\",\"ArchiveExt\":\"zip\","
            "\"Modified\":45366.43798611112,\"Size\":-2147483648,\"CompSize\":7,\"Method\":8,\"Attr\":32,"
            "\"Path\":\"docs/\",\"flags\":2049,\"CRC\":-559038737,\"Comments\":\"note\"}\n"
            "{\"Index\":2,\"Total\":2,\"FileName\":\"b\",\"ArchiveExt\":\"zip\","
            "\"Modified\":45366.43798611112,\"Size\":-2147483648,\"CompSize\":7,\"Method\":8,\"Attr\":32,"
            "\"Path\":\"\",\"flags\":2049,\"CRC\":-559038737,\"Comments\":\"note\"}\n");
  // The date number reads back exactly: 2024-03-15 10:30:42 as the reader
  // computes it, ms / 86400000 - 109205.
  const double printed = std::strtod(r.out.c_str() + r.out.find("\"Modified\":") + 11, nullptr);
  EXPECT_EQ(printed, static_cast<double>(13354972242000LL) / 86400000.0 - 109205.0);
}

TEST(EntriesCommandTest, ExtensionOptionChoosesTheReader) {
  struct Case { std::vector<std::string> args; size_t lines; bool warns; };
  SimulatedPlatform p;
  p.SimFiles().AddFileWithContent("C:\\a.bin", Zip({{"x", ""}}));
  p.SimFiles().AddFileWithContent("C:\\b.zip", Zip({{"x", ""}}));
  const Case cases[] = {
      {{"C:\\a.bin"}, 0, true},
      {{"--ext", "zip", "C:\\a.bin"}, 1, false},
      {{"C:\\a.bin", "--ext=.zip"}, 1, false},
      {{"--ext", "cab", "C:\\b.zip"}, 0, false},  // not a cabinet: nothing
      {{"--ext", "ZIP", "C:\\b.zip"}, 0, true},   // the reader wants lower case
  };
  for (const Case& c : cases) {
    const CommandRun r = Entries(p, c.args);
    EXPECT_EQ(r.code, 0) << c.args[0];
    EXPECT_EQ(static_cast<size_t>(std::count(r.out.begin(), r.out.end(), '\n')), c.lines) << c.args[0];
    EXPECT_EQ(!r.err.empty(), c.warns) << c.args[0] << ": " << r.err;
  }
  // Why a well-formed archive gave no or wrong events is said aside.
  p.SimFiles().AddFileWithContent("C:\\sfx.zip", "SFX stub!" + Zip({{"x", ""}}));
  const CommandRun sfx = Entries(p, {"C:\\sfx.zip"});
  EXPECT_EQ(sfx.code, 0);
  EXPECT_NE(sfx.err.find("9 bytes of data before"), std::string::npos) << sfx.err;
}

TEST(EntriesCommandTest, UsageErrorsAndMissingArchives) {
  struct Case { std::vector<std::string> args; int code; const char* errPart; };
  SimulatedPlatform p;
  p.SimFiles().AddFolder("C:\\dir.zip");
  p.SimFiles().AddFileWithContent("C:\\a.zip", Zip({}));
  const Case cases[] = {
      {{}, 2, "nxfv entries: missing ARCHIVE"},
      {{"C:\\nope.zip"}, 1, "C:\\nope.zip: no such file"},
      {{"C:\\dir.zip"}, 1, "is a folder"},
  };
  for (const Case& c : cases) {
    const CommandRun r = Entries(p, c.args);
    EXPECT_EQ(r.code, c.code) << r.err;
    EXPECT_NE(r.err.find(c.errPart), std::string::npos) << r.err;
    EXPECT_EQ(r.out, "");
  }
  const CommandRun help = Entries(p, {"--help"});
  EXPECT_EQ(help.code, 0);
  EXPECT_NE(help.out.find("--ext EXT"), std::string::npos);
}

TEST(EntriesCommandTest, DefaultExtensionIsTheLowerCaseSuffix) {
  struct Case { const char* path; const char* ext; } cases[] = {
      {"C:\\x\\A.ZIP", "zip"}, {"/t/b.Cab", "cab"}, {"/t/.cab", "cab"}, {"/a.b/c", ""}, {"x.tar.gz", "gz"}, {"dot.", ""}};
  for (const Case& c : cases) EXPECT_EQ(DefaultArchiveExt(c.path), c.ext) << c.path;
}

}  // namespace
}  // namespace nxfv::cli
