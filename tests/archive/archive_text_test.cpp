#include "nxfv/archive/archive_text.h"

#include <gtest/gtest.h>

#include "nxfv/platform/utf8.h"

namespace nxfv {
namespace {

std::string Decode(const std::string& raw, LegacyCodePage cp) {
  return DecodeArchiveText(std::span(reinterpret_cast<const uint8_t*>(raw.data()), raw.size()), cp);
}

TEST(ArchiveTextTest, DecodesThroughTheLegacyCodePageOnlyWhenNotUtf8) {
  struct Case { std::string raw; LegacyCodePage cp; std::string expected; } cases[] = {
      {"plain.txt", LegacyCodePage::kCp437, "plain.txt"},
      {std::string("a\0b", 3), LegacyCodePage::kCp437, std::string("a\0b", 3)},
      {"\xC3\xA9", LegacyCodePage::kCp437, "é"},           // valid UTF-8 wins
      {"\xC3", LegacyCodePage::kCp437, "├"},               // truncated sequence
      {"\xC0\x80", LegacyCodePage::kCp437, "└Ç"},          // overlong NUL is not UTF-8
      {"\xED\xA0\x80", LegacyCodePage::kWindows1252, "í\xC2\xA0€"},  // surrogate
      {"\x80\x8D\x9F\xFF", LegacyCodePage::kWindows1252, "€\xC2\x8DŸÿ"},
      {"\x80\xFF", LegacyCodePage::kCp437, "Ç\xC2\xA0"},
  };
  for (const Case& c : cases) {
    const std::string got = Decode(c.raw, c.cp);
    EXPECT_EQ(got, c.expected) << c.raw;
    EXPECT_TRUE(IsValidUtf8(got)) << c.raw;
  }
  // Every single byte decodes to valid text in both code pages.
  for (int b = 0; b < 256; ++b) {
    for (LegacyCodePage cp : {LegacyCodePage::kCp437, LegacyCodePage::kWindows1252}) {
      EXPECT_TRUE(IsValidUtf8(Decode(std::string(1, static_cast<char>(b)), cp))) << b;
    }
  }
}

TEST(ArchiveTextTest, SplitsAtLastSlashElseLastBackslash) {
  struct Case { const char* stored; const char* path; const char* name; } cases[] = {
      {"plain", "", "plain"},  {"docs/", "docs/", ""}, {"a\\b\\c.txt", "a\\b\\", "c.txt"},
      {"a\\b/c\\d", "a\\b/", "c\\d"}, {"", "", ""},
  };
  for (const Case& c : cases) {
    std::string path = "old", name = "old";
    SplitArchiveName(c.stored, path, name);
    EXPECT_EQ(path + "|" + name, std::string(c.path) + "|" + c.name) << c.stored;
  }
}

}  // namespace
}  // namespace nxfv
