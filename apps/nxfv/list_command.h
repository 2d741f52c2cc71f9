// `nxfv list [options] PATH`: lists PATH as the control shows it in report
// view (a folder, or a .zip/.cab file as the archive view).
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace nxfv {
class Object;
class Platform;
}

namespace nxfv::cli {

// args: everything after "list". Returns the exit code: 0 success, 1 a
// missing path, 2 a usage error.
// With keepAlive, the viewer is handed to the caller instead of being
// destroyed: a process about to end need not free a million items one by one.
int RunListCommand(const std::vector<std::string>& args, nxfv::Platform& platform, std::ostream& out,
                   std::ostream& err, std::shared_ptr<nxfv::Object>* keepAlive = nullptr);

// The usage text of the list command.
std::string ListUsage();

}  // namespace nxfv::cli
