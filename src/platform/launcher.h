// Opening files with the system's handler, or running a verb on them.
//
// Contract: called on the host's thread; Launch hands the request over and
// returns at once, without waiting for the handler to finish. Verbs are
// "open", "edit", "print", "properties", "explore" and "find", in any case;
// an empty verb means "open". Errors: false for an unknown verb, an empty
// path, a verb the platform has no handler for, or a handler that cannot be
// started. What the handler later does with the file is not reported.
// Nothing throws.
#pragma once

#include <optional>
#include <string>

namespace nxfv {

enum class LaunchVerb { Open, Edit, Print, Properties, Explore, Find };

// "" and the six verb names (ASCII case ignored) -> the verb; nullopt for
// anything else ("Print" -> Print, "openwith" -> nullopt).
std::optional<LaunchVerb> ParseLaunchVerb(const std::string& verb);

class LauncherService {
 public:
  virtual ~LauncherService() = default;
  virtual bool Launch(const std::string& path, const std::string& verb = "open") = 0;
};

}  // namespace nxfv
