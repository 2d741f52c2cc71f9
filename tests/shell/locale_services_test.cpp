// The time, locale and string services of both platforms.
#include <gtest/gtest.h>
#include <locale.h>

#include <fstream>
#include <optional>

#include "nxfv/columns/formatting.h"
#include "nxfv/platform/date.h"
#include "nxfv/platform/linux/linux_locale_time.h"
#include "nxfv/platform/sim/sim_services.h"
#include "nxfv/shell/shell_folders.h"
#include "platform_linux/temp_dir.h"

namespace nxfv {
namespace {

using testing::ScopedEnv;
using testing::TempDir;

constexpr uint64_t kTicksPerMinute = 600000000ULL;

uint64_t FileTimeOf(int y, int m, int d, int h = 0, int mi = 0) {
  CivilDateTime c;
  c.year = y, c.month = m, c.day = d, c.hour = h, c.minute = mi, c.second = 0;
  uint64_t ft = 0;
  EXPECT_TRUE(CivilToFileTime(c, ft));
  return ft;
}

// Switches the process locale for one test and restores it.
class ScopedLocale {
 public:
  explicit ScopedLocale(const char* name) : old_(setlocale(LC_ALL, nullptr)) {
    ok_ = setlocale(LC_ALL, name) != nullptr;
  }
  ~ScopedLocale() { setlocale(LC_ALL, old_.c_str()); }
  bool ok() const { return ok_; }

 private:
  std::string old_;
  bool ok_ = false;
};

// Both platforms decode DOS words alike (the invalid words themselves are
// covered with DosDateToDate): every month, day, hour, minute and second
// field value, valid or not.
TEST(DosDateTimeTest, LinuxAgreesWithTheSimulation) {
  SimTime sim;
  LinuxTime linux;
  for (uint32_t date = 0; date < 0x10000; date += 7) {
    const auto time = static_cast<uint16_t>((date * 2654435761u) >> 16);
    uint64_t a = 1, b = 1;
    const bool okA = sim.DosDateTimeToFileTime(static_cast<uint16_t>(date), time, a);
    ASSERT_EQ(linux.DosDateTimeToFileTime(static_cast<uint16_t>(date), time, b), okA) << date << " " << time;
    ASSERT_EQ(a, b) << date << " " << time;
    ASSERT_TRUE(okA || a == 0u) << date << " " << time;
  }
}

TEST(LinuxTimeTest, UsesTheProcessTimeZoneAtThatInstant) {
  ScopedEnv tz("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
  LinuxTime t;
  uint64_t local = 0;
  const uint64_t winter = FileTimeOf(2024, 1, 15, 12);
  const uint64_t summer = FileTimeOf(2024, 7, 15, 12);
  ASSERT_TRUE(t.FileTimeToLocalFileTime(winter, local));
  EXPECT_EQ(local, winter + 60 * kTicksPerMinute);
  ASSERT_TRUE(t.FileTimeToLocalFileTime(summer, local));
  EXPECT_EQ(local, summer + 120 * kTicksPerMinute);
  {
    ScopedEnv utc("TZ", "UTC0");
    ASSERT_TRUE(t.FileTimeToLocalFileTime(summer, local));
    EXPECT_EQ(local, summer);
    ScopedEnv west("TZ", "EST5");
    EXPECT_FALSE(t.FileTimeToLocalFileTime(10, local));  // would fall before 1601
    EXPECT_EQ(local, 0u);
  }
}

TEST(StrftimeToPictureTest, TranslatesConversionsAndQuotesLetters) {
  struct Case { const char* in; const char* out; } cases[] = {
      {"%m/%d/%y", "MM/dd/yyyy"},  // two-digit years widened
      {"%-d/%-m/%Y", "d/M/yyyy"}, {"%e.%b %Y", "d.MM yyyy"},  {"%T", "HH:mm:ss"},
      {"%l.%M %P", "h.mm tt"},    {"%k h %M min", "H' h 'mm' min'"}, {"it's %H", "'it''s 'HH"},
      {"%a %d", " dd"},  // weekday names have no numeric form
      {"%Ey/%Om", "yyyy/MM"},     {"100%%", "100%"},         {"%", "%"},
  };
  for (const Case& c : cases) EXPECT_EQ(StrftimeToPicture(c.in), c.out) << c.in;
}

// The process locale's patterns and separators reach every text form, and
// the parser reads back what the locale writes.
TEST(LinuxLocaleTest, FormatsFollowTheProcessLocale) {
  struct Case { const char* locale; const char* dateTime; const char* am; const char* size; const char* ratio; } cases[] = {
      {"C.UTF-8", "03/05/2024 14:07:09", "AM", "1024 KB", "50.0%"},
      {"de_DE.UTF-8", "05.03.2024 14:07:09", "", "1.024 KB", "50,0%"},
  };
  const double d = DateSerial(2024, 3, 5, 14, 7, 9);
  for (const Case& c : cases) {
    ScopedLocale guard(c.locale);
    if (!guard.ok()) GTEST_SKIP() << c.locale << " is not installed";
    LinuxLocale l;
    const LocaleFormats& f = l.Formats();
    EXPECT_EQ(DateTimeText(f, d), c.dateTime) << c.locale;
    EXPECT_EQ(ParseDateText(f, c.dateTime), d) << c.locale;
    EXPECT_EQ(ParseDateText(f, TimeText(f, d)), (14 * 3600 + 7 * 60 + 9) / 86400.0) << c.locale;
    EXPECT_EQ(f.amDesignator, c.am) << c.locale;
    EXPECT_EQ(SizeText(f, 1048576), c.size) << c.locale;
    EXPECT_EQ(RatioText(f, 0.5f), c.ratio) << c.locale;
    EXPECT_EQ(l.CharUpper("straße ärger"), "STRAßE ÄRGER") << c.locale;  // ß has no single upper
    EXPECT_EQ(l.CharLower("ÄRGER"), "ärger") << c.locale;
  }
}

TEST(LinuxResourcesTest, LibraryNamesIgnoreCaseAndUnknownOnesAnswerNothing) {
  LinuxResources r;
  EXPECT_EQ(r.LoadString("shell32.dll", 8997), "Accessed");
  EXPECT_EQ(r.LoadString("Shell32.Dll", 25), "");
  EXPECT_EQ(r.LoadString("user32.dll", 8976), std::nullopt);
}

TEST(LinuxResourcesTest, XdgUserDirectories) {
  TempDir dir;
  ASSERT_TRUE(dir.MakeDir("config"));
  const std::string home = dir / "home", config = dir / "config";
  std::ofstream(config + "/user-dirs.dirs") << "# written by a test\n"
                                               "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                                               "  XDG_DOCUMENTS_DIR=\"/data/docs/\"\n"
                                               "XDG_MUSIC_DIR=\"relative/ignored\"\n"
                                               "XDG_VIDEOS_DIR=\"$HOME/\"\n"
                                               "#XDG_PICTURES_DIR=\"$HOME/commented\"\n";
  ScopedEnv h("HOME", home.c_str());
  ScopedEnv x("XDG_CONFIG_HOME", config.c_str());
  LinuxResources r;
  struct Case { int32_t csidl; std::optional<std::string> path; } cases[] = {
      {CSIDL_DESKTOPDIRECTORY, home + "/Schreibtisch"},
      {CSIDL_PERSONAL, "/data/docs"},  // leading blanks and a trailing slash
      {CSIDL_MYMUSIC, home + "/Music"},       // an unusable value falls back
      {CSIDL_MYVIDEO, home},
      {CSIDL_MYPICTURES, home + "/Pictures"}, // commented out
      {CSIDL_TEMPLATES, home + "/Templates"}, // absent
      {CSIDL_PROFILE, home},
      {CSIDL_DRIVES, std::nullopt},
  };
  for (const Case& c : cases) {
    std::string path;
    const bool ok = r.SpecialFolderPath(c.csidl, path);
    EXPECT_EQ(ok ? std::optional<std::string>(path) : std::nullopt, c.path) << "csidl " << c.csidl;
  }
}

}  // namespace
}  // namespace nxfv
