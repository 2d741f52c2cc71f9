#include "nxfv/list_command.h"

#include <cstdio>
#include <memory>

#include "nxfv/control/file_viewer.h"
#include "nxfv/arguments.h"
#include "nxfv/command_path.h"
#include "nxfv/list_output.h"
#include "nxfv/settings_command.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/platform/platform.h"
#include "nxfv/shell/shell_folders.h"

namespace nxfv::cli {

namespace {

struct ListOptions {
  std::string path;
  std::string pattern;
  bool hasPattern = false;
  int32_t viewOptions = -1;
  bool hasViewOptions = false;
  std::vector<SortState> sort;
  bool json = false;
  bool noFiles = false, noFolders = false, noHidden = false, noSystem = false, noGoUp = false;
};

bool ParseInt(const std::string& s, int32_t& v) {
  try {
    size_t used = 0;
    const long long n = std::stoll(s, &used, 0);
    if (used != s.size() || n < INT32_MIN || n > INT32_MAX) return false;
    v = static_cast<int32_t>(n);
    return true;
  } catch (...) {
    return false;
  }
}

bool ParseSort(const std::string& text, std::vector<SortState>& out, std::string& error) {
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find(',', start);
    if (end == std::string::npos) end = text.size();
    std::string one = text.substr(start, end - start);
    SortState s;
    if (const auto colon = one.find(':'); colon != std::string::npos) {
      const std::string dir = one.substr(colon + 1);
      if (dir == "desc") s.descending = true;
      else if (dir != "asc") {
        error = "bad sort direction '" + dir + "' (use asc or desc)";
        return false;
      }
      one.resize(colon);
    }
    if (one.empty()) {
      error = "empty sort key in '" + text + "'";
      return false;
    }
    s.key = one;
    out.push_back(s);
    start = end + 1;
  }
  if (out.size() > 10) {
    error = "at most ten sort columns";
    return false;
  }
  return true;
}

// --special NAME: the user's folders by the names people call them.
struct SpecialName {
  const char* name;
  SHFolders folder;
};
constexpr SpecialName kSpecialNames[] = {{"home", CSIDL_PROFILE},          {"desktop", CSIDL_DESKTOPDIRECTORY},
                                         {"documents", CSIDL_PERSONAL},    {"music", CSIDL_MYMUSIC},
                                         {"pictures", CSIDL_MYPICTURES},   {"videos", CSIDL_MYVIDEO},
                                         {"templates", CSIDL_TEMPLATES}};

const SpecialName* FindSpecial(const std::string& name) {
  for (const SpecialName& s : kSpecialNames)
    if (name == s.name) return &s;
  return nullptr;
}

std::string CheckSpecial(const std::string& value) {
  if (FindSpecial(value)) return "";
  std::string known;
  for (const SpecialName& s : kSpecialNames) known += known.empty() ? s.name : std::string(", ") + s.name;
  return "--special: unknown folder '" + value + "' (one of " + known + ")";
}

std::string CheckViewOptions(const std::string& value) {
  int32_t n = 0;
  return ParseInt(value, n) ? "" : "--view-options needs a number, not '" + value + "'";
}

// Reads the options into o; their checks already accepted every value. The
// sort columns are already there: the check of --sort collects them.
void ReadOptions(const ParsedArguments& args, ListOptions& o) {
  o.path = args.positional;
  o.json = args.Has("--json");
  o.noFiles = args.Has("--no-files");
  o.noFolders = args.Has("--no-folders");
  o.noHidden = args.Has("--no-hidden");
  o.noSystem = args.Has("--no-system");
  o.noGoUp = args.Has("--no-goup");
  o.hasPattern = args.Has("--pattern");
  o.pattern = args.Value("--pattern");
  o.hasViewOptions = args.Has("--view-options");
  if (o.hasViewOptions) ParseInt(args.Value("--view-options"), o.viewOptions);
}

}  // namespace

std::string ListUsage() {
  return "nxfv list [options] PATH\n"
         "  Lists PATH as the viewer shows it in report view: a folder, or a .zip/.cab\n"
         "  file as the archive view. Prints the visible columns as an aligned table.\n"
         "  --json               one JSON document: path, columns, rows with sub-items\n"
         "                       and every item field\n"
         "  --pattern P          file name patterns, ';'-separated (default *.*)\n"
         "  --view-options N     column mask (default 31: name, ext, size, type, modified)\n"
         "  --sort KEY[:desc],.. sort columns by key (nam, ext, siz, typ, mod, ...)\n"
         "  --no-files --no-folders --no-hidden --no-system --no-goup\n"
         "                       hide files / folders / hidden / system items / the '..' row\n"
         "nxfv list --drives [options]\n"
         "  Lists the drives view instead of a PATH: the mounted volumes a user browses\n"
         "  (free space, total size, file system) and the user's own folders.\n"
         "nxfv list --special NAME [options]\n"
         "  Lists one of the user's folders instead of a PATH: home, desktop, documents,\n"
         "  music, pictures, videos or templates.\n"
         "  --settings FILE      read the viewer's settings from FILE first (see nxfv\n"
         "                       settings); the options above win over its values\n";
}

int RunListCommand(const std::vector<std::string>& args, Platform& platform, std::ostream& out,
                   std::ostream& err, std::shared_ptr<Object>* keepAlive) {
  ListOptions o;
  // Repeated --sort options add up: the limit counts the columns of all of them.
  const CommandSyntax syntax{
      "list",
      "PATH",
      {{"--json"},
       {"--no-files"},
       {"--no-folders"},
       {"--no-hidden"},
       {"--no-system"},
       {"--no-goup"},
       {"--pattern", true},
       {"--view-options", true, CheckViewOptions},
       {"--sort", true, [&o](const std::string& keys) {
          std::string error;
          return ParseSort(keys, o.sort, error) ? std::string() : "--sort: " + error;
        }},
       {"--drives"},
       {"--special", true, CheckSpecial},
       {"--settings", true}},
      {"--drives", "--special"}};
  const std::optional<ParsedArguments> parsed = ParseArguments(args, syntax, err);
  if (!parsed) return 2;
  if (parsed->help) {
    out << ListUsage() << OptionSyntaxUsage();
    return 0;
  }
  ReadOptions(*parsed, o);
  const bool drives = parsed->Has("--drives");
  if (drives && parsed->Has("--special")) {
    err << "nxfv list: --drives and --special exclude each other\n";
    return 2;
  }
  const SpecialName* special = FindSpecial(parsed->Value("--special"));
  if (special) o.path = SpecialFolderPath(platform, special->folder);

  const std::string path = special ? o.path : PlatformPath(platform, o.path);
  if (special) o.path = parsed->Value("--special") + " folder " + o.path;
  uint32_t attributes = 0;
  if (!drives && !platform.Files().GetAttributes(path, attributes)) {
    const std::string reason = platform.Files().WhyNotReadable(path, true);
    err << "nxfv: " << o.path << ": " << (reason.empty() ? "no such file or folder" : reason) << "\n";
    return 1;
  }
  // Whatever exists is listed, as the viewer shows it (a location it cannot
  // enumerate shows only the go-up row); the reason goes to standard error
  // and the status says it.
  const auto finish = [&](FileViewer& viewer) {
    if (o.json) WriteListJson(viewer, out);
    else WriteListTable(viewer, out);
    out.flush();
    const std::string reason = drives ? "" : platform.Files().WhyNotReadable(path, !viewer.InsideArchive());
    if (reason.empty()) return 0;
    err << "nxfv: " << o.path << ": " << reason << "\n";
    return 1;
  };

  auto viewer = FileViewer::Create(PlatformRef(&platform, [](Platform*) {}));
  viewer->ListView1().MeasureContentOnSort(true);  // the table sizes its columns from it
  if (parsed->Has("--settings")) {
    // A settings file: the command line's own options win over its values.
    std::vector<std::pair<std::string, std::string>> overrides;
    if (o.noFiles) overrides.emplace_back("ShowFiles", "False");
    if (o.noFolders) overrides.emplace_back("ShowFolders", "False");
    if (o.noHidden) overrides.emplace_back("ShowHiddenItems", "False");
    if (o.noSystem) overrides.emplace_back("ShowSysItems", "False");
    if (o.noGoUp) overrides.emplace_back("ShowGOUPFolder", "False");
    if (o.hasPattern) overrides.emplace_back("pattern", o.pattern);
    if (o.hasViewOptions) overrides.emplace_back("ViewOptions", std::to_string(o.viewOptions));
    if (!ReadSettingsFile(*viewer, parsed->Value("--settings"), drives ? "" : path, overrides, err)) return 1;
    if (!o.sort.empty()) viewer->SetSortColumns(o.sort);
    if (drives) viewer->SetToSpecialFolder(CSIDL_DRIVES);
    if (keepAlive) *keepAlive = viewer;
    return finish(*viewer);
  }
  viewer->setShowFiles(!o.noFiles);
  viewer->setShowFolders(!o.noFolders);
  viewer->setShowHiddenItems(!o.noHidden);
  viewer->setShowSysItems(!o.noSystem);
  viewer->setShowGOUPFolder(!o.noGoUp);
  if (o.hasPattern) viewer->setFilePattern(o.pattern);
  if (o.hasViewOptions) viewer->setViewOptions(o.viewOptions);
  if (!o.sort.empty()) viewer->SetSortColumns(o.sort);
  if (drives) viewer->SetToSpecialFolder(CSIDL_DRIVES);
  else viewer->setCurrentfolder(path);
  if (keepAlive) *keepAlive = viewer;
  return finish(*viewer);
}

}  // namespace nxfv::cli
