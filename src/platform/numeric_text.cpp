#include "nxfv/platform/numeric_text.h"

#include <cctype>
#include <cmath>
#include <cstdlib>

namespace nxfv {

namespace {
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

bool ParseRadix(std::string_view t, int radix, double& value) {
  if (t.empty() || t.size() > 16) return false;
  uint64_t v = 0;
  for (char c : t) {
    int d;
    if (c >= '0' && c <= '9') d = c - '0';
    else if (c >= 'a' && c <= 'f') d = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F') d = c - 'A' + 10;
    else return false;
    if (d >= radix) return false;
    v = v * radix + d;
  }
  // &H literals of up to 4 digits are 16-bit, up to 8 digits 32-bit, signed.
  if (radix == 16 && t.size() <= 4) value = static_cast<int16_t>(v);
  else if ((radix == 16 && t.size() <= 8) || (radix == 8 && v <= 0xFFFFFFFFULL))
    value = static_cast<int32_t>(static_cast<uint32_t>(v));
  else value = static_cast<double>(v);
  return true;
}
}  // namespace

bool ParseNumericText(std::string_view t, const NumericSeparators& seps, double& value) {
  size_t b = 0, e = t.size();
  while (b < e && IsBlank(t[b])) ++b;
  while (e > b && IsBlank(t[e - 1])) --e;
  t = t.substr(b, e - b);
  if (t.empty()) return false;
  if (t.size() >= 2 && t[0] == '&') {
    const char k = static_cast<char>(std::toupper(static_cast<unsigned char>(t[1])));
    if (k == 'H') return ParseRadix(t.substr(2), 16, value);
    if (k == 'O') return ParseRadix(t.substr(2), 8, value);
    return ParseRadix(t.substr(1), 8, value);
  }
  std::string clean;
  size_t i = 0;
  if (t[i] == '+' || t[i] == '-') clean += t[i++];
  while (i < t.size() && IsBlank(t[i])) ++i;
  bool digits = false, decimal = false;
  while (i < t.size()) {
    char c = t[i];
    if (c >= '0' && c <= '9') {
      clean += c;
      digits = true;
      ++i;
    } else if (!decimal && !seps.decimal.empty() && t.substr(i, seps.decimal.size()) == seps.decimal) {
      clean += '.';
      decimal = true;
      i += seps.decimal.size();
    } else if (!decimal && !seps.thousands.empty() && digits &&
               t.substr(i, seps.thousands.size()) == seps.thousands) {
      i += seps.thousands.size();
    } else {
      break;
    }
  }
  if (!digits) return false;
  if (i < t.size()) {
    char c = static_cast<char>(std::toupper(static_cast<unsigned char>(t[i])));
    if (c != 'E' && c != 'D') return false;
    ++i;
    std::string exp = "e";
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) exp += t[i++];
    bool expDigits = false;
    while (i < t.size() && t[i] >= '0' && t[i] <= '9') {
      exp += t[i++];
      expDigits = true;
    }
    if (!expDigits || i != t.size()) return false;
    clean += exp;
  }
  value = std::strtod(clean.c_str(), nullptr);
  return std::isfinite(value);
}

bool IsNumericText(std::string_view text, const NumericSeparators& seps) {
  double v;
  return ParseNumericText(text, seps, v);
}

}  // namespace nxfv
