#include "nxfv/platform/platform.h"

#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv {

namespace {
PlatformRef& ActiveSlot() {
  thread_local PlatformRef active;
  return active;
}
}  // namespace

PlatformRef ActivePlatformRef() {
  auto& slot = ActiveSlot();
  if (!slot) slot = std::make_shared<SimulatedPlatform>();
  return slot;
}

Platform& ActivePlatform() { return *ActivePlatformRef(); }

void SetActivePlatform(PlatformRef platform) { ActiveSlot() = std::move(platform); }

ScopedActivePlatform::ScopedActivePlatform(PlatformRef platform) : previous_(ActiveSlot()) {
  ActiveSlot() = std::move(platform);
}

ScopedActivePlatform::~ScopedActivePlatform() { ActiveSlot() = std::move(previous_); }

}  // namespace nxfv
