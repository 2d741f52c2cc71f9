#include "nxfv/platform/linux/file_name_escape.h"

#include <cstdint>

namespace nxfv {
namespace {

constexpr char kHex[] = "0123456789ABCDEF";

int UpperHexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The byte that text[i..i+3] decodes to, or -1 when it is not an escape.
int DecodedEscapeAt(std::string_view text, size_t i) {
  if (text.size() - i < 4 || text[i] != '\\' || text[i + 1] != 'x') return -1;
  const int hi = UpperHexValue(text[i + 2]);
  const int lo = UpperHexValue(text[i + 3]);
  if (hi < 0 || lo < 0) return -1;
  const int byte = hi * 16 + lo;
  return byte >= 0x80 || byte == '\\' ? byte : -1;
}

// Length of the valid UTF-8 sequence at s[i], or 0 when the byte there does
// not start one (stray continuation, overlong form, surrogate, > U+10FFFF,
// truncated).
size_t ValidSequenceLength(std::string_view s, size_t i) {
  const auto b0 = static_cast<uint8_t>(s[i]);
  size_t len = 0;
  uint32_t cp = 0;
  if (b0 >= 0xC2 && b0 <= 0xDF) { len = 2; cp = b0 & 0x1Fu; }
  else if ((b0 & 0xF0) == 0xE0) { len = 3; cp = b0 & 0x0Fu; }
  else if (b0 >= 0xF0 && b0 <= 0xF4) { len = 4; cp = b0 & 0x07u; }
  else return 0;
  if (s.size() - i < len) return 0;
  for (size_t k = 1; k < len; ++k) {
    const auto b = static_cast<uint8_t>(s[i + k]);
    if ((b & 0xC0) != 0x80) return 0;
    cp = (cp << 6) | (b & 0x3Fu);
  }
  if ((len == 3 && cp < 0x800) || (len == 4 && (cp < 0x10000 || cp > 0x10FFFF)) || (cp >= 0xD800 && cp <= 0xDFFF))
    return 0;
  return len;
}

void AppendEscape(std::string& out, uint8_t byte) {
  out += '\\';
  out += 'x';
  out += kHex[byte >> 4];
  out += kHex[byte & 0xF];
}

}  // namespace

void EscapeFileNameInto(std::string_view raw, std::string& out) {
  // Fast path: plain ASCII without a backslash is its own text.
  size_t i = 0;
  while (i < raw.size() && static_cast<uint8_t>(raw[i]) < 0x80 && raw[i] != '\\') ++i;
  out.assign(raw.data(), i);
  while (i < raw.size()) {
    const auto b = static_cast<uint8_t>(raw[i]);
    if (b < 0x80) {
      if (b == '\\' && DecodedEscapeAt(raw, i) >= 0) AppendEscape(out, b);
      else out += static_cast<char>(b);
      ++i;
    } else if (size_t len = ValidSequenceLength(raw, i); len != 0) {
      out.append(raw.data() + i, len);
      i += len;
    } else {
      AppendEscape(out, b);
      ++i;
    }
  }
}

std::string EscapeFileName(std::string_view raw) {
  std::string out;
  EscapeFileNameInto(raw, out);
  return out;
}

std::string UnescapeFileName(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    if (const int byte = text[i] == '\\' ? DecodedEscapeAt(text, i) : -1; byte >= 0) {
      out += static_cast<char>(byte);
      i += 4;
    } else {
      out += text[i++];
    }
  }
  return out;
}

}  // namespace nxfv
