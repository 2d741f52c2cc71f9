#include "platform/linux/linux_locale_time.h"

#include <cstdio>

#include "platform/sim/sim_services.h"
#include "platform/utf8.h"

// Placeholders until the real implementations land.
namespace nxfv {

bool LinuxTime::FileTimeToLocalFileTime(uint64_t utc, uint64_t& local) {
  local = utc;
  return true;
}
bool LinuxTime::DosDateTimeToFileTime(uint16_t d, uint16_t t, uint64_t& ft) {
  SimTime sim;
  return sim.DosDateTimeToFileTime(d, t, ft);
}

LinuxLocale::LinuxLocale() = default;
std::string LinuxLocale::CharUpper(const std::string& text) { return Utf8Upper(text); }
std::string LinuxLocale::CharLower(const std::string& text) { return Utf8Lower(text); }
int32_t LinuxLocale::MeasureText(const std::string& text, int32_t) {
  return static_cast<int32_t>(CodePointCount(text)) * 7;
}

std::optional<std::string> LinuxResources::LoadString(const std::string&, int32_t) { return std::nullopt; }
bool LinuxResources::SpecialFolderPath(int32_t, std::string&) { return false; }

}  // namespace nxfv
