#include "nxfv/platform/linux/linux_locale_time.h"

#include <langinfo.h>
#include <locale.h>
#include <pwd.h>
#include <time.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "nxfv/platform/date.h"
#include "nxfv/platform/utf8.h"

namespace nxfv {

// ---- Time ------------------------------------------------------------------

namespace {
constexpr uint64_t kTicksPerSecond = 10000000ULL;
constexpr int64_t kSeconds1601To1970 = 11644473600LL;
}  // namespace

bool LinuxTime::FileTimeToLocalFileTime(uint64_t utc, uint64_t& local) {
  local = 0;
  const int64_t unixSeconds = static_cast<int64_t>(utc / kTicksPerSecond) - kSeconds1601To1970;
  const time_t t = static_cast<time_t>(unixSeconds);
  struct tm parts {};
  if (!localtime_r(&t, &parts)) return false;
  const int64_t shift = static_cast<int64_t>(parts.tm_gmtoff) * static_cast<int64_t>(kTicksPerSecond);
  if (shift < 0 && utc < static_cast<uint64_t>(-shift)) return false;
  if (shift > 0 && UINT64_MAX - utc < static_cast<uint64_t>(shift)) return false;
  local = shift < 0 ? utc - static_cast<uint64_t>(-shift) : utc + static_cast<uint64_t>(shift);
  return true;
}

bool LinuxTime::DosDateTimeToFileTime(uint16_t dosDate, uint16_t dosTime, uint64_t& fileTime) {
  return DosWordsToFileTime(dosDate, dosTime, fileTime);
}

// ---- Locale ----------------------------------------------------------------

namespace {

bool IsPictureLetter(char c) {
  return c == 'd' || c == 'M' || c == 'y' || c == 'h' || c == 'H' || c == 'm' || c == 's' || c == 't';
}

// Appends literal text, quoted when it holds characters the pattern would
// otherwise read as fields.
void AppendLiteral(std::string& out, const std::string& text) {
  bool plain = true;
  for (char c : text) plain &= !IsPictureLetter(c) && c != '\'';
  if (plain) {
    out += text;
    return;
  }
  out += '\'';
  for (char c : text) {
    if (c == '\'') out += '\'';
    out += c;
  }
  out += '\'';
}

std::string Translate(const std::string& format, int depth);

std::string Nested(nl_item item, const char* fallback, int depth) {
  if (depth > 2) return fallback;
  const char* f = nl_langinfo(item);
  return Translate(f && *f ? f : fallback, depth + 1);
}

std::string Translate(const std::string& format, int depth) {
  std::string out, literal;
  const auto flush = [&] {
    AppendLiteral(out, literal);
    literal.clear();
  };
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%' || i + 1 >= format.size()) {
      literal += format[i];
      continue;
    }
    ++i;
    bool unpadded = false;
    while (i < format.size() && (format[i] == '-' || format[i] == '_' || format[i] == '0' ||
                                 format[i] == '^' || format[i] == '#')) {
      unpadded |= format[i] == '-' || format[i] == '_';
      ++i;
    }
    while (i < format.size() && format[i] >= '0' && format[i] <= '9') ++i;
    if (i < format.size() && (format[i] == 'E' || format[i] == 'O')) ++i;
    if (i >= format.size()) break;
    const char c = format[i];
    std::string field;
    switch (c) {
      case 'd': field = unpadded ? "d" : "dd"; break;
      case 'e': field = "d"; break;
      case 'm': case 'b': case 'B': case 'h': field = unpadded ? "M" : "MM"; break;
      case 'Y': case 'y': case 'G': case 'g': field = "yyyy"; break;  // two-digit years widened
      case 'H': field = unpadded ? "H" : "HH"; break;
      case 'k': field = "H"; break;
      case 'I': field = unpadded ? "h" : "hh"; break;
      case 'l': field = "h"; break;
      case 'M': field = unpadded ? "m" : "mm"; break;
      case 'S': field = unpadded ? "s" : "ss"; break;
      case 'p': case 'P': field = "tt"; break;
      case 'T': field = "HH:mm:ss"; break;
      case 'R': field = "HH:mm"; break;
      case 'D': field = "MM/dd/yyyy"; break;
      case 'F': field = "yyyy-MM-dd"; break;
      case 'r': field = Nested(T_FMT_AMPM, "%I:%M:%S %p", depth); break;
      case 'x': field = Nested(D_FMT, "%m/%d/%y", depth); break;
      case 'X': field = Nested(T_FMT, "%H:%M:%S", depth); break;
      case 'n': case 't': literal += ' '; continue;
      case '%': literal += '%'; continue;
      default: continue;  // weekday names, week numbers, zones: no picture form
    }
    flush();
    out += field;
  }
  flush();
  return out;
}

int FirstGroup(const char* grouping) {
  if (!grouping || *grouping <= 0 || *grouping == CHAR_MAX) return 0;
  return *grouping;
}

}  // namespace

std::string StrftimeToPicture(const std::string& format) { return Translate(format, 0); }

LinuxLocale::LinuxLocale() {
  const char* date = nl_langinfo(D_FMT);
  const char* time = nl_langinfo(T_FMT);
  formats_.shortDatePattern = StrftimeToPicture(date && *date ? date : "%m/%d/%y");
  formats_.longTimePattern = StrftimeToPicture(time && *time ? time : "%H:%M:%S");
  const char* am = nl_langinfo(AM_STR);
  const char* pm = nl_langinfo(PM_STR);
  formats_.amDesignator = am ? am : "";
  formats_.pmDesignator = pm ? pm : "";
  if (const lconv* lc = localeconv()) {
    formats_.thousandsSeparator = lc->thousands_sep ? lc->thousands_sep : "";
    formats_.decimalSeparator = lc->decimal_point && *lc->decimal_point ? lc->decimal_point : ".";
    formats_.groupingSize = formats_.thousandsSeparator.empty() ? 0 : FirstGroup(lc->grouping);
  }
}

std::string LinuxLocale::CharUpper(const std::string& text) { return Utf8Upper(text); }
std::string LinuxLocale::CharLower(const std::string& text) { return Utf8Lower(text); }
int32_t LinuxLocale::MeasureText(const std::string& text, int32_t) {
  return static_cast<int32_t>(CodePointCount(text)) * kCharWidth;
}

// ---- Resources -------------------------------------------------------------

std::optional<std::string> LinuxResources::LoadString(const std::string& library, int32_t id) {
  const std::string lib = Utf8Upper(library);
  if (lib == "SHELL32.DLL") {
    switch (id) {
      case 8976: return "Name";
      case 8978: return "Size";
      case 8979: return "Type";
      case 8980: return "Modified";
      case 8987: return "Attributes";
      case 8996: return "Created";
      case 8997: return "Accessed";
      default: return std::string();
    }
  }
  if (lib == "INTL.CPL") return id == 25 ? "Time" : std::string();
  return std::nullopt;
}

namespace {

std::string HomeFolder() {
  if (const char* home = std::getenv("HOME"); home && *home) return home;
  std::vector<char> buf(16384);
  struct passwd pw {};
  struct passwd* found = nullptr;
  if (getpwuid_r(getuid(), &pw, buf.data(), buf.size(), &found) == 0 && found && found->pw_dir)
    return found->pw_dir;
  return {};
}

// The value of `key` in user-dirs.dirs ("" when absent or unusable). Lines
// look like XDG_DESKTOP_DIR="$HOME/Desktop"; only "$HOME/..." and absolute
// paths are valid values.
std::string UserDirsValue(const std::string& home, const std::string& key) {
  std::string config;
  if (const char* x = std::getenv("XDG_CONFIG_HOME"); x && *x == '/') config = x;
  else config = home + "/.config";
  std::FILE* f = std::fopen((config + "/user-dirs.dirs").c_str(), "r");
  if (!f) return {};
  std::string found;
  char line[4096];
  while (std::fgets(line, sizeof line, f)) {
    std::string s(line);
    while (!s.empty() && (s.back() == '\n' || s.back() == '\r')) s.pop_back();
    const size_t b = s.find_first_not_of(" \t");
    if (b == std::string::npos || s[b] == '#') continue;
    const size_t eq = s.find('=', b);
    if (eq == std::string::npos || s.compare(b, eq - b, key) != 0) continue;
    std::string v = s.substr(eq + 1);
    if (v.size() >= 2 && v.front() == '"') {
      std::string unq;
      for (size_t i = 1; i < v.size() && v[i] != '"'; ++i) {
        if (v[i] == '\\' && i + 1 < v.size()) ++i;
        unq += v[i];
      }
      v = unq;
    }
    if (v == "$HOME" || v.rfind("$HOME/", 0) == 0) v = home + v.substr(5);
    else if (v.empty() || v[0] != '/') continue;
    while (v.size() > 1 && v.back() == '/') v.pop_back();
    found = v;  // the last assignment wins, as in a shell
  }
  std::fclose(f);
  return found;
}

}  // namespace

bool LinuxResources::SpecialFolderPath(int32_t csidl, std::string& path) {
  const char* key = nullptr;
  const char* fallback = nullptr;
  switch (csidl) {
    case 0: case 16: key = "XDG_DESKTOP_DIR"; fallback = "Desktop"; break;  // desktop, its folder
    case 5: case 12: key = "XDG_DOCUMENTS_DIR"; fallback = "Documents"; break;
    case 13: key = "XDG_MUSIC_DIR"; fallback = "Music"; break;
    case 14: key = "XDG_VIDEOS_DIR"; fallback = "Videos"; break;
    case 21: key = "XDG_TEMPLATES_DIR"; fallback = "Templates"; break;
    case 39: key = "XDG_PICTURES_DIR"; fallback = "Pictures"; break;
    case 40: break;  // the profile: home itself
    default: return false;
  }
  const std::string home = HomeFolder();
  if (home.empty()) return false;
  if (!key) {
    path = home;
    return true;
  }
  std::string v = UserDirsValue(home, key);
  path = v.empty() ? home + "/" + fallback : v;
  return true;
}

}  // namespace nxfv
