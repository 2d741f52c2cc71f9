// Date and time texts in the locale's short-date and long-time patterns,
// and the parser that reads them back.
//
// Patterns use the picture letters of LocaleFormats: d dd M MM y yy yyyy
// for dates, h hh (12-hour) H HH (24-hour) m mm s ss t tt for times; a
// quoted run 'like this' is literal ('' inside or outside quotes is one
// quote); every other character is literal. Longer runs of a letter count
// as the longest form (ddd -> dd, yyy -> yyyy).
//
//   en-US (M/d/yyyy, h:mm:ss tt):
//     DateText(45366.4375)     -> "3/15/2024"
//     TimeText(45366.4375)     -> "10:30:00 AM"
//     DateTimeText(45366.4375) -> "3/15/2024 10:30:00 AM"
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "nxfv/platform/services.h"

namespace nxfv {

class Platform;

// Valid date values: 100-01-01 to 9999-12-31 23:59:59 (the host's range).
inline constexpr double kMinDate = -657434.0;
inline constexpr double kMaxDate = 2958465.99999;

// Short date, long time, and both joined by one blank. Seconds are rounded
// to the nearest whole second. "" for a value outside the valid range or
// not a number (these routines never raise).
std::string DateText(const LocaleFormats& formats, double date);
std::string TimeText(const LocaleFormats& formats, double date);
std::string DateTimeText(const LocaleFormats& formats, double date);
std::string DateText(Platform& platform, double date);
std::string TimeText(Platform& platform, double date);
std::string DateTimeText(Platform& platform, double date);

// The "is it a valid date?" test of the sort keys. Accepts exactly the
// texts that DateText, TimeText and DateTimeText produce under formats
// (a date, a time, or date + " " + time) and rejects everything else,
// including out-of-range fields (2/30/2024, 25:00:00), surrounding blanks
// and the empty text. Returns the date value:
//   a date                  -> whole days
//   a time                  -> the time on day 0 (1899-12-30), e.g. 0.5
//   a date and time         -> both
// A two-digit year (yy) is read in the window 1930-2029 (00-29 -> 20xx).
// 12-hour texts: "12 AM" is hour 0, "12 PM" hour 12. Designators compare
// exactly; when both are empty a 12-hour text reads as morning.
std::optional<double> ParseDateText(const LocaleFormats& formats, std::string_view text);
inline bool IsDateText(const LocaleFormats& formats, std::string_view text) {
  return ParseDateText(formats, text).has_value();
}

// Whole seconds from 1980-01-01 00:00:00 to date (later dates positive),
// each side rounded to the nearest second. "01/01/1980" names that day in
// both month-first and day-first locales, so the origin never depends on
// the locale.
//
// A time-only text parses to a time on day 0, so its difference is negative:
// 12:00:00 gives -2524651200 (= -29221 days + 43200 s). Written into a sort
// key as decimal text cut to its last 11 characters, the minus sign is not a
// digit and stays as it is, and "-" sorts before every digit letter. So
// time-only rows sort ahead of all dated rows in both directions, and among
// themselves in reverse order of time when ascending (an earlier time has
// the larger magnitude, hence the larger digit letters). Dates before 1980
// behave the same way (zero padding first, then "-"): still ahead of later
// dates, reversed among themselves; before about 1663 the magnitude has 11
// digits and the sign is cut off.
int64_t SecondsSince1980(double date);

// ParseDateText followed by SecondsSince1980; nullopt when not a date. The
// shape the sort keys take for their date test.
std::optional<int64_t> DateTextSecondsSince1980(const LocaleFormats& formats, std::string_view text);

}  // namespace nxfv
