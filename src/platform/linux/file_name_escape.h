// Raw Linux file names <-> the UTF-8 text the rest of the library handles.
//
// A Linux name is any byte string without '/' and NUL; the control works on
// UTF-8 text. EscapeFileName makes every name valid UTF-8 without losing it:
// each byte that is not part of a valid UTF-8 sequence becomes the four
// characters "\xHH" (upper-case hex, HH >= 80). UnescapeFileName turns such
// text back into the raw bytes, so a name shown in the list can be opened
// again; every path-taking member of LinuxFileSystem calls it first.
//
//   "caf\xE9.txt" (raw byte E9)   -> "caf\\xE9.txt" (text)
//   "caf\xC3\xA9.txt" (UTF-8 e9)  -> unchanged
//
// A name that literally contains such text (a backslash, 'x' and two hex
// digits that would decode: 80..FF or 5C) would be ambiguous, so escaping
// also writes that backslash as "\x5C": the literal name "a\xC3" lists as
// "a\x5CxC3" and opens again as "a\xC3". So Unescape(Escape(raw)) == raw for
// every raw name. The one ambiguity left is text that did not come from a
// listing: a path typed by hand as ".../a\xC3" means the raw byte C3, not
// the four characters. Only upper-case hex digits decode, which keeps such
// accidents rare ("\xc3" stays literal).
#pragma once

#include <string>
#include <string_view>

namespace nxfv {

// Raw bytes -> valid UTF-8 text (see above). Cheap for plain ASCII names.
std::string EscapeFileName(std::string_view raw);
// Same, writing into out (its capacity is reused; the enumeration's hot path).
void EscapeFileNameInto(std::string_view raw, std::string& out);
// Text -> raw bytes: "\xHH" with upper-case HH in 80..FF or 5C becomes that
// byte; everything else is copied as is.
std::string UnescapeFileName(std::string_view text);

}  // namespace nxfv
