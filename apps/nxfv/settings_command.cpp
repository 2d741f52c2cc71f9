#include "nxfv/settings_command.h"

#include <memory>

#include "nxfv/arguments.h"
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/text_property_bag.h"
#include "nxfv/platform/platform.h"

namespace nxfv::cli {

std::string SettingsUsage() {
  return "nxfv settings [FILE]\n"
         "  Prints the settings file the viewer would save: one key=value a "
         "line, for\n"
         "  all 32 settings (defaults when no FILE is given). With FILE, its "
         "settings are\n"
         "  read first (the folder they name is listed as the viewer would) "
         "and its other\n"
         "  lines are kept. list --settings FILE lists with such a file.\n";
}

bool ReadSettingsFile(FileViewer& viewer, const std::string& file, const std::string& path,
                      const std::vector<std::pair<std::string, std::string>>& overrides, std::ostream& err) {
  TextPropertyBag bag;
  std::string error;
  if (!bag.LoadFile(file, error)) {
    err << "nxfv: --settings: " << error << "\n";
    return false;
  }
  bag.WriteProperty("CurrentFolder", Variant(path), Variant(""));
  for (const auto& [key, value] : overrides) bag.WriteProperty(key, Variant(value), Variant());
  viewer.ReadProperties(bag);
  return true;
}

int RunSettingsCommand(const std::vector<std::string>& args, Platform& platform, std::ostream& out, std::ostream& err) {
  CommandSyntax syntax{"settings", "FILE", {}};
  syntax.positionalOptional = true;
  const std::optional<ParsedArguments> parsed = ParseArguments(args, syntax, err);
  if (!parsed) return 2;
  if (parsed->help) {
    out << SettingsUsage();
    return 0;
  }
  auto viewer = FileViewer::Create(PlatformRef(&platform, [](Platform*) {}));
  TextPropertyBag bag;
  if (!parsed->positional.empty()) {
    std::string error;
    if (!bag.LoadFile(parsed->positional, error)) {
      err << "nxfv: " << error << "\n";
      return 1;
    }
    viewer->ReadProperties(bag);
  }
  viewer->WriteProperties(bag);
  out << bag.ToText();
  out.flush();
  return 0;
}

}  // namespace nxfv::cli
