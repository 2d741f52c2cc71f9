// `nxfv entries [--ext EXT] ARCHIVE`: prints the archive reader's events,
// one JSON object a line, keys in event order:
//   {"Index":1,"Total":2,"FileName":"a.txt","ArchiveExt":"zip",
//    "Modified":45366.43798611111,"Size":5,"CompSize":5,"Method":0,
//    "Attr":-2119958496,"Path":"docs/","flags":0,"CRC":907060870,"Comments":""}
// Modified is the date value (days since 1899-12-30) printed so that it
// reads back exactly. The reader's message boxes go to the platform's
// message box service (on Linux: "nxfv: [TITLE] TEXT" on standard error).
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nxfv {
class Platform;
}

namespace nxfv::cli {

// args: everything after "entries"; options may stand before or after the
// archive. EXT defaults to the archive's extension in lower case without
// the dot. Returns 0 on success (also when the archive lists nothing), 1
// when the archive is missing or cannot be opened, 2 on a usage error.
int RunEntriesCommand(const std::vector<std::string>& args, nxfv::Platform& platform, std::ostream& out,
                      std::ostream& err);

// The usage text of the entries command.
std::string EntriesUsage();

// The extension that chooses the reader by default: "C:\x\A.ZIP" -> "zip",
// "/t/archive" -> "", "/t/.cab" -> "cab", "/a.b/c" -> "".
std::string DefaultArchiveExt(const std::string& path);

}  // namespace nxfv::cli
