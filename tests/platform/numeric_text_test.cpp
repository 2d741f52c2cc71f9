#include "nxfv/platform/numeric_text.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

TEST(NumericTextTest, AcceptsAndRejects) {
  struct Case {
    const char* text;
    bool numeric;
    double value;
  } cases[] = {
      {"2024", true, 2024}, {" 7 ", true, 7},      {"1e5", true, 1e5},      {"1,000", true, 1000},
      {"&H1F", true, 31},   {"-3.5", true, -3.5},  {"+2", true, 2},         {"1D2", true, 100},
      {"&O17", true, 15},   {"&HFFFF", true, -1},  {"", false, 0},          {"e5", false, 0},
      {"1.2.3", false, 0},  {"12a", false, 0},     {"  ", false, 0},        {"1e", false, 0},
      {"abc", false, 0},    {"&H", false, 0},      {"&HG", false, 0},       {"1 2", false, 0},
  };
  for (const auto& c : cases) {
    double v = 0;
    EXPECT_EQ(ParseNumericText(c.text, {}, v), c.numeric) << "'" << c.text << "'";
    EXPECT_TRUE(!c.numeric || v == c.value) << c.text << " gave " << v;
  }
}

TEST(NumericTextTest, FollowsTheSeparatorsGiven) {
  NumericSeparators de{".", ","};
  double v = 0;
  ASSERT_TRUE(ParseNumericText("1.000,5", de, v));
  EXPECT_DOUBLE_EQ(v, 1000.5);
  EXPECT_FALSE(IsNumericText("1,2,3", de));
}

}  // namespace
}  // namespace nxfv
