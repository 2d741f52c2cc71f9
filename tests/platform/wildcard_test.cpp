#include "nxfv/platform/wildcard.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

TEST(WildcardTest, PatternLists) {
  struct Case {
    const char* name;
    const char* patterns;
    bool match;
  } cases[] = {
      {"a.txt", "*.*", true},        {"readme", "*.*", true},        {"a.TXT", "*.txt", true},
      {"a.txt", "*.txt;*.doc", true}, {"b.doc", "*.txt; *.doc", true}, {"b.docx", "*.txt;*.doc", false},
      {"abc", "a?c", true},          {"ac", "a?c", false},          {"abc", "?", false},
      {"x.tar.gz", "*.gz", true},    {"x", "", false},              {"Ärger.txt", "ä*", true},
      {"aaaaaaaaaaaaaaaaaaaaaaab", "*a*a*a*a*a*c", false},          {"a.b", "*.", false},
      {"abc", "*", true},            {"Readme", "readme.*", true},  {"ab", ";;ab", true},
  };
  for (const auto& c : cases) EXPECT_EQ(PathMatchSpec(c.name, c.patterns), c.match) << c.name << " vs " << c.patterns;
}

}  // namespace
}  // namespace nxfv
