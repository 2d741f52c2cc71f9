// Small UTF-8 helpers. Positions and lengths that the rules count in
// "characters" count Unicode code points.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nxfv {

// Decodes one code point at text[i], advancing i. Invalid bytes decode as
// themselves (0x80..0xFF) one at a time, so nothing is ever lost.
char32_t DecodeUtf8(std::string_view text, size_t& i);
void AppendUtf8(std::string& out, char32_t cp);
std::u32string ToU32(std::string_view text);
std::string FromU32(std::u32string_view text);
size_t CodePointCount(std::string_view text);
bool IsValidUtf8(std::string_view text);

// Unicode's simple (one-to-one) case mapping of one code point, over all of
// Unicode; ASCII never reaches the table. The strings map code point by code point
// and keep bytes that are not valid UTF-8 as they are.
char32_t ToUpperCp(char32_t c);
char32_t ToLowerCp(char32_t c);
std::string Utf8Upper(std::string_view text);
std::string Utf8Lower(std::string_view text);

}  // namespace nxfv
