#include "nxfv/columns/formatting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "nxfv/platform/sim/simulated_platform.h"
#include "nxfv/platform/variant.h"

namespace nxfv {
namespace {

using namespace std::string_literals;

// Only the number separators matter to these texts.
LocaleFormats German() {
  LocaleFormats f;
  f.thousandsSeparator = ".";
  f.decimalSeparator = ",";
  return f;
}

TEST(GetAttrStringTest, OneLetterPerBitWithTheDeliberateDuplicates) {
  struct Case { Variant mask; const char* text; } cases[] = {
      {Variant(int32_t{1024}), "..........l...."},  // reparse point: the second "l"
      {Variant(int32_t{8192}), ".............?."},  // not content-indexed: the second "?"
      {Variant(int32_t{32767}), "rhsvdalnt?lco?e"},
      {Variant(int32_t{32768}), "..............."},  // bits above 2^14 are ignored
      {Variant(NullValue{}), "..............."},
      {Variant(int32_t{-1}), "rhsvdalnt?lco?e"},  // a negative Long is all bits
      {Variant("34"), ".h...a........."},
      {Variant("abc"), "..............."},
      {Variant(4294967298.0), ".h............."},   // 2^32 + 2: the low 32 bits
      {Variant(-4294967295.0), "r.............."},  // two's complement low word: 1
  };
  for (const Case& c : cases) EXPECT_EQ(GetAttrString(c.mask), c.text) << c.mask.AsString();
  EXPECT_EQ(GetAttrString(uint32_t{0x8022}), ".h...a.........");
}

TEST(NiceCaseTest, OnlySingleCaseNamesAreRecased) {
  SimulatedPlatform p;
  struct Case { std::string in, out; } cases[] = {
      {"README.TXT", "Readme.txt"},
      {"ReadMe.txt", "ReadMe.txt"},      // mixed case stays
      {"o'neil-smith", "O'neil-smith"},  // only whitespace separates words
      {"HELLO\tWORLD\rAGAIN", "Hello\tWorld\rAgain"},
      {"a\0b"s, "A\0B"s},  // NUL separates words too
      {"ÉCOLE ÉTÉ", "École Été"},
      {"école ÉTÉ", "école ÉTÉ"},  // mixed across words: unchanged
      {"ΑΒΓ", "ΑΒΓ"},              // no Windows-1252 case pairs: equals both copies, and stays
  };
  for (const Case& c : cases) EXPECT_EQ(NiceCase(p, c.in), c.out) << "input: " << c.in;
}

TEST(SizeTextTest, KilobytesRoundedAndGrouped) {
  SimulatedPlatform p;
  struct Case { double bytes; const char* en; const char* de; } cases[] = {
      {0, "1 KB", "1 KB"},  // an empty file deliberately shows 1 KB
      {-5, "1 KB", "1 KB"},
      {1535, "1 KB", "1 KB"},
      {2560, "3 KB", "3 KB"},  // halves round up, not to even
      {1024.0 * 1000000, "1,000,000 KB", "1.000.000 KB"},
      {18446744073709551615.0, "18,014,398,509,481,984 KB", "18.014.398.509.481.984 KB"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SizeText(p, c.bytes), c.en) << c.bytes;
    EXPECT_EQ(SizeText(German(), c.bytes), c.de) << c.bytes;
  }
  EXPECT_EQ(SizeText(p, std::nan("")), "");
  EXPECT_EQ(SizeText(p, Variant()), "1 KB");
  EXPECT_EQ(SizeText(p, Variant(NullValue{})), "");
  EXPECT_EQ(SizeText(p, Variant("abc")), "");
  EXPECT_EQ(SizeText(p, Variant("2,048")), "2 KB");
}

TEST(GroupedNumberTextTest, RoundsHalvesAwayFromZeroAndGroups) {
  LocaleFormats en, four, none;
  four.groupingSize = 4;
  four.thousandsSeparator = "\u202F";  // a multi-byte separator
  none.groupingSize = 0;
  struct Case { const LocaleFormats& f; double value; const char* text; } cases[] = {
      {en, 999, "999"},    {en, -1234567, "-1,234,567"}, {en, 0.5, "1"}, {en, -0.5, "-1"},
      {en, -0.4, "0"},  // no "-0"
      {four, 12345, "1\u202F2345"}, {four, -1234567, "-123\u202F4567"}, {none, 1048576, "1048576"},
      {en, std::numeric_limits<double>::infinity(), ""},
  };
  for (const Case& c : cases) EXPECT_EQ(GroupedNumberText(c.f, c.value), c.text) << c.value;
}

TEST(MethodTextTest, ZipRarAceCab) {
  struct Case { std::string (*fn)(int32_t, int32_t); int32_t method, flags; const char* text; } cases[] = {
      {ZipMethodText, 2, 0, "Reduced:1"},  {ZipMethodText, 5, 0, "Reduced:4"},
      {ZipMethodText, 6, 0, "Imploded:8KDict:2Tree"}, {ZipMethodText, 6, 2, "Imploded:4KDict:2Tree"},  // deliberate order
      {ZipMethodText, 6, 4, "Imploded:8KDict:3Tree"}, {ZipMethodText, 6, 6, "Imploded:4KDict:3Tree"},
      {ZipMethodText, 8, 2, "Deflated:X"}, {ZipMethodText, 8, 4, "Deflated:F"}, {ZipMethodText, 8, 6, "Deflated:S"},
      {ZipMethodText, 8, 8, "Deflated:N"},   // only bits 1 and 2 count
      {ZipMethodText, 8, -1, "Deflated:N"},  // -1 \ 2 truncates to 0
      {ZipMethodText, 8, -4, "Deflated:F"},  // -4 \ 2 = -2, and -2 And 3 = 2
      {ZipMethodText, 10, 0, "ImplDCL"},   {ZipMethodText, 11, 0, "Unknown"}, {ZipMethodText, -1, 0, "Unknown"},
      {RarMethodText, 48, 0, "Stored"},    {RarMethodText, 49, 0, "Unknown"},
      {RarMethodText, 51, 32, "Deflated:128Kb"}, {RarMethodText, 51, 224, "Deflated:8192Kb"},
      {RarMethodText, 51, 256, "Deflated:64Kb"},   // only three bits of the dictionary size
      {RarMethodText, 51, -32, "Deflated:8192Kb"},  // -1 And 7 = 7
  };
  for (const Case& c : cases) EXPECT_EQ(c.fn(c.method, c.flags), c.text) << c.method << "/" << c.flags;
  EXPECT_EQ(AceMethodText(1), "Deflated:1024Kb");
  EXPECT_EQ(CabMethodText(2), "Lzx");
}

TEST(MethodTextTest, EncryptionFlagByArchiveKind) {
  struct Case { const char* ext; int32_t flags; bool encrypted; } cases[] = {
      {"zip", 1, true}, {"zip", 4, false}, {"ZIP", -1, true}, {"rar", 4, true},
      {"rar", 1, false}, {"ace", 3, false}, {"cab", -1, false},
  };
  for (const Case& c : cases) EXPECT_EQ(ArchiveEntryEncrypted(c.ext, c.flags), c.encrypted) << c.ext << "/" << c.flags;
}

TEST(RatioAndCrcTextTest, PercentPatternAndUpperHex) {
  struct Ratio { float ratio; const char* en; const char* de; } ratios[] = {
      {0.05f, "05.0%", "05,0%"},  {-0.3f, "00.0%", "00,0%"},    {1.0f, "100.0%", "100,0%"},  // a CAB entry
      {0.123f, "12.3%", "12,3%"}, {0.9996f, "100.0%", "100,0%"}, {std::nanf(""), "00.0%", "00,0%"},
  };
  for (const Ratio& c : ratios) {
    EXPECT_EQ(RatioText(LocaleFormats{}, c.ratio), c.en) << c.ratio;
    EXPECT_EQ(RatioText(German(), c.ratio), c.de) << c.ratio;
  }
  struct Crc { int64_t crc; const char* text; } crcs[] = {
      {0, "0"}, {0x1A2B, "1A2B"}, {INT32_MIN, "80000000"},
      {static_cast<int32_t>(0xDEADBEEFu), "DEADBEEF"},  // negative as a signed CRC
      {0xDEADBEEFu, "DEADBEEF"},                         // the same CRC unsigned
  };
  for (const Crc& c : crcs) EXPECT_EQ(CrcText(c.crc), c.text) << c.crc;
}

TEST(FitFilenameToSizeTest, EllipsisInTheMiddleAtSevenPixelsACharacter) {
  SimulatedPlatform p;
  const std::string path = "C:\\Program Files\\App\\data\\file.txt";  // 34 characters
  struct Case { std::string in; int32_t width; std::string out; } cases[] = {
      {path, 238, path},                                     // exactly fits
      {path, 237, "C:\\Program Files\\App\\...\\file.txt"},  // 33 characters
      {path, 84, "...\\file.txt"},                           // 12: the whole head gone
      {path, 83, "file.tx..."},                              // then the name itself is cut
      {path, 21, "..."},
      {path, 20, ""},
      {"C:\\Über\\Ärger\\Öl.txt", 105, "C:\\Üb...\\Öl.txt"},  // characters, not bytes
      {"/home/user/docs/file.txt", 105, "/ho.../file.txt"},
      // The buffer round trip: cut at NUL; trimmed only when untouched.
      {"C:\\a.txt\0junk"s, 1000, "C:\\a.txt"},
      {"  C:\\a.txt  ", 1000, "C:\\a.txt"},
      {"  C:\\a.txt \0"s, 1000, "  C:\\a.txt "},
      {"  C:\\long\\folder\\x.txt", 98, "  C:\\...\\x.txt"},  // shortened: never trimmed
  };
  for (const Case& c : cases) EXPECT_EQ(FitFilenameToSize(p, c.in, c.width, 0), c.out) << c.in << " @ " << c.width;
}

}  // namespace
}  // namespace nxfv
