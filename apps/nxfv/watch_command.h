// `nxfv watch [--json] PATH`: lists the folder PATH, then lists it again
// after every change on disk the viewer's auto-refresh picks up (a burst of
// changes gives one listing, not one per change), until interrupted.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace nxfv {
class LinuxPlatform;
}

namespace nxfv::cli {

// args: everything after "watch". Returns the exit code: 1 when PATH is
// missing or goes away while watched, 2 a usage error; otherwise it only
// returns when keepGoing answers false (checked after every wait of at most
// waitMs), with 0. Listings are separated by a blank line; with --json each
// is one line holding the document `list --json` prints.
int RunWatchCommand(const std::vector<std::string>& args, LinuxPlatform& platform, std::ostream& out,
                    std::ostream& err, const std::function<bool()>& keepGoing = {}, int waitMs = -1);

std::string WatchUsage();

}  // namespace nxfv::cli
