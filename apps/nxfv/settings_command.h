// `nxfv settings [FILE]`: prints the settings file the control would write,
// after reading FILE when one is given (its unknown keys and other lines
// kept). The format is TextPropertyBag's: one key=value a line.
#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace nxfv {
class Platform;
class FileViewer;
}  // namespace nxfv

namespace nxfv::cli {

int RunSettingsCommand(const std::vector<std::string>& args, nxfv::Platform& platform, std::ostream& out,
                       std::ostream& err);
std::string SettingsUsage();

// list --settings FILE: reads FILE into viewer with CurrentFolder replaced
// by path (so that reading lists it) and the given overrides written over
// the file's values. False (message written to err) when FILE cannot be read.
bool ReadSettingsFile(nxfv::FileViewer& viewer, const std::string& file, const std::string& path,
                      const std::vector<std::pair<std::string, std::string>>& overrides, std::ostream& err);

}  // namespace nxfv::cli
