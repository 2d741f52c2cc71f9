#include "nxfv/platform/free_name.h"

#include <array>

namespace nxfv {

namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsAlnum(char c) { return (c >= '0' && c <= '9') || (Lower(c) >= 'a' && Lower(c) <= 'z'); }

bool IsCompressionSuffix(std::string_view ext) {
  static constexpr std::array<std::string_view, 9> kSuffixes = {"gz", "bz2", "xz", "zst", "lz", "lzma", "lz4", "z", "br"};
  for (std::string_view s : kSuffixes) {
    if (s.size() != ext.size()) continue;
    bool same = true;
    for (size_t i = 0; i < s.size() && same; ++i) same = Lower(ext[i]) == s[i];
    if (same) return true;
  }
  return false;
}

}  // namespace

size_t ExtensionStart(std::string_view name) {
  const size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return name.size();
  if (!IsCompressionSuffix(name.substr(dot + 1))) return dot;
  // "a.tar.gz": a short suffix right before the compression one joins it.
  const size_t inner = name.rfind('.', dot - 1);
  if (inner == std::string_view::npos || inner == 0) return dot;
  const std::string_view middle = name.substr(inner + 1, dot - inner - 1);
  if (middle.empty() || middle.size() > 4) return dot;
  for (char c : middle)
    if (!IsAlnum(c)) return dot;
  return inner;
}

std::string NumberedName(std::string_view name, bool isFolder, uint32_t n) {
  const size_t split = isFolder ? name.size() : ExtensionStart(name);
  std::string out(name.substr(0, split));
  out += " (" + std::to_string(n) + ")";
  out += name.substr(split);
  return out;
}

}  // namespace nxfv
