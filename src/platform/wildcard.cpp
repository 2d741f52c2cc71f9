#include "nxfv/platform/wildcard.h"

#include <string>

#include "nxfv/platform/utf8.h"

namespace nxfv {

namespace {

// Iterative matcher with single-star backtracking: linear in practice,
// O(n*m) worst case, never exponential.
bool MatchOne(const std::u32string& name, const std::u32string& pat) {
  if (pat == U"*.*" || pat == U"*") return true;
  size_t n = 0, p = 0, starP = std::u32string::npos, starN = 0;
  while (n < name.size()) {
    if (p < pat.size() && (pat[p] == U'?' || pat[p] == name[n])) {
      ++n;
      ++p;
    } else if (p < pat.size() && pat[p] == U'*') {
      starP = p++;
      starN = n;
    } else if (starP != std::u32string::npos) {
      p = starP + 1;
      n = ++starN;
    } else {
      return false;
    }
  }
  while (p < pat.size() && pat[p] == U'*') ++p;
  // "name." patterns: a trailing ".*" also matches a name without a dot.
  if (p + 2 == pat.size() && pat[p] == U'.' && pat[p + 1] == U'*') return true;
  return p == pat.size();
}

std::u32string Fold(std::string_view s) {
  std::u32string out = ToU32(s);
  for (auto& c : out) c = ToLowerCp(c);
  return out;
}

}  // namespace

bool PathMatchSpec(std::string_view name, std::string_view patterns) {
  const std::u32string folded = Fold(name);
  size_t start = 0;
  while (start <= patterns.size()) {
    size_t end = patterns.find(';', start);
    if (end == std::string_view::npos) end = patterns.size();
    std::string_view one = patterns.substr(start, end - start);
    while (!one.empty() && one.front() == ' ') one.remove_prefix(1);
    if (!one.empty() && MatchOne(folded, Fold(one))) return true;
    start = end + 1;
  }
  return false;
}

}  // namespace nxfv
