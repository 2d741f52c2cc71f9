#include "nxfv/shell/date_convert.h"

#include <gtest/gtest.h>

#include "nxfv/platform/date.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

constexpr double kOneMs = 1.0 / 86400000.0;

uint16_t DosDate(int y, int m, int d) { return static_cast<uint16_t>(((y - 1980) << 9) | (m << 5) | d); }
uint16_t DosTime(int h, int mi, int s) { return static_cast<uint16_t>((h << 11) | (mi << 5) | (s / 2)); }

TEST(FileTimeToDateTest, ZeroBecomes1980AndTicksKeepTheirMilliseconds) {
  SimulatedPlatform p;
  EXPECT_DOUBLE_EQ(FileTimeToDate(p, 0, false), 29221.125);  // 1980-01-01 03:00:00
  // With toLocal the substitute is converted too (+120 minutes by default).
  EXPECT_NEAR(FileTimeToDate(p, 0, true), 29221.125 + 2.0 / 24, kOneMs);
  CivilDateTime c;
  c.year = 2024, c.month = 3, c.day = 15, c.hour = 10, c.minute = 30;
  uint64_t ft = 0;
  ASSERT_TRUE(CivilToFileTime(c, ft));
  const double expected = DateSerial(2024, 3, 15, 10, 30, 0);
  p.SimClock().SetOffsetMinutes(-300);
  EXPECT_NEAR(FileTimeToDate(p, ft, true), expected - 5.0 / 24, kOneMs);
  // The day count and the fraction are kept apart, so milliseconds survive.
  EXPECT_NEAR(FileTimeToDate(p, ft + 1234 * 10000ULL, false), expected + 1234 * kOneMs, kOneMs / 100);
  // 1601-01-01 itself (tick 1), and failed local conversions at both ends
  // of the range (result 0).
  EXPECT_NEAR(FileTimeToDate(p, 1, false), -109205.0, kOneMs);
  EXPECT_DOUBLE_EQ(FileTimeToDate(p, 10, true), -109205.0);
  p.SimClock().SetOffsetMinutes(60);
  EXPECT_DOUBLE_EQ(FileTimeToDate(p, UINT64_MAX - 5, true), -109205.0);
}

TEST(DosDateToDateTest, ValidWordsNoTimeZone) {
  SimulatedPlatform p;
  p.SimClock().SetOffsetMinutes(600);  // must not matter
  struct Case { int32_t date, time; double expected; } cases[] = {
      {DosDate(2024, 3, 15), DosTime(10, 30, 58), DateSerial(2024, 3, 15, 10, 30, 58)},
      {DosDate(2024, 2, 29), DosTime(23, 59, 58), DateSerial(2024, 2, 29, 23, 59, 58)},
      {DosDate(2107, 12, 31), 0, DateSerial(2107, 12, 31)},
      // A word read into a signed 16-bit integer: years from 2044 are negative.
      {static_cast<int16_t>(DosDate(2050, 6, 1)), static_cast<int16_t>(DosTime(20, 0, 0)),
       DateSerial(2050, 6, 1, 20, 0, 0)},
  };
  for (const Case& c : cases)
    EXPECT_NEAR(DosDateToDate(p, c.date, c.time), c.expected, kOneMs) << c.date << " " << c.time;
}

TEST(DosDateToDateTest, InvalidWordsGiveTheMissingTimeSubstitute) {
  SimulatedPlatform p;
  struct Case { const char* what; uint16_t date, time; } cases[] = {
      {"month 0", DosDate(2024, 0, 1), 0},        {"month 13", DosDate(2024, 13, 1), 0},
      {"day 0", DosDate(2024, 3, 0), 0},          {"Feb 29 in 2023", DosDate(2023, 2, 29), 0},
      {"Apr 31", DosDate(2024, 4, 31), 0},        {"hour 24", DosDate(2024, 3, 15), DosTime(24, 0, 0)},
      {"minute 60", DosDate(2024, 3, 15), DosTime(0, 60, 0)}, {"second 60", DosDate(2024, 3, 15), 30},
      {"both zero", 0, 0},
  };
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(DosDateToDate(p, c.date, c.time), 29221.125) << c.what;
    uint64_t ft = 12345;
    EXPECT_FALSE(p.Time().DosDateTimeToFileTime(c.date, c.time, ft)) << c.what;
    EXPECT_EQ(ft, 0u) << c.what << ": a failed conversion leaves 0";
  }
}

}  // namespace
}  // namespace nxfv
