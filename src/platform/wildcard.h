// Wildcard match of a file name against a pattern list (PathMatchSpec
// rules): "*" any run of characters, "?" exactly one character, several
// patterns separated by ";" (leading blanks of each ignored), no regard to
// case. The whole pattern "*.*" matches every name, also names without a dot.
//   PathMatchSpec("a.TXT", "*.txt;*.doc") -> true
//   PathMatchSpec("readme", "*.*")        -> true
//   PathMatchSpec("readme", "*.")         -> false
#pragma once

#include <string_view>

namespace nxfv {

bool PathMatchSpec(std::string_view name, std::string_view patterns);

}  // namespace nxfv
