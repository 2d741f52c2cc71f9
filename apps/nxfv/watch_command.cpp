#include "nxfv/watch_command.h"

#include <sstream>

#include "nxfv/arguments.h"
#include "nxfv/command_path.h"
#include "nxfv/control/file_viewer.h"
#include "nxfv/list_output.h"
#include "nxfv/platform/linux/event_wait.h"
#include "nxfv/platform/linux/linux_platform.h"

namespace nxfv::cli {

namespace {

// Every listing, the first and each refresh, ends with AfterNewView.
struct ViewWatcher : FileViewerEvents {
  bool newView = false;
  void AfterNewView(std::string&, bool&, bool&, bool&) override { newView = true; }
};

void Print(const FileViewer& viewer, bool json, bool first, std::ostream& out) {
  if (json) {
    std::ostringstream doc;
    WriteListJson(viewer, doc);
    std::string line = doc.str();
    while (!line.empty() && line.back() == '\n') line.pop_back();
    // The document's own line breaks would split it: JSON allows blanks there.
    for (char& c : line)
      if (c == '\n') c = ' ';
    out << line << '\n';
  } else {
    if (!first) out << '\n';
    WriteListTable(viewer, out);
  }
  out.flush();
}

}  // namespace

std::string WatchUsage() {
  return "nxfv watch [--json] PATH\n"
         "  Lists the folder PATH, then again after every change in it (a burst of\n"
         "  changes gives one listing), until interrupted. With --json each listing\n"
         "  is one line holding the document of list --json.\n";
}

int RunWatchCommand(const std::vector<std::string>& args, LinuxPlatform& platform, std::ostream& out,
                    std::ostream& err, const std::function<bool()>& keepGoing, int waitMs) {
  const CommandSyntax syntax{"watch", "PATH", {{"--json"}}, {}};
  const std::optional<ParsedArguments> parsed = ParseArguments(args, syntax, err);
  if (!parsed) return 2;
  if (parsed->help) {
    out << WatchUsage() << OptionSyntaxUsage();
    return 0;
  }
  const bool json = parsed->Has("--json");
  const std::string path = PlatformPath(platform, parsed->positional);
  uint32_t attributes = 0;
  // Only a folder can be watched; the system says why this one cannot.
  const std::string reason = platform.Files().WhyNotReadable(path, true);
  if (!reason.empty() || !platform.Files().GetAttributes(path, attributes) || (attributes & kAttrDirectory) == 0) {
    err << "nxfv: " << parsed->positional << ": " << (reason.empty() ? "not a folder" : reason) << "\n";
    return 1;
  }
  auto viewer = FileViewer::Create(PlatformRef(&platform, [](Platform*) {}));
  ViewWatcher watcher;
  viewer->SetEventListener(&watcher);
  viewer->ListView1().MeasureContentOnSort(true);  // the table sizes its columns from it
  viewer->setCurrentfolder(path);
  Print(*viewer, json, true, out);
  watcher.newView = false;
  while (!keepGoing || keepGoing()) {
    if (WaitAndDispatch(platform, waitMs) < 0) {
      err << "nxfv: waiting for changes failed\n";
      return 1;
    }
    if (!platform.Files().GetAttributes(path, attributes)) {
      err << "nxfv: " << parsed->positional << ": the folder is gone\n";
      return 1;
    }
    if (!watcher.newView) continue;
    watcher.newView = false;
    Print(*viewer, json, false, out);
    if (!out) return 1;  // nobody reads any more
  }
  viewer->SetEventListener(nullptr);
  return 0;
}

}  // namespace nxfv::cli
