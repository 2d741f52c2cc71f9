#include "nxfv/platform/utf8.h"

#include "nxfv/platform/case_table.h"

namespace nxfv {

char32_t DecodeUtf8(std::string_view s, size_t& i) {
  const auto b0 = static_cast<unsigned char>(s[i]);
  if (b0 < 0x80) {
    ++i;
    return b0;
  }
  int len = 0;
  char32_t cp = 0;
  if ((b0 & 0xE0) == 0xC0) { len = 2; cp = b0 & 0x1F; }
  else if ((b0 & 0xF0) == 0xE0) { len = 3; cp = b0 & 0x0F; }
  else if ((b0 & 0xF8) == 0xF0) { len = 4; cp = b0 & 0x07; }
  if (len == 0 || i + len > s.size()) {
    ++i;
    return b0;
  }
  for (int k = 1; k < len; ++k) {
    const auto b = static_cast<unsigned char>(s[i + k]);
    if ((b & 0xC0) != 0x80) {
      ++i;
      return b0;
    }
    cp = (cp << 6) | (b & 0x3F);
  }
  // Reject overlong forms and surrogates; treat the lead byte as itself.
  if ((len == 2 && cp < 0x80) || (len == 3 && cp < 0x800) || (len == 4 && (cp < 0x10000 || cp > 0x10FFFF)) ||
      (cp >= 0xD800 && cp <= 0xDFFF)) {
    ++i;
    return b0;
  }
  i += len;
  return cp;
}

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

std::u32string ToU32(std::string_view s) {
  std::u32string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) out += DecodeUtf8(s, i);
  return out;
}

std::string FromU32(std::u32string_view s) {
  std::string out;
  out.reserve(s.size());
  for (char32_t c : s) AppendUtf8(out, c);
  return out;
}

size_t CodePointCount(std::string_view s) {
  size_t n = 0;
  for (size_t i = 0; i < s.size(); ++n) DecodeUtf8(s, i);
  return n;
}

bool IsValidUtf8(std::string_view s) {
  for (size_t i = 0; i < s.size();) {
    const auto b = static_cast<unsigned char>(s[i]);
    size_t before = i;
    char32_t cp = DecodeUtf8(s, i);
    if (b >= 0x80 && i == before + 1 && cp == b) return false;
  }
  return true;
}

// ASCII is by far the common case and never reaches the table.
char32_t ToUpperCp(char32_t c) {
  if (c < 0x80) return (c >= 'a' && c <= 'z') ? c - ('a' - 'A') : c;
  return SimpleUppercase(c);
}

char32_t ToLowerCp(char32_t c) {
  if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + ('a' - 'A') : c;
  return SimpleLowercase(c);
}

std::string Utf8Upper(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    const auto b = static_cast<unsigned char>(s[i]);
    if (b < 0x80) {
      out += static_cast<char>(b >= 'a' && b <= 'z' ? b - 32 : b);
      ++i;
      continue;
    }
    size_t start = i;
    char32_t cp = DecodeUtf8(s, i);
    if (i == start + 1 && cp == b) out += static_cast<char>(b);  // invalid byte kept as is
    else AppendUtf8(out, ToUpperCp(cp));
  }
  return out;
}

std::string Utf8Lower(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    const auto b = static_cast<unsigned char>(s[i]);
    if (b < 0x80) {
      out += static_cast<char>(b >= 'A' && b <= 'Z' ? b + 32 : b);
      ++i;
      continue;
    }
    size_t start = i;
    char32_t cp = DecodeUtf8(s, i);
    if (i == start + 1 && cp == b) out += static_cast<char>(b);
    else AppendUtf8(out, ToLowerCp(cp));
  }
  return out;
}

}  // namespace nxfv
