#include "nxfv/shell/date_convert.h"

#include "nxfv/platform/date.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

namespace {
constexpr uint64_t kTicksPerDay = 864000000000ULL;

// Whole days and the fraction apart, so that no precision is lost to the
// size of the tick count.
double TicksToDate(uint64_t ticks) {
  const double days = static_cast<double>(ticks / kTicksPerDay);
  const double frac = static_cast<double>(ticks % kTicksPerDay) / static_cast<double>(kTicksPerDay);
  return days - kDaysFrom1601To1899 + frac;
}
}  // namespace

double FileTimeToDate(Platform& platform, uint64_t fileTime, bool toLocal) {
  uint64_t ft = fileTime == 0 ? kMissingFileTime : fileTime;
  if (toLocal) {
    uint64_t local = 0;
    platform.Time().FileTimeToLocalFileTime(ft, local);  // a failure leaves 0
    ft = local;
  }
  return TicksToDate(ft);
}

double FileTimeToDate(uint64_t fileTime, bool toLocal) {
  return FileTimeToDate(ActivePlatform(), fileTime, toLocal);
}

double DosDateToDate(Platform& platform, int32_t dosDate, int32_t dosTime) {
  uint64_t ft = 0;
  if (!platform.Time().DosDateTimeToFileTime(static_cast<uint16_t>(dosDate & 0xFFFF),
                                             static_cast<uint16_t>(dosTime & 0xFFFF), ft))
    ft = 0;
  return FileTimeToDate(platform, ft, false);
}

double DosDateToDate(int32_t dosDate, int32_t dosTime) {
  return DosDateToDate(ActivePlatform(), dosDate, dosTime);
}

}  // namespace nxfv
