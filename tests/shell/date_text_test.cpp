#include "nxfv/columns/date_text.h"

#include <gtest/gtest.h>

#include <cmath>

#include "nxfv/platform/date.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

LocaleFormats Fmt(const char* date, const char* time, const char* am = "AM", const char* pm = "PM") {
  LocaleFormats f;
  f.shortDatePattern = date;
  f.longTimePattern = time;
  f.amDesignator = am;
  f.pmDesignator = pm;
  return f;
}

const LocaleFormats kEnUs = Fmt("M/d/yyyy", "h:mm:ss tt");
const LocaleFormats kGerman = Fmt("dd.MM.yyyy", "HH:mm:ss", "", "");

TEST(DateTextTest, EnglishAndGermanTexts) {
  struct Case { double date; const char* enDate; const char* enTime; const char* deBoth; } cases[] = {
      {DateSerial(2024, 3, 15, 10, 30, 0), "3/15/2024", "10:30:00 AM", "15.03.2024 10:30:00"},
      {0, "12/30/1899", "12:00:00 AM", "30.12.1899 00:00:00"},
      {0.5, "12/30/1899", "12:00:00 PM", "30.12.1899 12:00:00"},
      {-1.5, "12/29/1899", "12:00:00 PM", "29.12.1899 12:00:00"},  // the fraction counts forward
      {0.99999999, "12/31/1899", "12:00:00 AM", "31.12.1899 00:00:00"},  // rounds into the next day
      {29221 + 0.6 / 86400, "1/1/1980", "12:00:01 AM", "01.01.1980 00:00:01"},
      {-657434, "1/1/0100", "12:00:00 AM", "01.01.0100 00:00:00"},
      {2958465.5, "12/31/9999", "12:00:00 PM", "31.12.9999 12:00:00"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DateText(kEnUs, c.date), c.enDate) << c.date;
    EXPECT_EQ(TimeText(kEnUs, c.date), c.enTime) << c.date;
    EXPECT_EQ(DateTimeText(kEnUs, c.date), std::string(c.enDate) + " " + c.enTime) << c.date;
    EXPECT_EQ(DateTimeText(kGerman, c.date), c.deBoth) << c.date;
  }
  SimulatedPlatform p;
  EXPECT_EQ(DateTimeText(p, 29221.125), "1/1/1980 3:00:00 AM");
}

TEST(DateTextTest, OutOfRangeGivesEmptyText) {
  for (double d : {-657435.0, 2958466.0, std::nan(""), 1e300}) {
    EXPECT_EQ(DateText(kEnUs, d) + TimeText(kEnUs, d) + DateTimeText(kEnUs, d), "") << d;
  }
}

TEST(DateTextTest, PatternLettersQuotesAndShortForms) {
  const double d = DateSerial(2024, 3, 5, 14, 7, 9);
  struct Case { const char* pattern; const char* text; } cases[] = {
      {"d/M/yy", "5/3/24"}, {"y", "24"}, {"yyyy'年'M'月'd'日'", "2024年3月5日"}, {"d 'o''clock' ''", "5 o'clock '"},
      {"dddd MMM", "05 03"},  // longer runs take the longest numeric form
      {"h:m:s t", "2:7:9 P"}, {"hh", "02"}, {"'unterminated", "unterminated"},
  };
  for (const Case& c : cases) EXPECT_EQ(DateText(Fmt(c.pattern, "H"), d), c.text) << c.pattern;
}

// Every text the three routines produce reads back as the same value.
TEST(ParseDateTextTest, RoundTripsUnderManyPatterns) {
  const LocaleFormats formats[] = {
      kEnUs,
      kGerman,
      Fmt("yyyy-MM-dd", "HH:mm:ss"),
      Fmt("d/M/yy", "H.mm.ss"),  // two-digit years: 1930..2029 only
      Fmt("yyyy'年'M'月'd'日'", "tt h:mm:ss", "午前", "午後"),
      Fmt("dd MM yyyy", "hh:mm:ss t", "am", "pm"),
  };
  for (const LocaleFormats& f : formats) {
    const bool shortYears = f.shortDatePattern.find("yyyy") == std::string::npos;
    const double from = shortYears ? DateSerial(1930, 1, 1) : DateSerial(100, 1, 1);
    const double to = shortYears ? DateSerial(2029, 12, 31) : DateSerial(9999, 12, 31);
    for (double d = from; d <= to; d += shortYears ? 1.37 : 97.31) {
      // The host convention: whole days toward zero, the time counts forward.
      double whole = std::trunc(d);
      double secs = std::round(std::fabs(d - whole) * 86400);
      if (secs == 86400) {
        secs = 0;
        whole += d < 0 ? -1 : 1;
      }
      const double exact = whole < 0 ? whole - secs / 86400 : whole + secs / 86400;
      ASSERT_EQ(ParseDateText(f, DateText(f, d)), whole) << f.shortDatePattern << " " << DateText(f, d);
      const auto t = ParseDateText(f, TimeText(f, d));
      ASSERT_TRUE(t) << TimeText(f, d);
      ASSERT_NEAR(*t, secs / 86400, 1e-9) << TimeText(f, d);
      const auto both = ParseDateText(f, DateTimeText(f, d));
      ASSERT_TRUE(both) << DateTimeText(f, d);
      ASSERT_NEAR(*both, exact, 1e-9) << DateTimeText(f, d);
    }
  }
}

TEST(ParseDateTextTest, AcceptsExactFormsAndRejectsTheRest) {
  struct Case { const char* text; bool valid; } cases[] = {
      {"2/29/2024", true},    {"12/31/9999 11:59:59 PM", true}, {"1/1/0100", true},     {"", false},
      {" 3/15/2024", false},  {"3/15/2024 ", false},            {"2/29/2023", false},   {"13/1/2024", false},
      {"1/1/0099", false},    {"13:00:00 PM", false},           {"0:30:00 AM", false},  {"10:3:00 AM", false},
      {"3/15/2024  10:30:00 AM", false},
      {"3/15/24", false},     // the pattern asks for four digits
      {"03/15/2024", false},  // M and d are written without leading zero
      {"10:30:00", false},    // designator missing
      {"10:30:00 am", false},  // designators compare exactly
      {"10:30:00 AM 3/15/2024", false},
  };
  for (const Case& c : cases) EXPECT_EQ(IsDateText(kEnUs, c.text), c.valid) << "'" << c.text << "'";
  EXPECT_EQ(ParseDateText(kEnUs, "12:00:00 AM"), 0.0);
  EXPECT_EQ(ParseDateText(kEnUs, "12:00:00 PM"), 0.5);
  EXPECT_FALSE(IsDateText(kGerman, "1.3.2024"));
  EXPECT_EQ(ParseDateText(Fmt("d/M/yy", "H"), "1/1/29"), DateSerial(2029, 1, 1));
  EXPECT_EQ(ParseDateText(Fmt("d/M/yy", "H"), "1/1/30"), DateSerial(1930, 1, 1));
}

TEST(SecondsSince1980Test, OriginSignAndRounding) {
  struct Case { double date; int64_t seconds; } cases[] = {
      {29221.125, 10800},         {29220, -86400}, {29221 + 0.4 / 86400, 0}, {29221 + 0.6 / 86400, 1},
      {0.5, -2524651200},  // a time-only text: noon on day 0
      {-1.5, -2524694400 - 43200},
      {DateSerial(2038, 1, 19, 3, 14, 8), 1831950848},
  };
  for (const Case& c : cases) EXPECT_EQ(SecondsSince1980(c.date), c.seconds) << c.date;
  EXPECT_EQ(DateTextSecondsSince1980(kEnUs, "12:00:00 PM"), -2524651200);
  EXPECT_EQ(DateTextSecondsSince1980(kGerman, "01.01.1980 00:00:01"), 1);
  EXPECT_EQ(DateTextSecondsSince1980(kEnUs, "not a date"), std::nullopt);
}

}  // namespace
}  // namespace nxfv
