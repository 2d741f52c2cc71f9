#include "nxfv/platform/date.h"

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

}  // namespace
}  // namespace nxfv
