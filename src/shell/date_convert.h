// Date conversions between the platform's DOS words and file times and the
// component's date values (days since 1899-12-30, time of day as fraction).
#pragma once

#include <cstdint>

namespace nxfv {

class Platform;

// File time that stands in for a missing (zero) one: 1980-01-01 03:00:00.
inline constexpr uint64_t kMissingFileTime = 119600172000000000ULL;

// high * 4294967296 + low, both words taken as unsigned 32-bit values (a
// low word with bit 31 set is not a negative number).
//   MakeInt64(1, 0) -> 4294967296      MakeInt64(0, 0xFFFFFFFF) -> 4294967295
constexpr uint64_t MakeInt64(uint32_t high, uint32_t low) {
  return (static_cast<uint64_t>(high) << 32) | low;
}

// Date value of a file time. A zero file time deliberately becomes
// 1980-01-01 03:00:00 (date 29221.125) before anything else; with toLocal
// the (possibly substituted) time goes through the platform's
// FileTimeToLocalFileTime first (a failed conversion gives its 0 result,
// 1601-01-01). Never fails.
double FileTimeToDate(Platform& platform, uint64_t fileTime, bool toLocal);
double FileTimeToDate(uint64_t fileTime, bool toLocal);  // on ActivePlatform()

// Date value of DOS date and time words (as stored in ZIP entries), no
// time-zone conversion. Only the low 16 bits of each argument count, so a
// word read into a signed 16-bit integer (years from 2044 on) works too.
// Invalid words (month 0 or 13+, day 0 or past the month's end, hour > 23,
// minute or second > 59) make the platform conversion fail with a 0 file
// time, which then gives the missing-time substitute 1980-01-01 03:00:00.
double DosDateToDate(Platform& platform, int32_t dosDate, int32_t dosTime);
double DosDateToDate(int32_t dosDate, int32_t dosTime);  // on ActivePlatform()

}  // namespace nxfv
