// A launcher that records every request and answers from a script. Unknown
// verbs are recorded too but always fail without using a scripted answer;
// with the script empty, known verbs succeed.
#pragma once

#include <deque>
#include <initializer_list>
#include <vector>

#include "nxfv/platform/launcher.h"

namespace nxfv {

struct LaunchRecord {
  std::string path;
  std::string verb;
  bool operator==(const LaunchRecord&) const = default;
};

class SimLauncher : public LauncherService {
 public:
  bool Launch(const std::string& path, const std::string& verb = "open") override;

  // Answers for the next launches of a known verb, in order.
  void Script(std::initializer_list<bool> answers) { script_.insert(script_.end(), answers); }
  const std::vector<LaunchRecord>& Requests() const { return requests_; }
  void Clear() { requests_.clear(); }

 private:
  std::deque<bool> script_;
  std::vector<LaunchRecord> requests_;
};

}  // namespace nxfv
