// Text forms of the report view's columns: attribute letters, names in nice
// case, sizes in KB, grouped numbers, archive method names, ratio and
// checksum texts, and path compaction to a width. Dates and times are in
// date_text.h (included here).
//
// These run once per row and column of a listing (a million times for a
// large folder): no streams, no locale objects, no allocation beyond the
// result where it can be avoided. Locale data comes in explicitly, as the
// platform's LocaleFormats or LocaleService. None of them raises: bad field
// values give "" or the documented fallback.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "nxfv/columns/date_text.h"
#include "nxfv/platform/services.h"

namespace nxfv {

class Platform;
class Variant;

// Fifteen characters, one per attribute bit 2^0..2^14, each "." or the
// bit's letter from "rhsvdalnt?lco?e" (two "?" and two "l": sparse and
// not-indexed both show "?", device and reparse point both "l"). Bits above
// 2^14 are ignored; the mask is taken as a 32-bit pattern, so -1 shows all
// fifteen letters.
//   0  -> "..............."     34 -> ".h...a........."     16 -> "....d.........."
std::string GetAttrString(uint32_t attributes);
// A double would convert to the mask with truncation (undefined when
// negative); pass it as a Variant instead.
std::string GetAttrString(double attributes) = delete;
// The mask held in a variant: Empty and Null give fifteen dots; numbers
// (and numeric text) use their low 32 bits; anything else gives the dots.
std::string GetAttrString(const Variant& attributes);

// A name that is all upper case or all lower case (or has no letters) in
// proper case: the first letter of every word upper, the rest lower; words
// are separated only by space, tab, LF, VT, FF, CR and NUL. Mixed case is
// left alone. Case comes from the locale's CharUpper / CharLower (pure
// ASCII names take a fast path with the same result).
//   "README.TXT" -> "Readme.txt"   "readme.txt" -> "Readme.txt"
//   "ReadMe.txt" -> "ReadMe.txt"   "ABC DEF"    -> "Abc Def"
std::string NiceCase(LocaleService& locale, std::string_view name);
std::string NiceCase(Platform& platform, std::string_view name);

// value rounded to a whole number (halves away from zero), digits grouped
// by the locale's thousands separator and group size. Non-finite -> "".
//   1234567 -> "1,234,567" (en-US)   "1.234.567" (de-DE)   "1234567" (C)
std::string GroupedNumberText(const LocaleFormats& formats, double value);
std::string GroupedNumberText(Platform& platform, double value);

// Size in kilobytes: bytes / 1024 rounded, grouped, + " KB". Below 1024
// bytes (0 and negatives included) deliberately "1 KB". No MB/GB steps.
//   0 -> "1 KB"   1024 -> "1 KB"   1536 -> "2 KB"   1048576 -> "1,024 KB"
std::string SizeText(const LocaleFormats& formats, double bytes);
std::string SizeText(Platform& platform, double bytes);
// Empty counts as 0; Null, objects and non-numeric text give "".
std::string SizeText(Platform& platform, const Variant& bytes);

// ZIP method names. For 6 and 8 the variant v = (flags \ 2) And 3 picks
// "8KDict:2Tree" "4KDict:2Tree" "8KDict:3Tree" "4KDict:3Tree" (this order
// is deliberate) or "N" "X" "F" "S".
//   (8, 2) -> "Deflated:X"   (6, 0) -> "Imploded:8KDict:2Tree"   (3, 0) -> "Reduced:2"
std::string ZipMethodText(int32_t method, int32_t flags);
// RAR: 48 ("0") "Stored"; 51 ("3") "Deflated:" + 2^(((flags \ 32) And 7) + 6)
// + "Kb"; everything else "Unknown".
std::string RarMethodText(int32_t method, int32_t flags);
// ACE: 0 "Stored", 1 "Deflated:1024Kb", else "Unknown".
std::string AceMethodText(int32_t method);
// CAB compression type: 0 "None", 1 "MsZip", 2 "Lzx", else "".
std::string CabMethodText(int32_t compressionType);

// Whether an archive entry counts as encrypted, by archive extension
// ("zip": flag bit 1; "rar", "ace": bit 4; "cab" and others: never).
bool ArchiveEntryEncrypted(std::string_view archiveExt, int32_t flags);

// The ratio in the pattern "00.0%": times 100, at least two integer digits,
// one decimal (the locale's decimal separator), halves away from zero.
// Negative and NaN ratios count as 0.
//   0.5 -> "50.0%"   0.05 -> "05.0%"   1 -> "100.0%"   -0.3 -> "00.0%"
std::string RatioText(const LocaleFormats& formats, float ratio);
std::string RatioText(Platform& platform, float ratio);

// The CRC in upper-case hex without leading zeros. The value is taken as a
// 32-bit pattern, so a CRC held in a signed 32-bit integer that is negative
// shows as its eight-digit two's complement.
//   0 -> "0"   0x1A2B -> "1A2B"   -1 -> "FFFFFFFF"   INT32_MIN -> "80000000"
std::string CrcText(int64_t crc);

// Shortens a path so that it fits ControlWidth pixels as the locale's
// MeasureText draws it on ContainerHDC: the start of the path is kept, the
// middle replaced by "...", the file name (with its separator) kept whole
// when it fits ("C:\Program Files\App\data\file.txt" -> "C:\Pro...\file.txt").
// When even "..." + file name is too wide, the start of the file name
// followed by "..." is shown ("readme..."), down to "" at worst. The text is
// never lengthened. As with the platform's buffer round trip, the
// name is cut at its first NUL; when nothing had to be shortened and there
// is no NUL, blanks at both ends are trimmed.
std::string FitFilenameToSize(Platform& platform, const std::string& FileName, int32_t ControlWidth,
                              int32_t ContainerHDC);

}  // namespace nxfv
