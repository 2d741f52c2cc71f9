// Date values and file times.
//
// A date value is a double: days since 1899-12-30, the time of day as the
// fraction. A file time is a count of 100-ns ticks since 1601-01-01 (UTC or
// local, as the caller says). These helpers convert between them and civil
// calendar fields without touching any time zone.
#pragma once

#include <cstdint>

namespace nxfv {

// Ticks between 1601-01-01 and 1899-12-30.
inline constexpr double kDaysFrom1601To1899 = 109205.0;

struct CivilDateTime {
  int year = 1899;
  int month = 12;  // 1..12
  int day = 30;    // 1..31
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
};

// Days since 1970-01-01 of a proleptic Gregorian date (any year).
int64_t DaysFromCivil(int year, int month, int day);
// Inverse of DaysFromCivil.
void CivilFromDays(int64_t days, int& year, int& month, int& day);

bool IsLeapYear(int year);
int DaysInMonth(int year, int month);

// Date value of a calendar date and time (fields are not validated).
double DateSerial(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
// Calendar fields of a date value, rounded to the nearest millisecond.
// Negative values follow the host convention: the integer part counts days
// backwards and the fraction is the time of day.
CivilDateTime DateToCivil(double date);

// File time (100-ns ticks since 1601) <-> calendar fields.
CivilDateTime FileTimeToCivil(uint64_t fileTime);
// Fails (false) for fields outside the calendar or before 1601.
bool CivilToFileTime(const CivilDateTime& civil, uint64_t& fileTime);

// DOS date and time words (as archives store them) to a file time, with no
// time-zone shift: fails and leaves 0 for a month outside 1-12, day 0 or
// past the month's end, hour > 23, minute or second > 59. Both platforms'
// DosDateTimeToFileTime answer with this rule.
bool DosWordsToFileTime(uint16_t dosDate, uint16_t dosTime, uint64_t& fileTime);

}  // namespace nxfv
