#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv {

SimulatedPlatform::SimulatedPlatform() = default;

std::string SimulatedPlatform::RootOf(const std::string& path) const {
  // "C:\x" -> "C:\"; the root of a drive path is its first three characters.
  return path.substr(0, 3);
}

}  // namespace nxfv
