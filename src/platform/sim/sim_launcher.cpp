#include "nxfv/platform/sim/sim_launcher.h"

namespace nxfv {

bool SimLauncher::Launch(const std::string& path, const std::string& verb) {
  requests_.push_back({path, verb});
  if (!ParseLaunchVerb(verb) || path.empty()) return false;
  if (script_.empty()) return true;
  const bool answer = script_.front();
  script_.pop_front();
  return answer;
}

}  // namespace nxfv
