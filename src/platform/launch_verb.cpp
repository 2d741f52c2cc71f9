#include "nxfv/platform/launcher.h"

#include <array>
#include <utility>

namespace nxfv {

std::optional<LaunchVerb> ParseLaunchVerb(const std::string& verb) {
  static constexpr std::array<std::pair<const char*, LaunchVerb>, 6> kVerbs{{
      {"open", LaunchVerb::Open},
      {"edit", LaunchVerb::Edit},
      {"print", LaunchVerb::Print},
      {"properties", LaunchVerb::Properties},
      {"explore", LaunchVerb::Explore},
      {"find", LaunchVerb::Find},
  }};
  if (verb.empty()) return LaunchVerb::Open;
  std::string lower = verb;
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  for (const auto& [name, value] : kVerbs)
    if (lower == name) return value;
  return std::nullopt;
}

}  // namespace nxfv
