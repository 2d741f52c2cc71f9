#include "platform/linux/linux_shell_services.h"

#include <cstdio>

#include "platform/sim/sim_services.h"
#include "platform/utf8.h"

// Placeholders until the real implementations land.
namespace nxfv {

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
