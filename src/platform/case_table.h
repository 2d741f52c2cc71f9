// Unicode's simple (one-to-one) case mappings of single code points, from
// the UnicodeData.txt the table was generated from (scripts/gen_case_table.py).
// A code point without a mapping maps to itself. O(log n) in a table of a
// few hundred runs; callers that see mostly ASCII should test for it first.
//
//   SimpleLowercase(U'Ａ') == U'ａ'   SimpleLowercase(U'\u212A') == U'k' (Kelvin sign)
//   SimpleUppercase(U'ß') == U'ß'    (no one-to-one mapping)
#pragma once

namespace nxfv {

char32_t SimpleLowercase(char32_t c);
char32_t SimpleUppercase(char32_t c);

}  // namespace nxfv
