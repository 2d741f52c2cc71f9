#include "nxfv/model/key_compare.h"

#include <algorithm>
#include <functional>

#include "nxfv/platform/utf8.h"

namespace nxfv {

namespace {

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

// Text mode folds every character to its simple lowercase mapping (one code
// point to one, over all of Unicode): two keys are one when their folded
// forms are equal. ASCII folds here without a call, everything else through
// ToLowerCp's table. Order and hash both work on the folded units, so they
// agree with equality even where a character folds to ASCII (the Kelvin
// sign to 'k').
char32_t FoldAscii(char32_t c) { return (c >= 'A' && c <= 'Z') ? c + ('a' - 'A') : c; }

// One unit of the comparison order. A character maps to its first UTF-16
// code unit (high bits) and then its code point; an invalid byte maps to a
// value no character takes. Distinct units give distinct values.
uint64_t UnitOrder(char32_t cp, bool valid) {
  if (!valid) return (uint64_t{cp} << 22) | (uint64_t{cp} << 1) | 1;
  const uint64_t first = cp < 0x10000 ? cp : 0xD800 + ((cp - 0x10000) >> 10);
  return (first << 22) | (uint64_t{cp} << 1);
}

// Decodes the unit at s[i] and tells whether it was a valid character.
char32_t NextUnit(std::string_view s, size_t& i, bool& valid) {
  const size_t start = i;
  const char32_t cp = DecodeUtf8(s, i);
  // DecodeUtf8 passes an invalid lead byte through as itself, one byte.
  valid = !(i - start == 1 && static_cast<unsigned char>(s[start]) >= 0x80);
  return cp;
}

// Slow path from a position that is a unit boundary in both strings.
int CompareFrom(std::string_view a, std::string_view b, size_t i, bool text) {
  size_t j = i;
  while (i < a.size() && j < b.size()) {
    bool va = true, vb = true;
    char32_t ca = NextUnit(a, i, va);
    char32_t cb = NextUnit(b, j, vb);
    if (text) {
      if (va) ca = ToLowerCp(ca);
      if (vb) cb = ToLowerCp(cb);
    }
    const uint64_t ua = UnitOrder(ca, va), ub = UnitOrder(cb, vb);
    if (ua != ub) return ua < ub ? -1 : 1;
  }
  if (i < a.size()) return 1;
  if (j < b.size()) return -1;
  return 0;
}

}  // namespace

int CompareKeys(std::string_view a, std::string_view b, bool text) {
  if (!text) {
    const auto [pa, pb] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (pa == a.end() && pb == b.end()) return 0;
    if (pa == a.end()) return -1;
    if (pb == b.end()) return 1;
    // An ASCII byte never continues a sequence, so where both differing
    // bytes are ASCII every sequence before them lies in the shared prefix
    // and the bytes themselves decide.
    if (IsAscii(*pa) && IsAscii(*pb)) return static_cast<unsigned char>(*pa) < static_cast<unsigned char>(*pb) ? -1 : 1;
    return CompareFrom(a, b, 0, false);
  }
  size_t i = 0;
  const size_t n = std::min(a.size(), b.size());
  for (; i < n && IsAscii(a[i]) && IsAscii(b[i]); ++i) {
    const char32_t ca = FoldAscii(static_cast<unsigned char>(a[i]));
    const char32_t cb = FoldAscii(static_cast<unsigned char>(b[i]));
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  // Everything before i was one-byte characters: i is a boundary in both.
  return CompareFrom(a, b, i, true);
}

bool KeysEqual(std::string_view a, std::string_view b, bool text) {
  if (!text) return a == b;
  return CompareKeys(a, b, true) == 0;
}

uint32_t HashKey(std::string_view key, bool text) {
  uint64_t h;
  if (!text) {
    h = std::hash<std::string_view>{}(key);
  } else {
    // FNV-1a over the folded units, so that keys equal without regard to
    // case hash equally.
    h = 14695981039346656037ull;
    for (size_t i = 0; i < key.size();) {
      bool valid = true;
      char32_t c;
      if (IsAscii(key[i])) {
        c = FoldAscii(static_cast<unsigned char>(key[i++]));
      } else {
        c = NextUnit(key, i, valid);
        if (valid) c = ToLowerCp(c);
      }
      const uint64_t u = UnitOrder(c, valid);
      for (int k = 0; k < 64; k += 8) {
        h ^= (u >> k) & 0xFF;
        h *= 1099511628211ull;
      }
    }
  }
  return static_cast<uint32_t>(h ^ (h >> 32));
}

}  // namespace nxfv
