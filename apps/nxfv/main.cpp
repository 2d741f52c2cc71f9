// nxfv: the command-line host of the viewer control on the Linux platform.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "nxfv/arguments.h"
#include "nxfv/entries_command.h"
#include "nxfv/file_commands.h"
#include "nxfv/list_command.h"
#include "nxfv/settings_command.h"
#include "nxfv/watch_command.h"
#include "nxfv/platform/linux/linux_platform.h"

namespace {

std::string Usage() {
  std::string u =
      "usage: nxfv COMMAND [options]\n"
      "\n"
      "Commands:\n";
  u += nxfv::cli::ListUsage();
  u +=
      "nxfv entries [--ext EXT] ARCHIVE\n"
      "  Prints the archive reader's events for a ZIP or CAB file, one JSON object a\n"
      "  line. EXT chooses the reader (default: the file's extension, lower case).\n";
  u += nxfv::cli::WatchUsage();
  u += nxfv::cli::SettingsUsage();
  u += nxfv::cli::FileCommandsUsage();
  u +=
      "nxfv --help\n"
      "  This text.\n"
      "\n";
  u += nxfv::cli::OptionSyntaxUsage();
  u +=
      "Message boxes are printed to standard error as: nxfv: [TITLE] TEXT\n"
      "Exit codes: 0 success, 1 missing path or a file command that failed, 2 usage error.\n";
  return u;
}

}  // namespace

int main(int argc, char** argv) {
  // Dates, times and numbers follow the user's locale.
  std::setlocale(LC_ALL, "");
  std::ios::sync_with_stdio(false);
  std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty()) {
    std::cerr << Usage();
    return 2;
  }
  const std::string command = args[0];
  args.erase(args.begin());
  if (command == "--help" || command == "-h" || command == "help") {
    std::cout << Usage();
    return 0;
  }
  auto platform = std::make_shared<nxfv::LinuxPlatform>();
  platform->MessageBoxHandler().SetPrefix("nxfv");  // "nxfv: [TITLE] TEXT" on standard error
  nxfv::SetActivePlatform(platform);
  try {
    if (command == "list") {
      std::shared_ptr<nxfv::Object> viewer;
      const int rc = nxfv::cli::RunListCommand(args, *platform, std::cout, std::cerr, &viewer);
      // Ending here skips freeing every item and row one by one.
      platform->MessageBoxHandler().FlushRepeats();
      std::cout.flush();
      std::fflush(nullptr);
      std::_Exit(rc);
    }
    if (command == "watch") return nxfv::cli::RunWatchCommand(args, *platform, std::cout, std::cerr);
    if (command == "settings") return nxfv::cli::RunSettingsCommand(args, *platform, std::cout, std::cerr);
    if (command == "entries") return nxfv::cli::RunEntriesCommand(args, *platform, std::cout, std::cerr);
    if (nxfv::cli::IsFileCommand(command))
      return nxfv::cli::RunFileCommand(command, args, *platform, std::cout, std::cerr);
  } catch (const std::exception& e) {
    std::cerr << "nxfv: " << e.what() << "\n";
    return 1;
  }
  std::cerr << "nxfv: unknown command '" << command << "'\n" << Usage();
  return 2;
}
