// The Linux platform's time, locale and string-table services.
#pragma once

#include <optional>
#include <string>

#include "nxfv/platform/services.h"

namespace nxfv {

// Local time from the process's time zone (TZ, /etc/localtime): the UTC
// offset in force at the converted instant, daylight saving included.
class LinuxTime : public TimeService {
 public:
  bool FileTimeToLocalFileTime(uint64_t utc, uint64_t& local) override;
  // Pure calendar arithmetic, no time zone (as the DOS words carry none).
  bool DosDateTimeToFileTime(uint16_t dosDate, uint16_t dosTime, uint64_t& fileTime) override;
};

// Formats of the process locale (LC_TIME, LC_NUMERIC), read once at
// construction: D_FMT and T_FMT translated to picture patterns, AM_STR and
// PM_STR, and localeconv()'s separators and first group size. A two-digit
// year (%y) is widened to "yyyy": the date texts are read back by the sort
// keys, and a four-digit year survives that round trip for every date.
// Case mapping is Unicode's simple mapping of UTF-8 text; text measures 7
// pixels per code point.
class LinuxLocale : public LocaleService {
 public:
  LinuxLocale();
  const LocaleFormats& Formats() override { return formats_; }
  std::string CharUpper(const std::string& text) override;
  std::string CharLower(const std::string& text) override;
  int32_t MeasureText(const std::string& text, int32_t hdc) override;
  static constexpr int32_t kCharWidth = 7;

 private:
  LocaleFormats formats_;
};

// strftime format -> picture pattern ("%d.%m.%Y" -> "dd.MM.yyyy",
// "%r" -> "hh:mm:ss tt"). Literal text that contains picture letters is
// quoted. Conversions without a numeric picture form are approximated
// (month names as MM) or dropped (weekday names). Exposed for tests.
std::string StrftimeToPicture(const std::string& format);

// English captions of the system string tables the column set asks for
// ("Shell32.Dll" 8976 "Name", ..., "Intl.Cpl" 25 "Time"); special folders
// from the XDG user directories (${XDG_CONFIG_HOME:-~/.config}/user-dirs.dirs,
// "$HOME/..." expanded, defaults ~/Desktop, ~/Documents, ...) and the home
// folder for CSIDL_PROFILE.
class LinuxResources : public ResourceService {
 public:
  std::optional<std::string> LoadString(const std::string& library, int32_t id) override;
  bool SpecialFolderPath(int32_t csidl, std::string& path) override;
};

}  // namespace nxfv
