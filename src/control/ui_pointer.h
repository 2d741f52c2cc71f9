// The mouse pointer shown while the control works, restored on every exit.
#pragma once

#include <cstdint>

#include "nxfv/platform/services.h"

namespace nxfv {

inline constexpr int32_t kHourglassPointer = 11;

class ScopedPointer {
 public:
  ScopedPointer(UiService& ui, int32_t pointer) : ui_(ui), previous_(ui.MousePointer()) { ui_.SetMousePointer(pointer); }
  ~ScopedPointer() { ui_.SetMousePointer(previous_); }
  ScopedPointer(const ScopedPointer&) = delete;
  ScopedPointer& operator=(const ScopedPointer&) = delete;

 private:
  UiService& ui_;
  int32_t previous_;
};

}  // namespace nxfv
