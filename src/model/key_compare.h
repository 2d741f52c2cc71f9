// Key comparison of the keyed collection under its two compare modes.
//
// Binary: keys are equal when their bytes are equal; they sort in the
// order of their UTF-16 code units (the order the host's counted strings
// compare in). That differs from byte order only for characters above
// U+FFFF, which sort before U+E000..U+FFFF.
// Text: keys compare without regard to letter case (both sides folded to
// lower case code point by code point), in the same unit order.
//
// Bytes that are not valid UTF-8 compare as themselves, apart from every
// character, so the order is a total order on any byte string.
#pragma once

#include <cstdint>
#include <string_view>

namespace nxfv {

// <0, 0, >0 as a sorts before, equal to or after b.
int CompareKeys(std::string_view a, std::string_view b, bool textCompare);
bool KeysEqual(std::string_view a, std::string_view b, bool textCompare);
// Equal keys (under the same mode) hash equally.
uint32_t HashKey(std::string_view key, bool textCompare);

}  // namespace nxfv
