// The building blocks of the keyed collection: case mapping, key comparison
// and the hash index (the position list is checked through the collection).
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "nxfv/model/key_compare.h"
#include "nxfv/model/key_hash_index.h"
#include "nxfv/platform/case_table.h"
#include "nxfv/platform/utf8.h"

namespace nxfv {
namespace {

TEST(KeyCompareTest, OrderAndEqualityUnderBothModes) {
  struct Case { std::string a, b; bool text; int expected; /* sign */ } cases[] = {
      {"", "", false, 0},          {"", "a", false, -1},      {"a", "A", false, 1},      {"a", "A", true, 0},
      {"abc", "ABD", true, -1},    {"ab", "a", true, 1},
      {"_", "a", true, -1},  // folded to lower case: '_' stays before letters
      {"_", "A", false, 1},
      {"\xC3\xA4", "\xC3\x84", true, 0},  // ä / Ä
      {"\xC3\xA4", "\xC3\x84", false, 1},
      {"a\xC3\xA4", "A\xC3\x84x", true, -1},
      {"\xF0\x9F\x98\x80", "\xEF\xBF\xBD", false, -1},  // U+1F600 before U+FFFD in code units
      {"\xF0\x9F\x98\x80", "\xED\x9F\xBF", false, 1},   // but after U+D7FF
      {"a\xFF", "a\xC3\xBF", false, 1},  // a stray byte is not U+00FF: it sorts just after it
      {"a\xFF", "a\xC3\xBF", true, 1},
  };
  for (const Case& c : cases) {
    const int got = CompareKeys(c.a, c.b, c.text), back = CompareKeys(c.b, c.a, c.text);
    EXPECT_EQ((got > 0) - (got < 0), c.expected) << c.a << " vs " << c.b << " text " << c.text;
    EXPECT_EQ((back < 0) - (back > 0), c.expected) << c.a << " vs " << c.b << " text " << c.text;
    EXPECT_EQ(KeysEqual(c.a, c.b, c.text), c.expected == 0) << c.a << " vs " << c.b;
    EXPECT_TRUE(c.expected != 0 || HashKey(c.a, c.text) == HashKey(c.b, c.text)) << c.a;
  }
}

TEST(CaseMappingTest, SimpleMappingsOverAllOfUnicode) {
  struct Case { char32_t c, lower, upper; } cases[] = {
      {U'\U00010428', U'\U00010428', U'\U00010400'},  // Deseret, beyond the 16-bit range
      {U'\u0130', U'i', U'\u0130'},  // dotted capital I lowers to ASCII
      {U'\u017F', U'\u017F', U'S'},  // long s: upper S, no lower mapping of its own
      {U'\u00DF', U'\u00DF', U'\u00DF'},  // sharp s upper-cases to two letters: no simple mapping
      {U'\u01C5', U'\u01C6', U'\u01C4'},  // title-case digraph
      {U'\u03C2', U'\u03C2', U'\u03A3'},  // final sigma
      {U'\u00D7', U'\u00D7', U'\u00D7'},  // sign between the Latin-1 letter ranges
      {U'\u0378', U'\u0378', U'\u0378'},  // unassigned
      {U'\U0010FFFF', U'\U0010FFFF', U'\U0010FFFF'},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ToLowerCp(c.c), c.lower) << std::hex << static_cast<uint32_t>(c.c);
    EXPECT_EQ(ToUpperCp(c.c), c.upper) << std::hex << static_cast<uint32_t>(c.c);
    EXPECT_EQ(SimpleLowercase(c.c), c.lower) << std::hex << static_cast<uint32_t>(c.c);
  }
}

TEST(KeyCompareTest, TextModeFoldsCaseOverAllOfUnicode) {
  // Two characters are one key when their simple lowercase mappings agree.
  struct Case { std::u32string a, b; bool oneKey; } cases[] = {
      {U"\uFF21", U"\uFF41", true},  {U"\u1EA0", U"\u1EA1", true},  {U"\u01CD", U"\u01CE", true},
      {U"\u0386", U"\u03AC", true},  {U"\u0531", U"\u0561", true},  {U"\U00010400", U"\U00010428", true},
      {U"\u212A", U"K", true},       {U"\u1E9E", U"\u00DF", true},  {U"\u01C4", U"\u01C5", true},
      {U"\u03C3", U"\u03C2", false},  // final sigma has no lowercase mapping to sigma
      {U"\u017F", U"s", false},       {U"\u0131", U"i", false},  {U"\u00DF", U"ss", false},
      {U"\u0386", U"\u0391", false},  // the accent keeps them apart
  };
  for (const Case& c : cases) {
    // Around ASCII too, so that the fast path hands over at the right place.
    for (const bool wrapped : {false, true}) {
      const std::string a = FromU32(wrapped ? U"x" + c.a + U"Y" : c.a);
      const std::string b = FromU32(wrapped ? U"X" + c.b + U"y" : c.b);
      const int got = CompareKeys(a, b, true), back = CompareKeys(b, a, true);
      EXPECT_EQ(got == 0, c.oneKey) << a << " vs " << b;
      EXPECT_EQ((got > 0) - (got < 0), (back < 0) - (back > 0)) << a << " vs " << b;
      EXPECT_EQ(KeysEqual(a, b, true), c.oneKey) << a << " vs " << b;
      EXPECT_TRUE(!c.oneKey || HashKey(a, true) == HashKey(b, true)) << a << " vs " << b;
      EXPECT_FALSE(KeysEqual(a, b, false)) << a << " vs " << b;
    }
  }
}

TEST(KeyCompareTest, RandomBytesSortConsistently) {
  // Sorting arbitrary byte strings must be a strict weak order, or the
  // sort misbehaves; check transitivity on random triples.
  std::mt19937 rng(11);
  const char alphabet[] = {'a', 'B', '\xC3', '\x84', '\xA4', '\xF0', '\x9F', '\xEF', '\xFF', '\x80'};
  auto random = [&] {
    std::string s;
    for (uint32_t n = rng() % 5; n > 0; --n) s += alphabet[rng() % sizeof alphabet];
    return s;
  };
  for (bool text : {false, true}) {
    for (int i = 0; i < 20000; ++i) {
      const std::string a = random(), b = random(), c = random();
      const int ab = CompareKeys(a, b, text), bc = CompareKeys(b, c, text), ac = CompareKeys(a, c, text);
      ASSERT_TRUE(!(ab < 0 && bc < 0) || ac < 0) << a << " < " << b << " < " << c;
      ASSERT_TRUE(!(ab == 0 && bc == 0) || ac == 0) << a << " = " << b << " = " << c;
      ASSERT_TRUE(text || (ab == 0) == (a == b)) << a << " vs " << b;
      ASSERT_TRUE(ab != 0 || HashKey(a, text) == HashKey(b, text)) << a << " vs " << b;
    }
  }
}

TEST(KeyHashIndexTest, EraseKeepsCollidingEntriesFindable) {
  // Every key hashes into a handful of buckets, so runs wrap and overlap.
  KeyHashIndex index;
  std::vector<bool> present(3000, false);
  std::mt19937 rng(9);
  auto hashOf = [](uint32_t slot) { return (slot % 7) * 0x9E3779B9u | 15u; };
  for (int step = 0; step < 30000; ++step) {
    const uint32_t slot = rng() % 3000;
    if (present[slot]) {
      index.Erase(hashOf(slot), slot);
    } else {
      index.Insert(hashOf(slot), slot);
    }
    present[slot] = !present[slot];
    if (step % 1000 == 0) {
      size_t count = 0;
      for (uint32_t s = 0; s < present.size(); ++s) {
        const uint32_t found = index.Find(hashOf(s), [&](uint32_t c) { return c == s; });
        ASSERT_EQ(found, present[s] ? s : KeyHashIndex::kNone) << "step " << step;
        count += present[s];
      }
      ASSERT_EQ(index.Size(), count);
    }
  }
}

}  // namespace
}  // namespace nxfv
