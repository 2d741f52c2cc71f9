#include "nxfv/platform/date.h"

#include <cmath>

namespace nxfv {

// Howard Hinnant's civil-from-days algorithms: exact for every year.
int64_t DaysFromCivil(int year, int month, int day) {
  const int64_t y = static_cast<int64_t>(year) - (month <= 2 ? 1 : 0);
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const int64_t yoe = y - era * 400;
  const int64_t mp = (month + 9) % 12;
  const int64_t doy = (153 * mp + 2) / 5 + day - 1;
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

void CivilFromDays(int64_t days, int& year, int& month, int& day) {
  days += 719468;
  const int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const int64_t doe = days - era * 146097;
  const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const int64_t y = yoe + era * 400;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  year = static_cast<int>(y + (month <= 2 ? 1 : 0));
}

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
  static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) return 0;
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

namespace {
constexpr int64_t kEpoch1899 = -25569;  // DaysFromCivil(1899, 12, 30)
}

double DateSerial(int year, int month, int day, int hour, int minute, int second) {
  const double days = static_cast<double>(DaysFromCivil(year, month, day) - kEpoch1899);
  const double frac = (hour * 3600.0 + minute * 60.0 + second) / 86400.0;
  // Before 1899-12-30 the time of day is still added as a positive amount
  // in the host convention, which means moving the value further from zero.
  return days < 0 ? days - frac : days + frac;
}

CivilDateTime DateToCivil(double date) {
  CivilDateTime c;
  if (!std::isfinite(date)) return c;
  double whole = std::trunc(date);
  double frac = std::fabs(date - whole);
  int64_t ms = std::llround(frac * 86400000.0);
  if (ms >= 86400000) {
    ms -= 86400000;
    whole += date < 0 ? -1 : 1;
  }
  CivilFromDays(static_cast<int64_t>(whole) + kEpoch1899, c.year, c.month, c.day);
  c.hour = static_cast<int>(ms / 3600000);
  c.minute = static_cast<int>(ms / 60000 % 60);
  c.second = static_cast<int>(ms / 1000 % 60);
  c.millisecond = static_cast<int>(ms % 1000);
  return c;
}

namespace {
constexpr int64_t kDays1601To1970 = 134774;
constexpr uint64_t kTicksPerDay = 864000000000ULL;
}  // namespace

CivilDateTime FileTimeToCivil(uint64_t fileTime) {
  CivilDateTime c;
  const uint64_t days = fileTime / kTicksPerDay;
  const uint64_t rest = fileTime % kTicksPerDay;
  CivilFromDays(static_cast<int64_t>(days) - kDays1601To1970, c.year, c.month, c.day);
  const uint64_t ms = rest / 10000;
  c.hour = static_cast<int>(ms / 3600000);
  c.minute = static_cast<int>(ms / 60000 % 60);
  c.second = static_cast<int>(ms / 1000 % 60);
  c.millisecond = static_cast<int>(ms % 1000);
  return c;
}

bool CivilToFileTime(const CivilDateTime& c, uint64_t& fileTime) {
  if (c.year < 1601 || c.year > 30827 || c.month < 1 || c.month > 12 || c.day < 1 ||
      c.day > DaysInMonth(c.year, c.month) || c.hour < 0 || c.hour > 23 || c.minute < 0 ||
      c.minute > 59 || c.second < 0 || c.second > 59 || c.millisecond < 0 || c.millisecond > 999)
    return false;
  const int64_t days = DaysFromCivil(c.year, c.month, c.day) + kDays1601To1970;
  fileTime = static_cast<uint64_t>(days) * kTicksPerDay +
             (static_cast<uint64_t>(c.hour) * 3600000 + c.minute * 60000ULL + c.second * 1000ULL +
              c.millisecond) * 10000ULL;
  return true;
}

bool DosWordsToFileTime(uint16_t dosDate, uint16_t dosTime, uint64_t& fileTime) {
  fileTime = 0;
  CivilDateTime c;
  c.year = 1980 + (dosDate >> 9);
  c.month = (dosDate >> 5) & 15;
  c.day = dosDate & 31;
  c.hour = dosTime >> 11;
  c.minute = (dosTime >> 5) & 63;
  c.second = (dosTime & 31) * 2;
  return CivilToFileTime(c, fileTime);
}

}  // namespace nxfv
