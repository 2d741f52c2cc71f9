#include "platform/linux/linux_services.h"

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

bool LinuxMimeTypes::ClassesRootDefault(const std::string&, std::string&) { return false; }
int32_t LinuxIcons::SysIconIndex(const std::string&, uint32_t, uint32_t) { return 0; }

int32_t LinuxMessageBox::Show(const std::string& text, int32_t style, const std::string& title) {
  if (handler_) return handler_(text, style, title);
  std::string flat;
  for (char c : text) {
    if (c == '\n') flat += "\\n";
    else if (c != '\r') flat += c;
  }
  std::fprintf(stderr, "nxfv: [%s] %s\n", title.c_str(), flat.c_str());
  const int32_t buttons = style & 7;
  return buttons == kMbOkCancel || buttons == kMbYesNoCancel || buttons == kMbRetryCancel ? kAnswerCancel
                                                                                          : kAnswerOk;
}

}  // namespace nxfv
