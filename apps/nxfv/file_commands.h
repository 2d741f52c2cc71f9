// The file commands: copy, move, delete and rename through the platform's
// file-operation service, the way the control hands them over.
//
//   nxfv copy|move [options] SRC... DEST   several sources go into the folder DEST
//   nxfv delete [--trash] [options] PATH...
//   nxfv rename [options] PATH NEWNAME     NEWNAME: a name in PATH's folder
//
// Options: --no-confirm (ask nothing; an existing target is replaced),
// --rename-on-collision (an existing target gives a free name "x (2).txt"),
// --silent (no progress line). Without either of the first two a collision
// asks "replace?" on the terminal.
//
// The command line is the service's host: a question goes to standard error
// and is answered from standard input when that is a terminal, otherwise
// it counts as "no" (so a script never replaces or deletes without
// --no-confirm); progress is one line on standard error, rewritten in
// place, when standard error is a terminal; a failed item prints
// "nxfv: PATH: REASON". Exit status: 0 when everything was done, 1 when
// anything failed or was left out, 2 for a usage error.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace nxfv {
class Platform;
}

namespace nxfv::cli {

// Where questions are answered and whether a progress line may be drawn;
// the defaults look at the process's own standard input and error.
struct Terminal {
  bool interactive = false;         // questions are read from answers
  bool progress = false;            // a progress line may be written to err
  std::istream* answers = nullptr;  // one line per question: y or yes answers yes
  static Terminal OfProcess();
};

bool IsFileCommand(const std::string& command);

// command: copy, move, delete or rename; args: everything after it.
int RunFileCommand(const std::string& command, const std::vector<std::string>& args, Platform& platform,
                   std::ostream& out, std::ostream& err, const Terminal& terminal = Terminal::OfProcess());

std::string FileCommandsUsage();

}  // namespace nxfv::cli
