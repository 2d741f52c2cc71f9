#include "platform/utf8.h"

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

char32_t ToUpperCp(char32_t c) {
  if (c >= 'a' && c <= 'z') return c - 32;
  if (c < 0x80) return c;
  if ((c >= 0xE0 && c <= 0xFE && c != 0xF7)) return c - 32;
  if (c == 0xFF) return 0x178;
  if (c >= 0x100 && c <= 0x17F && c != 0x131 && c != 0x138 && c != 0x149) {
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return (c % 2 == 0) ? c - 1 : c;
    return (c % 2 == 1) ? c - 1 : c;
  }
  if (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) return c - 32;
  if (c >= 0x430 && c <= 0x44F) return c - 32;
  if (c >= 0x450 && c <= 0x45F) return c - 80;
  return c;
}

char32_t ToLowerCp(char32_t c) {
  if (c >= 'A' && c <= 'Z') return c + 32;
  if (c < 0x80) return c;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  if (c == 0x178) return 0xFF;
  if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x138 && c != 0x149) {
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return (c % 2 == 1) ? c + 1 : c;
    return (c % 2 == 0) ? c + 1 : c;
  }
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 32;
  if (c >= 0x410 && c <= 0x42F) return c + 32;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  return c;
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
