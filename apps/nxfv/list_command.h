// `nxfv list [options] PATH`: lists PATH as the control shows it in report
// view (a folder, or a .zip/.cab file as the archive view).
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nxfv {
class Platform;
}

namespace nxfv::cli {

// args: everything after "list". Returns the exit code: 0 success, 1 a
// missing path, 2 a usage error.
int RunListCommand(const std::vector<std::string>& args, nxfv::Platform& platform, std::ostream& out,
                   std::ostream& err);

// The usage text of the list command.
std::string ListUsage();

}  // namespace nxfv::cli
