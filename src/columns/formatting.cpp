#include "nxfv/columns/formatting.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "nxfv/platform/numeric_text.h"
#include "nxfv/platform/platform.h"
#include "nxfv/platform/utf8.h"
#include "nxfv/platform/variant.h"
#include "nxfv/shell/path_text.h"

namespace nxfv {

// ---- Attributes ------------------------------------------------------------

std::string GetAttrString(uint32_t attributes) {
  static constexpr char kLetters[] = "rhsvdalnt?lco?e";
  // Branch-free selection: attribute bits are close to random across a
  // listing, and mispredicted branches would dominate the cost.
  char text[15];
  for (int i = 0; i < 15; ++i) {
    const unsigned set = 0u - ((attributes >> i) & 1u);
    text[i] = static_cast<char>('.' ^ ((static_cast<unsigned>(kLetters[i]) ^ '.') & set));
  }
  return std::string(text, sizeof text);
}

namespace {

// The low 32 bits of a variant's number, as the runtime's bitwise And sees
// it. False for values that are no numbers at all.
bool MaskOf(const Variant& v, uint32_t& mask) {
  double d = 0;
  if (v.IsEmpty()) {
    d = 0;
  } else if (v.IsNumber()) {
    d = v.AsDouble();
  } else if (v.IsString()) {
    if (!ParseNumericText(v.TextView(), NumericSeparators{}, d)) return false;
  } else {
    return false;  // Null, objects
  }
  const double r = std::nearbyint(d);
  if (!(std::fabs(r) < 9.2e18)) return false;
  mask = static_cast<uint32_t>(static_cast<uint64_t>(static_cast<int64_t>(r)));
  return true;
}

}  // namespace

std::string GetAttrString(const Variant& attributes) {
  uint32_t mask = 0;
  if (!MaskOf(attributes, mask)) mask = 0;
  return GetAttrString(mask);
}

// ---- NiceCase --------------------------------------------------------------

namespace {

// Only these separate words in the host's proper case.
bool IsWordBreak(char32_t c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r' || c == 0;
}

char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

std::string ProperCaseAscii(std::string_view name) {
  std::string out(name);
  bool wordStart = true;
  for (char& c : out) {
    c = wordStart ? AsciiUpper(c) : AsciiLower(c);
    wordStart = IsWordBreak(static_cast<unsigned char>(c));
  }
  return out;
}

// Byte spans of each code point of text.
std::vector<std::string_view> CodePoints(std::string_view text) {
  std::vector<std::string_view> cps;
  for (size_t i = 0; i < text.size();) {
    const size_t start = i;
    DecodeUtf8(text, i);
    cps.push_back(text.substr(start, i - start));
  }
  return cps;
}

}  // namespace

std::string NiceCase(LocaleService& locale, std::string_view name) {
  bool ascii = true, upper = false, lower = false;
  for (char c : name) {
    if (static_cast<unsigned char>(c) >= 0x80) {
      ascii = false;
      break;
    }
    upper |= c >= 'A' && c <= 'Z';
    lower |= c >= 'a' && c <= 'z';
  }
  if (ascii) return upper && lower ? std::string(name) : ProperCaseAscii(name);

  const std::string text(name);
  const std::string up = locale.CharUpper(text);
  const std::string low = locale.CharLower(text);
  if (text != up && text != low) return text;  // mixed case stays as it is
  // Take each code point from the upper- or lower-case copy.
  const auto src = CodePoints(text);
  const auto u = CodePoints(up);
  const auto l = CodePoints(low);
  std::string out;
  out.reserve(text.size());
  bool wordStart = true;
  for (size_t i = 0; i < src.size(); ++i) {
    size_t at = 0;
    const char32_t cp = DecodeUtf8(src[i], at);
    if (u.size() == src.size() && l.size() == src.size()) {
      out += wordStart ? u[i] : l[i];
    } else {
      AppendUtf8(out, wordStart ? ToUpperCp(cp) : ToLowerCp(cp));
    }
    wordStart = IsWordBreak(cp);
  }
  return out;
}

std::string NiceCase(Platform& platform, std::string_view name) { return NiceCase(platform.Locale(), name); }

// ---- Numbers and sizes -----------------------------------------------------

std::string GroupedNumberText(const LocaleFormats& formats, double value) {
  if (!std::isfinite(value)) return {};
  const double r = std::round(value);  // halves away from zero
  const bool negative = r < 0;
  const double magnitude = std::fabs(r);
  char digits[400];
  int n = 0;
  if (magnitude < 18446744073709551616.0) {
    uint64_t v = static_cast<uint64_t>(magnitude);
    char rev[24];
    int k = 0;
    do {
      rev[k++] = static_cast<char>('0' + v % 10);
      v /= 10;
    } while (v != 0);
    while (k > 0) digits[n++] = rev[--k];
  } else {
    // %.0f writes no decimal point, so the C library's locale plays no part.
    n = std::snprintf(digits, sizeof digits, "%.0f", magnitude);
    if (n <= 0 || n >= static_cast<int>(sizeof digits)) return {};
  }
  const int group = formats.groupingSize;
  const std::string& sep = formats.thousandsSeparator;
  std::string out;
  out.reserve(static_cast<size_t>(n) + (n / 3 + 1) * sep.size() + 1);
  if (negative) out += '-';
  for (int i = 0; i < n; ++i) {
    if (group > 0 && i > 0 && (n - i) % group == 0) out += sep;
    out += digits[i];
  }
  return out;
}

std::string GroupedNumberText(Platform& platform, double value) {
  return GroupedNumberText(platform.Locale().Formats(), value);
}

std::string SizeText(const LocaleFormats& formats, double bytes) {
  if (std::isnan(bytes)) return {};
  if (bytes < 1024) return "1 KB";  // an empty file deliberately shows 1 KB
  std::string out = GroupedNumberText(formats, bytes / 1024);
  if (!out.empty()) out += " KB";
  return out;
}

std::string SizeText(Platform& platform, double bytes) { return SizeText(platform.Locale().Formats(), bytes); }

std::string SizeText(Platform& platform, const Variant& bytes) {
  const LocaleFormats& formats = platform.Locale().Formats();
  if (bytes.IsEmpty()) return SizeText(formats, 0.0);
  if (bytes.IsNumber()) return SizeText(formats, bytes.AsDouble());
  if (bytes.IsString()) {
    double d = 0;
    if (ParseNumericText(bytes.TextView(), NumericSeparators{formats.thousandsSeparator, formats.decimalSeparator}, d))
      return SizeText(formats, d);
  }
  return {};
}

// ---- Archive method names ----------------------------------------------------

std::string ZipMethodText(int32_t method, int32_t flags) {
  static constexpr const char* kImplode[4] = {"8KDict:2Tree", "4KDict:2Tree", "8KDict:3Tree", "4KDict:3Tree"};
  static constexpr const char* kDeflate[4] = {"N", "X", "F", "S"};
  const int32_t v = (flags / 2) & 3;  // integer division truncates, And is bitwise
  switch (method) {
    case 0: return "Stored";
    case 1: return "Shrunk";
    case 2: case 3: case 4: case 5: return "Reduced:" + std::to_string(method - 1);
    case 6: return std::string("Imploded:") + kImplode[v];
    case 7: return "Tokenized";
    case 8: return std::string("Deflated:") + kDeflate[v];
    case 9: return "EnhDef";
    case 10: return "ImplDCL";
    default: return "Unknown";
  }
}

std::string RarMethodText(int32_t method, int32_t flags) {
  if (method == 48) return "Stored";
  if (method == 51) {
    const int32_t dictionary = 1 << (((flags / 32) & 7) + 6);
    return "Deflated:" + std::to_string(dictionary) + "Kb";
  }
  return "Unknown";
}

std::string AceMethodText(int32_t method) {
  if (method == 0) return "Stored";
  if (method == 1) return "Deflated:1024Kb";
  return "Unknown";
}

std::string CabMethodText(int32_t compressionType) {
  switch (compressionType) {
    case 0: return "None";
    case 1: return "MsZip";
    case 2: return "Lzx";
    default: return {};
  }
}

bool ArchiveEntryEncrypted(std::string_view archiveExt, int32_t flags) {
  std::string ext;
  for (char c : archiveExt) ext += AsciiLower(c);
  if (ext == "zip") return (flags & 1) != 0;
  if (ext == "rar" || ext == "ace") return (flags & 4) != 0;
  return false;
}

// ---- Ratio and checksum --------------------------------------------------------

std::string RatioText(const LocaleFormats& formats, float ratio) {
  double r = ratio;
  if (!(r > 0) || !std::isfinite(r)) r = 0;
  if (r > 1e12) r = 1e12;  // far beyond any real ratio; keeps the integer math exact
  const int64_t tenths = std::llround(r * 1000.0);  // percent with one decimal
  std::string out;
  const int64_t whole = tenths / 10;
  if (whole < 10) out += '0';
  out += std::to_string(whole);
  out += formats.decimalSeparator;
  out += static_cast<char>('0' + tenths % 10);
  out += '%';
  return out;
}

std::string RatioText(Platform& platform, float ratio) { return RatioText(platform.Locale().Formats(), ratio); }

std::string CrcText(int64_t crc) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  uint32_t v = static_cast<uint32_t>(static_cast<uint64_t>(crc));
  char rev[8];
  int n = 0;
  do {
    rev[n++] = kHex[v & 15];
    v >>= 4;
  } while (v != 0);
  std::string out;
  while (n > 0) out += rev[--n];
  return out;
}

// ---- Path compaction ---------------------------------------------------------------

namespace {

// Byte offsets of each code point boundary of text (size = count + 1).
std::vector<size_t> Boundaries(std::string_view text) {
  std::vector<size_t> at{0};
  for (size_t i = 0; i < text.size();) {
    DecodeUtf8(text, i);
    at.push_back(i);
  }
  return at;
}

// Largest k in [lo, hi] with fits(k), assuming fits is monotonic
// (shrinking k never makes the text wider); -1 when none fits.
template <class Fits>
int64_t LargestFitting(int64_t lo, int64_t hi, const Fits& fits) {
  int64_t best = -1;
  while (lo <= hi) {
    const int64_t mid = lo + (hi - lo) / 2;
    if (fits(mid)) {
      best = mid;
      lo = mid + 1;
    } else {
      hi = mid - 1;
    }
  }
  return best;
}

std::string Compact(LocaleService& locale, const std::string& text, int32_t width, int32_t hdc) {
  if (locale.MeasureText(text, hdc) <= width) return text;
  const auto fits = [&](const std::string& s) { return locale.MeasureText(s, hdc) <= width; };
  const std::vector<size_t> at = Boundaries(text);
  const int64_t count = static_cast<int64_t>(at.size()) - 1;
  const size_t sep = text.find_last_of("\\/");

  if (sep != std::string::npos) {
    // Keep the start of the path and the separator + file name; the middle
    // becomes "...". Only candidates shorter than the text are tried.
    const std::string tail = text.substr(sep);
    int64_t headCount = 0;
    while (at[static_cast<size_t>(headCount)] < sep) ++headCount;
    const int64_t k = LargestFitting(0, headCount - 4, [&](int64_t n) {
      return fits(text.substr(0, at[static_cast<size_t>(n)]) + "..." + tail);
    });
    if (k >= 0) return text.substr(0, at[static_cast<size_t>(k)]) + "..." + tail;
  }
  // Not even "..." + file name fits: the start of the file name + "...".
  const size_t nameStart = sep == std::string::npos ? 0 : sep + 1;
  int64_t first = 0;
  while (at[static_cast<size_t>(first)] < nameStart) ++first;
  // At least one character of the name goes, and the result stays shorter.
  const int64_t j = LargestFitting(0, std::min(count - first - 1, count - 4), [&](int64_t n) {
    return fits(text.substr(nameStart, at[static_cast<size_t>(first + n)] - nameStart) + "...");
  });
  if (j >= 0) return text.substr(nameStart, at[static_cast<size_t>(first + j)] - nameStart) + "...";
  return {};
}

}  // namespace

std::string FitFilenameToSize(Platform& platform, const std::string& FileName, int32_t ControlWidth,
                              int32_t ContainerHDC) {
  // The platform works on NUL-terminated text: anything after a NUL is gone.
  const size_t nul = FileName.find('\0');
  const std::string text = nul == std::string::npos ? FileName : FileName.substr(0, nul);
  std::string compact = Compact(platform.Locale(), text, ControlWidth, ContainerHDC);
  // A shortened text comes back terminated inside the buffer and is cut
  // there; only an untouched text without NUL is trimmed of blanks.
  if (nul != std::string::npos || compact != text) return compact;
  return TrimBlanks(compact);
}

}  // namespace nxfv
