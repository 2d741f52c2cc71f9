#include "platform/date.h"

#include <gtest/gtest.h>

#include <array>

namespace nxfv {
namespace {

TEST(DateTest, SerialNumbersOfKnownDates) {
  struct Case { int y, m, d, h, mi, s; double expected; } cases[] = {
      {1899, 12, 30, 0, 0, 0, 0.0},
      {1900, 1, 1, 0, 0, 0, 2.0},
      {1980, 1, 1, 3, 0, 0, 29221.125},
      {2000, 2, 29, 12, 0, 0, 36585.5},
      {1899, 12, 29, 6, 0, 0, -1.25},  // before the epoch the fraction moves away from zero
  };
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(DateSerial(c.y, c.m, c.d, c.h, c.mi, c.s), c.expected) << c.y << "-" << c.m << "-" << c.d;
    const CivilDateTime b = DateToCivil(c.expected);
    EXPECT_EQ((std::array{b.year, b.month, b.day, b.hour}), (std::array{c.y, c.m, c.d, c.h})) << c.expected;
  }
}

TEST(DateTest, FileTimeRoundTripAndValidation) {
  CivilDateTime c{1980, 1, 1, 3, 0, 0, 0};
  uint64_t ft = 0;
  ASSERT_TRUE(CivilToFileTime(c, ft));
  EXPECT_EQ(ft / 10000, 11960017200000ULL);  // the substitute date of a zero file time
  EXPECT_EQ(FileTimeToCivil(ft).hour, 3);

  const CivilDateTime bad[] = {{2023, 2, 29, 0, 0, 0, 0}, {2024, 13, 1, 0, 0, 0, 0}, {2024, 1, 0, 0, 0, 0, 0},
                               {2024, 1, 1, 24, 0, 0, 0}, {2024, 1, 1, 0, 60, 0, 0}, {1600, 1, 1, 0, 0, 0, 0}};
  for (const auto& b : bad) EXPECT_FALSE(CivilToFileTime(b, ft)) << b.year << "-" << b.month << "-" << b.day;
}

}  // namespace
}  // namespace nxfv
