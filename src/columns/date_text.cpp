#include "nxfv/columns/date_text.h"

#include <cmath>
#include <vector>

#include "nxfv/platform/date.h"
#include "nxfv/platform/platform.h"
#include "nxfv/platform/utf8.h"

namespace nxfv {

namespace {

// ---- Patterns ------------------------------------------------------------

enum class Field : uint8_t {
  Literal,
  Day, Day2,
  Month, Month2,
  Year1, Year2, Year4,
  Hour12, Hour12x2, Hour24, Hour24x2,
  Minute, Minute2,
  Second, Second2,
  Designator1, Designator,
};

struct Token {
  Field field = Field::Literal;
  std::string literal;
};

Field FieldOf(char letter, size_t run) {
  const bool longForm = run >= 2;
  switch (letter) {
    case 'd': return longForm ? Field::Day2 : Field::Day;
    case 'M': return longForm ? Field::Month2 : Field::Month;
    case 'y': return run >= 3 ? Field::Year4 : (longForm ? Field::Year2 : Field::Year1);
    case 'h': return longForm ? Field::Hour12x2 : Field::Hour12;
    case 'H': return longForm ? Field::Hour24x2 : Field::Hour24;
    case 'm': return longForm ? Field::Minute2 : Field::Minute;
    case 's': return longForm ? Field::Second2 : Field::Second;
    default: return longForm ? Field::Designator : Field::Designator1;  // 't'
  }
}

bool IsPictureLetter(char c) {
  return c == 'd' || c == 'M' || c == 'y' || c == 'h' || c == 'H' || c == 'm' || c == 's' || c == 't';
}

void AddLiteral(std::vector<Token>& tokens, std::string_view text) {
  if (text.empty()) return;
  if (tokens.empty() || tokens.back().field != Field::Literal) tokens.push_back({});
  tokens.back().literal += text;
}

std::vector<Token> Compile(std::string_view pattern) {
  std::vector<Token> tokens;
  size_t i = 0;
  while (i < pattern.size()) {
    const char c = pattern[i];
    if (c == '\'') {
      if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {  // '' is one quote
        AddLiteral(tokens, "'");
        i += 2;
        continue;
      }
      ++i;
      std::string quoted;
      while (i < pattern.size()) {
        if (pattern[i] == '\'') {
          if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {
            quoted += '\'';
            i += 2;
            continue;
          }
          ++i;
          break;
        }
        quoted += pattern[i++];
      }
      AddLiteral(tokens, quoted);
      continue;
    }
    if (IsPictureLetter(c)) {
      size_t run = 1;
      while (i + run < pattern.size() && pattern[i + run] == c) ++run;
      tokens.push_back({FieldOf(c, run), {}});
      i += run;
      continue;
    }
    AddLiteral(tokens, pattern.substr(i, 1));
    ++i;
  }
  return tokens;
}

// The locale's two patterns, compiled, are cached per thread: a listing
// formats with the same two patterns a million times, and comparing two
// short strings costs far less than compiling them.
struct CompiledFormats {
  std::string datePattern, timePattern;
  std::vector<Token> date, time;
  bool valid = false;
};

const CompiledFormats& Compiled(const LocaleFormats& fmt) {
  thread_local CompiledFormats cache;
  if (!cache.valid || cache.datePattern != fmt.shortDatePattern || cache.timePattern != fmt.longTimePattern) {
    cache.datePattern = fmt.shortDatePattern;
    cache.timePattern = fmt.longTimePattern;
    cache.date = Compile(fmt.shortDatePattern);
    cache.time = Compile(fmt.longTimePattern);
    cache.valid = true;
  }
  return cache;
}

// ---- Date values to fields -----------------------------------------------

constexpr int64_t kEpochDays1970 = -25569;  // DaysFromCivil(1899, 12, 30)
constexpr int64_t kFirstValidDay = -657434;  // 100-01-01
constexpr int64_t kLastValidDay = 2958465;   // 9999-12-31
constexpr int64_t kDay1980 = 29221;          // 1980-01-01

// Whole days (counted toward zero, as the host does) and the time of day in
// whole seconds, rounded to the nearest second with the carry into the day.
bool SplitDate(double date, int64_t& days, int32_t& seconds) {
  if (!std::isfinite(date) || std::fabs(date) > 1e12) return false;
  double whole = std::trunc(date);
  int64_t secs = std::llround(std::fabs(date - whole) * 86400.0);
  if (secs >= 86400) {
    secs -= 86400;
    whole += date < 0 ? -1 : 1;
  }
  days = static_cast<int64_t>(whole);
  seconds = static_cast<int32_t>(secs);
  return true;
}

struct Fields {
  int year = 1899, month = 12, day = 30;
  int hour = 0, minute = 0, second = 0;
};

bool FieldsOf(double date, Fields& f) {
  int64_t days = 0;
  int32_t secs = 0;
  if (!SplitDate(date, days, secs) || days < kFirstValidDay || days > kLastValidDay) return false;
  CivilFromDays(days + kEpochDays1970, f.year, f.month, f.day);
  f.hour = secs / 3600;
  f.minute = secs / 60 % 60;
  f.second = secs % 60;
  return true;
}

void AppendNumber(std::string& out, int value, int minDigits) {
  char buf[12];
  int n = 0;
  unsigned v = static_cast<unsigned>(value < 0 ? 0 : value);
  do {
    buf[n++] = static_cast<char>('0' + v % 10);
    v /= 10;
  } while (v != 0);
  while (n < minDigits) buf[n++] = '0';
  char text[12];
  for (int k = 0; k < n; ++k) text[k] = buf[n - 1 - k];
  out.append(text, static_cast<size_t>(n));
}

void AppendFirstCodePoint(std::string& out, const std::string& text) {
  size_t i = 0;
  if (!text.empty()) DecodeUtf8(text, i);
  out.append(text, 0, i);
}

void Render(std::string& out, const std::vector<Token>& tokens, const Fields& f, const LocaleFormats& fmt) {
  const int hour12 = f.hour % 12 == 0 ? 12 : f.hour % 12;
  const std::string& designator = f.hour < 12 ? fmt.amDesignator : fmt.pmDesignator;
  for (const Token& t : tokens) {
    switch (t.field) {
      case Field::Literal: out += t.literal; break;
      case Field::Day: AppendNumber(out, f.day, 1); break;
      case Field::Day2: AppendNumber(out, f.day, 2); break;
      case Field::Month: AppendNumber(out, f.month, 1); break;
      case Field::Month2: AppendNumber(out, f.month, 2); break;
      case Field::Year1: AppendNumber(out, f.year % 100, 1); break;
      case Field::Year2: AppendNumber(out, f.year % 100, 2); break;
      case Field::Year4: AppendNumber(out, f.year, 4); break;
      case Field::Hour12: AppendNumber(out, hour12, 1); break;
      case Field::Hour12x2: AppendNumber(out, hour12, 2); break;
      case Field::Hour24: AppendNumber(out, f.hour, 1); break;
      case Field::Hour24x2: AppendNumber(out, f.hour, 2); break;
      case Field::Minute: AppendNumber(out, f.minute, 1); break;
      case Field::Minute2: AppendNumber(out, f.minute, 2); break;
      case Field::Second: AppendNumber(out, f.second, 1); break;
      case Field::Second2: AppendNumber(out, f.second, 2); break;
      case Field::Designator1: AppendFirstCodePoint(out, designator); break;
      case Field::Designator: out += designator; break;
    }
  }
}

// ---- Parsing ---------------------------------------------------------------

struct Parsed {
  Fields f;
  int hour12 = -1;      // value read by an h / hh field
  bool pm = false;
  bool hasDate = false;  // some date field was read
};

// Reads 1..maxDigits digits; a variable-width field never has a leading
// zero (the formatter writes none), a fixed-width one has exactly `exact`.
bool ReadNumber(std::string_view text, size_t& pos, int exact, int& value) {
  const size_t start = pos;
  const size_t maxDigits = exact > 0 ? static_cast<size_t>(exact) : 2;
  int v = 0;
  while (pos < text.size() && pos - start < maxDigits && text[pos] >= '0' && text[pos] <= '9')
    v = v * 10 + (text[pos++] - '0');
  const size_t n = pos - start;
  if (n == 0 || (exact > 0 && n != static_cast<size_t>(exact))) return false;
  if (exact == 0 && n > 1 && text[start] == '0') return false;
  value = v;
  return true;
}

bool StartsWith(std::string_view text, size_t pos, std::string_view what) {
  return text.size() - pos >= what.size() && text.compare(pos, what.size(), what) == 0;
}

bool ReadDesignator(std::string_view text, size_t& pos, std::string_view am, std::string_view pm, bool& isPm) {
  const bool amOk = StartsWith(text, pos, am);
  const bool pmOk = StartsWith(text, pos, pm);
  if (!amOk && !pmOk) return false;
  isPm = pmOk && (!amOk || pm.size() > am.size());
  pos += isPm ? pm.size() : am.size();
  return true;
}

std::string_view FirstCodePoint(const std::string& text) {
  size_t i = 0;
  if (!text.empty()) DecodeUtf8(text, i);
  return std::string_view(text).substr(0, i);
}

int WindowYear(int yy) { return yy < 30 ? 2000 + yy : 1900 + yy; }

bool Match(std::string_view text, size_t& pos, const std::vector<Token>& tokens, const LocaleFormats& fmt,
           Parsed& p) {
  for (const Token& t : tokens) {
    int v = 0;
    switch (t.field) {
      case Field::Literal:
        if (!StartsWith(text, pos, t.literal)) return false;
        pos += t.literal.size();
        continue;
      case Field::Designator:
        if (!ReadDesignator(text, pos, fmt.amDesignator, fmt.pmDesignator, p.pm)) return false;
        continue;
      case Field::Designator1:
        if (!ReadDesignator(text, pos, FirstCodePoint(fmt.amDesignator), FirstCodePoint(fmt.pmDesignator), p.pm))
          return false;
        continue;
      default: break;
    }
    int exact = 0;
    switch (t.field) {
      case Field::Day2: case Field::Month2: case Field::Year2: case Field::Hour12x2:
      case Field::Hour24x2: case Field::Minute2: case Field::Second2:
        exact = 2;
        break;
      case Field::Year4: exact = 4; break;
      default: break;
    }
    if (!ReadNumber(text, pos, exact, v)) return false;
    switch (t.field) {
      case Field::Day: case Field::Day2: p.f.day = v; p.hasDate = true; break;
      case Field::Month: case Field::Month2: p.f.month = v; p.hasDate = true; break;
      case Field::Year1: case Field::Year2: p.f.year = WindowYear(v); p.hasDate = true; break;
      case Field::Year4: p.f.year = v; p.hasDate = true; break;
      case Field::Hour12: case Field::Hour12x2: p.hour12 = v; break;
      case Field::Hour24: case Field::Hour24x2: p.f.hour = v; p.hour12 = -1; break;
      case Field::Minute: case Field::Minute2: p.f.minute = v; break;
      case Field::Second: case Field::Second2: p.f.second = v; break;
      default: break;
    }
  }
  return true;
}

bool Valid(Parsed& p) {
  if (p.hour12 >= 0) {
    if (p.hour12 < 1 || p.hour12 > 12) return false;
    p.f.hour = p.hour12 % 12 + (p.pm ? 12 : 0);
  }
  const Fields& f = p.f;
  return f.year >= 100 && f.year <= 9999 && f.month >= 1 && f.month <= 12 && f.day >= 1 &&
         f.day <= DaysInMonth(f.year, f.month) && f.hour >= 0 && f.hour <= 23 && f.minute >= 0 &&
         f.minute <= 59 && f.second >= 0 && f.second <= 59;
}

// One form: the date tokens and/or the time tokens, covering the whole text.
std::optional<double> TryForm(std::string_view text, const std::vector<Token>* date,
                              const std::vector<Token>* time, const LocaleFormats& fmt) {
  Parsed p;
  size_t pos = 0;
  if (date && !Match(text, pos, *date, fmt, p)) return std::nullopt;
  if (date && time) {
    if (pos >= text.size() || text[pos] != ' ') return std::nullopt;
    ++pos;
  }
  if (time && !Match(text, pos, *time, fmt, p)) return std::nullopt;
  if (pos != text.size() || !Valid(p)) return std::nullopt;
  const Fields& f = p.f;
  if (!date) return (f.hour * 3600.0 + f.minute * 60.0 + f.second) / 86400.0;
  return DateSerial(f.year, f.month, f.day, f.hour, f.minute, f.second);
}

}  // namespace

// ---- Public ----------------------------------------------------------------

std::string DateText(const LocaleFormats& formats, double date) {
  Fields f;
  if (!FieldsOf(date, f)) return {};
  std::string out;
  out.reserve(16);
  Render(out, Compiled(formats).date, f, formats);
  return out;
}

std::string TimeText(const LocaleFormats& formats, double date) {
  Fields f;
  if (!FieldsOf(date, f)) return {};
  std::string out;
  out.reserve(16);
  Render(out, Compiled(formats).time, f, formats);
  return out;
}

std::string DateTimeText(const LocaleFormats& formats, double date) {
  Fields f;
  if (!FieldsOf(date, f)) return {};
  std::string out;
  out.reserve(32);
  Render(out, Compiled(formats).date, f, formats);
  out += ' ';
  Render(out, Compiled(formats).time, f, formats);
  return out;
}

std::string DateText(Platform& platform, double date) { return DateText(platform.Locale().Formats(), date); }
std::string TimeText(Platform& platform, double date) { return TimeText(platform.Locale().Formats(), date); }
std::string DateTimeText(Platform& platform, double date) {
  return DateTimeText(platform.Locale().Formats(), date);
}

std::optional<double> ParseDateText(const LocaleFormats& formats, std::string_view text) {
  if (text.empty()) return std::nullopt;
  const CompiledFormats& c = Compiled(formats);
  const std::vector<Token>& date = c.date;
  const std::vector<Token>& time = c.time;
  if (auto v = TryForm(text, &date, &time, formats)) return v;
  if (auto v = TryForm(text, &date, nullptr, formats)) return v;
  return TryForm(text, nullptr, &time, formats);
}

int64_t SecondsSince1980(double date) {
  int64_t days = 0;
  int32_t secs = 0;
  if (!SplitDate(date, days, secs)) return 0;
  return (days - kDay1980) * 86400 + secs;
}

std::optional<int64_t> DateTextSecondsSince1980(const LocaleFormats& formats, std::string_view text) {
  auto date = ParseDateText(formats, text);
  if (!date) return std::nullopt;
  return SecondsSince1980(*date);
}

}  // namespace nxfv
