#include "nxfv/platform/linux/file_name_escape.h"

#include <gtest/gtest.h>

#include <random>

#include "nxfv/platform/utf8.h"

namespace nxfv {
namespace {

TEST(FileNameEscape, EscapesExactlyTheBytesThatAreNotUtf8) {
  struct Case { std::string raw, text; } cases[] = {
      {"caf\xC3\xA9.txt", "caf\xC3\xA9.txt"},               // valid UTF-8 stays
      {"caf\xE9.txt", "caf\\xE9.txt"},                      // Latin-1 byte
      {"\xC3", "\\xC3"},                                    // truncated sequence
      {"\xC3(", "\\xC3("},                                  // bad continuation
      {"\xC0\xAF", "\\xC0\\xAF"},                           // overlong "/"
      {"\xED\xA0\x80", "\\xED\\xA0\\x80"},                  // surrogate
      {"\xF4\x90\x80\x80", "\\xF4\\x90\\x80\\x80"},         // above U+10FFFF
      {"\xF0\x9F\x98\x80.png", "\xF0\x9F\x98\x80.png"},     // 4-byte emoji
      {"a\\xc3", "a\\xc3"},                                 // lower-case hex never decodes
      {"a\\x41", "a\\x41"},                                 // below 80 never decodes
      {"a\\xC3", "a\\x5CxC3"},                              // literal look-alike
      {"a\\x5C", "a\\x5Cx5C"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(EscapeFileName(c.raw), c.text) << "raw: " << c.raw;
    EXPECT_TRUE(IsValidUtf8(EscapeFileName(c.raw))) << "raw: " << c.raw;
    EXPECT_EQ(UnescapeFileName(c.text), c.raw) << "text: " << c.text;
  }
}

// Paths typed by hand: only the exact form decodes.
TEST(FileNameEscape, TypedEscapesDecodeOnlyInTheirExactForm) {
  for (const char* literal : {"\\xE", "\\xG0", "\\xe9", "\\X E9", "\\x7F"})
    EXPECT_EQ(UnescapeFileName(literal), literal);
  EXPECT_EQ(UnescapeFileName("/tmp/caf\\xE9"), "/tmp/caf\xE9");
  EXPECT_EQ(UnescapeFileName("\\\\xE9"), "\\\xE9") << "the second backslash starts the escape";
}

// Every raw name survives the round trip, whatever mix of backslashes,
// hex-looking letters and stray bytes it holds.
TEST(FileNameEscape, RoundTripsRandomNames) {
  const char alphabet[] = {'\\', 'x', 'C', '3', '5', 'A', 'a', '\xC3', '\xA9', '\xFF', '\x80'};
  std::mt19937 rng(12345);
  std::uniform_int_distribution<size_t> pick(0, sizeof alphabet - 1), length(0, 9);
  std::string into;
  for (int i = 0; i < 20000; ++i) {
    std::string raw;
    for (size_t n = length(rng); n > 0; --n) raw += alphabet[pick(rng)];
    const std::string text = EscapeFileName(raw);
    ASSERT_TRUE(IsValidUtf8(text)) << i;
    ASSERT_EQ(UnescapeFileName(text), raw) << "escaped as " << text;
    EscapeFileNameInto(raw, into);
    ASSERT_EQ(into, text);
  }
}

}  // namespace
}  // namespace nxfv
