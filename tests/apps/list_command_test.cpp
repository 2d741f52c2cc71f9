#include "nxfv/list_command.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "archive/archive_writer.h"
#include "nxfv/entries_command.h"
#include "nxfv/list_output.h"
#include "nxfv/platform/sim/simulated_platform.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "nxfv/platform/variant.h"
#include "platform_linux/temp_dir.h"

namespace nxfv::cli {
namespace {

class ListCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(tmp.WriteFile("b.txt", std::string(2048, 'b')) && tmp.WriteFile("a \"q\".txt", "a") && tmp.MakeDir("sub"));
  }
  int Run(std::vector<std::string> args) {
    out.str("");
    err.str("");
    return RunListCommand(args, platform, out, err);
  }
  testing::TempDir tmp;
  const std::string dir = tmp.path();
  LinuxPlatform platform;
  std::ostringstream out, err;
};

TEST_F(ListCommandTest, ExitCodesAndUsageErrors) {
  struct Case { std::vector<std::string> args; int code; const char* errPart; } cases[] = {
      {{}, 2, "nxfv list: missing PATH"},
      {{"--view-options", "many", "/"}, 2, "needs a number, not 'many'"},
      {{"--sort", "nam:sideways", "/"}, 2, "--sort: bad sort direction"},
      {{"--sort", "a,b,c,d,e,f", "--sort=g,h,i,j,k", "/"}, 2, "at most ten sort columns"},  // repeats add up
      {{"/no/such/place"}, 1, "no such file or folder"},
      {{"--drives", "/"}, 2, "nxfv list: PATH may not be given with --drives"},
      {{"--drives", "--special", "home"}, 2, "--drives and --special exclude each other"},
      {{"--special", "attic"}, 2, "--special: unknown folder 'attic' (one of home, desktop"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run(c.args), c.code) << c.errPart;
    EXPECT_NE(err.str().find(c.errPart), std::string::npos) << err.str();
  }
  EXPECT_EQ(Run({"--help"}), 0);
  EXPECT_NE(out.str().find("--view-options"), std::string::npos);
}

TEST_F(ListCommandTest, TableShowsTheVisibleColumnsInViewOrder) {
  ASSERT_EQ(Run({"--no-goup", dir, "--sort", "siz:desc"}), 0);
  std::istringstream lines(out.str());
  std::string header, first, second;
  std::getline(std::getline(std::getline(lines, header), first), second);
  EXPECT_EQ(header.rfind("Name", 0), 0u);
  EXPECT_NE(header.find("Modified"), std::string::npos);
  EXPECT_EQ(header.find("Attributes"), std::string::npos);
  EXPECT_EQ(first.rfind("sub ", 0), 0u);  // descending: folders first
  EXPECT_EQ(second.rfind("b.txt", 0), 0u);
  EXPECT_NE(second.find("2 KB"), std::string::npos);
  EXPECT_EQ(second.substr(header.find("Ext"), 4), "txt ");  // columns line up under their captions
}

TEST_F(ListCommandTest, JsonHoldsColumnsRowsAndItems) {
  ASSERT_EQ(Run({dir, "--json", "--no-folders", "--pattern", "*.txt"}), 0);
  const std::string j = out.str();
  EXPECT_EQ(j.rfind("{\"path\":\"" + dir + "\",\"insideArchive\":false,\"columns\":[{\"key\":\"nam\"", 0), 0u);
  EXPECT_NE(j.find("{\"key\":\"sort\",\"caption\":\"sort\",\"width\":0}"), std::string::npos);
  EXPECT_NE(j.find("\"key\":\"a \\\"q\\\".txt\""), std::string::npos);  // quotes escaped
  EXPECT_NE(j.find("\"FileSize\":2048"), std::string::npos);
  EXPECT_NE(j.find("\"ArchivInfo\":{\"IsInArchive\":false"), std::string::npos);
  EXPECT_EQ(j.find("\"sub\",\"text\""), std::string::npos);
  EXPECT_NE(j.find("\"key\":\"sysgoup\""), std::string::npos);
}

TEST_F(ListCommandTest, AFolderWhoseNameIsNotUtf8IsNamedAsItsEntriesAre) {
  const std::string odd = dir + "/caf\xE9";
  std::system(("mkdir '" + odd + "' && touch '" + odd + "/x'").c_str());
  ASSERT_EQ(Run({"--json", odd}), 0) << err.str();
  EXPECT_EQ(out.str().rfind("{\"path\":\"" + dir + "/caf\\\\xE9\",", 0), 0u) << out.str().substr(0, 80);
  EXPECT_NE(out.str().find("\"key\":\"x\""), std::string::npos);
}

// The reasons themselves are the file system's (checked there); here how
// each command tells them and what it still prints.
TEST_F(ListCommandTest, BothCommandsSayWhyAPathCannotBeRead) {
  ASSERT_EQ(symlink("loop", (dir + "/loop").c_str()), 0);
  const std::string file = dir + "/b.txt", tooLong = dir + "/" + std::string(300, 'n');
  // list: what exists is listed as usual (only the go-up row) before the reason.
  struct Case { std::string path; const char* reason; bool listed; } cases[] = {
      {file, "not a folder", true},
      {dir + "/loop", "too many levels of symbolic links", true},
      {tooLong, "path too long", false},
      {dir + "/none", "no such file or folder", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run({c.path}), 1) << c.path;
    EXPECT_EQ(err.str(), "nxfv: " + c.path + ": " + c.reason + "\n");
    EXPECT_EQ(!out.str().empty(), c.listed) << out.str();
  }
  auto entries = [&](const std::vector<std::string>& args) {
    std::ostringstream entriesOut, entriesErr;
    EXPECT_EQ(RunEntriesCommand(args, platform, entriesOut, entriesErr), 1) << args.back();
    return entriesErr.str();
  };
  EXPECT_EQ(entries({file + "/inner.zip"}), "nxfv: " + file + "/inner.zip: not a folder\n");
  EXPECT_EQ(entries({dir + "/sub"}), "nxfv: " + dir + "/sub: is a folder, not an archive\n");

  // As a user the folders' permissions apply to: the unreadable folder shows
  // its go-up row and says why.
  ASSERT_EQ(chmod((dir + "/sub").c_str(), 0) | chmod(file.c_str(), 0) | chmod(dir.c_str(), 0755), 0);
  EXPECT_TRUE(testing::AsUnprivilegedUser([&] {
    const bool folder = Run({dir + "/sub"}) == 1 && err.str() == "nxfv: " + dir + "/sub: permission denied\n" &&
                        !out.str().empty();
    const bool inner = Run({dir + "/sub/inner"}) == 1 && err.str() == "nxfv: " + dir + "/sub/inner: permission denied\n";
    return folder && inner && entries({"--ext", "zip", file}) == "nxfv: " + file + ": permission denied\n";
  }));
  chmod((dir + "/sub").c_str(), 0755);
}

TEST(ListCommandArchiveTest, AValidArchiveThatCannotBeShownIsToldOnce) {
  using namespace testing_archive;
  const std::string zip = BuildZip({ZipEntry("a.txt"), ZipEntry("b.txt")});
  for (const auto& [bytes, boxes] : {std::pair{zip, 0u}, std::pair{"stub" + zip, 1u}}) {
    SimulatedPlatform p;
    p.SimFiles().AddFileWithContent("C:\\t.zip", bytes);
    std::ostringstream out, err;
    EXPECT_EQ(RunListCommand({"--json", "C:\\t.zip"}, p, out, err), 0) << err.str();
    ASSERT_EQ(p.SimBoxes().Shown().size(), boxes);
    if (boxes) {
      EXPECT_EQ(p.SimBoxes().Shown()[0].title, ".LoadArchive");
      EXPECT_NE(p.SimBoxes().Shown()[0].text.find("4 bytes of data before"), std::string::npos);
    }
  }
}

// 77 bytes: one central header whose name length (65,535) runs past the file,
// and an end record claiming 32,767 entries. The command finishes with a
// few lines of report, not one per entry, and no runaway memory.
TEST_F(ListCommandTest, ATinyArchiveClaimingEveryEntryListsQuietly) {
  std::string zip("PK\x01\x02", 4);
  zip += std::string(24, '\0') + "\xff\xff" + std::string(16, '\0') + "abcdefghi";
  zip += std::string("PK\x05\x06\0\0\0\0\xff\x7f\xff\x7f\x37\0\0\0\0\0\0\0\0\0", 22);
  ASSERT_EQ(zip.size(), 77u);
  std::ofstream(dir + "/h.zip", std::ios::binary) << zip;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(Run({dir + "/h.zip"}), 0);
  platform.MessageBoxHandler().FlushRepeats();
  const std::string boxes = ::testing::internal::GetCapturedStderr();
  EXPECT_NE(boxes.find("cArchive.GetZip"), std::string::npos) << boxes;
  EXPECT_LT(boxes.size(), 500u) << boxes;
}

TEST(JsonTextTest, StringsNumbersAndVariants) {
  struct Case { Variant value; const char* json; } cases[] = {
      {Variant(), "null"},
      {Variant(true), "true"},
      {Variant(int32_t{-7}), "-7"},
      {Variant(0.1), "0.1"},
      {Variant(DateValue{45366.5}), "45366.5"},
      {Variant("a\tb\x01\"\\"), "\"a\\tb\\u0001\\\"\\\\\""},
  };
  for (const auto& c : cases) {
    std::string s;
    AppendJsonVariant(s, c.value);
    EXPECT_EQ(s, c.json);
  }
}

}  // namespace
}  // namespace nxfv::cli
