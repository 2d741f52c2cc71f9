// Text and dates of archive directory entries.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "nxfv/platform/services.h"

namespace nxfv {

// The legacy code page a format's stored names fall back to.
enum class LegacyCodePage { kCp437, kWindows1252 };

// Stored name or comment bytes -> UTF-8. Bytes that are valid UTF-8 (all
// ASCII names, names marked UTF-8, names written by UTF-8 systems) stay as
// they are; anything else is decoded whole through the legacy code page, so
// the result is always valid UTF-8. NUL bytes are kept.
//   {0x81, 'x'} with kCp437 -> "üx";  {0xC3, 0xBC} -> "ü" (already UTF-8)
std::string DecodeArchiveText(std::span<const uint8_t> bytes, LegacyCodePage codePage);

// Splits a stored name at its last "/", or failing that its last "\":
// "docs/a.txt" -> path "docs/", name "a.txt"; "docs/" -> "docs/", "";
// "a\b/c" -> "a\b/", "c"; "plain" -> "", "plain".
void SplitArchiveName(std::string_view stored, std::string& path, std::string& fileName);

// Date value of a DOS date and time, through the platform's conversion and
// without any time-zone change (archive times are local already). An
// invalid DOS date gives 1980-01-01 03:00:00, the reader's substitute.
double ArchiveDateValue(TimeService& time, uint16_t dosDate, uint16_t dosTime);

// ArchiveDateValue of the last date and time asked for, remembered: the
// entries of an archive mostly share a handful of timestamps.
class DosDateCache {
 public:
  double Get(TimeService& time, uint16_t dosDate, uint16_t dosTime);

 private:
  bool valid_ = false;
  uint16_t date_ = 0;
  uint16_t time_ = 0;
  double value_ = 0;
};

// The substitute for an invalid DOS date, in milliseconds since 1601.
inline constexpr int64_t kInvalidDosDateMs = 11960017200000LL;

}  // namespace nxfv
