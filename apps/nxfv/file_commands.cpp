#include "nxfv/file_commands.h"

#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "nxfv/arguments.h"
#include "nxfv/command_path.h"
#include "nxfv/platform/file_operation_service.h"
#include "nxfv/platform/linux/file_name_escape.h"
#include "nxfv/platform/platform.h"

namespace nxfv::cli {

namespace {

std::string Size(uint64_t bytes) {
  static constexpr const char* kUnits[] = {"B", "KiB", "MiB", "GiB", "TiB"};
  double v = static_cast<double>(bytes);
  size_t u = 0;
  while (v >= 1024 && u + 1 < std::size(kUnits)) v /= 1024, ++u;
  char buf[32];
  std::snprintf(buf, sizeof buf, u == 0 ? "%.0f %s" : "%.1f %s", v, kUnits[u]);
  return buf;
}

// Set by Ctrl+C, a hang-up or a polite kill while an operation runs: the
// engine is then told to cancel at its next progress report, so that it
// removes its temporary file instead of dying with it half-written.
volatile sig_atomic_t interrupted = 0;
void NoteInterrupt(int) { interrupted = 1; }

// Catches the interrupting signals for the duration of one operation.
class InterruptGuard {
 public:
  InterruptGuard() {
    interrupted = 0;
    struct sigaction action {};
    action.sa_handler = NoteInterrupt;
    sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < std::size(kSignals); ++i) sigaction(kSignals[i], &action, &previous_[i]);
  }
  ~InterruptGuard() {
    for (size_t i = 0; i < std::size(kSignals); ++i) sigaction(kSignals[i], &previous_[i], nullptr);
  }
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

 private:
  static constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
  struct sigaction previous_[std::size(kSignals)] {};
};

class CommandLineHost : public FileOperationHost {
 public:
  CommandLineHost(std::ostream& err, const Terminal& terminal, bool showProgress)
      : err_(err), terminal_(terminal), showProgress_(showProgress && terminal.progress) {}
  ~CommandLineHost() override { EndLine(); }

  bool Ask(FileOperationQuestion, const std::string& text) override {
    if (interrupted) return false;
    EndLine();
    err_ << "nxfv: " << text << " [y/N] ";
    if (!terminal_.interactive || terminal_.answers == nullptr) {
      err_ << "no (standard input is not a terminal; --no-confirm answers yes)\n";
      return false;
    }
    err_.flush();
    std::string answer;
    if (!std::getline(*terminal_.answers, answer)) {
      err_ << '\n';
      return false;
    }
    return answer == "y" || answer == "Y" || answer == "yes" || answer == "Yes";
  }

  bool Progress(const FileOperationProgress& p) override {
    if (interrupted) return false;
    if (!showProgress_) return true;
    std::string line = Size(p.bytesDone) + " of " + Size(p.bytesTotal) + ", " + std::to_string(p.filesDone) + " of " +
                       std::to_string(p.filesTotal) + " files  ";
    std::string name = p.currentName;
    for (char& c : name)
      if (c == '\n' || c == '\r' || c == '\t') c = ' ';
    constexpr size_t kWidth = 79;  // one line of a small terminal, so \r can rewrite it
    if (line.size() + name.size() > kWidth && line.size() + 3 < kWidth) {
      size_t cut = name.size() - (kWidth - line.size() - 3);
      while (cut < name.size() && (static_cast<unsigned char>(name[cut]) & 0xC0) == 0x80) ++cut;  // whole characters
      name = "..." + name.substr(cut);
    }
    line += name;
    err_ << '\r' << line << std::string(lastWidth_ > line.size() ? lastWidth_ - line.size() : 0, ' ');
    err_.flush();
    lastWidth_ = line.size();
    lineOpen_ = true;
    return true;
  }

  void Failed(const std::string& path, const std::string& reason) override {
    EndLine();
    err_ << "nxfv: " << path << ": " << reason << "\n";
  }

  void EndLine() {
    if (lineOpen_) err_ << '\n';
    lineOpen_ = false;
    lastWidth_ = 0;
  }

 private:
  std::ostream& err_;
  const Terminal& terminal_;
  bool showProgress_;
  bool lineOpen_ = false;
  size_t lastWidth_ = 0;
};

const char* Operands(const std::string& command) {
  if (command == "delete") return "PATH";
  if (command == "rename") return "PATH NEWNAME";
  return "SRC... DEST";
}

}  // namespace

Terminal Terminal::OfProcess() {
  Terminal t;
  t.interactive = isatty(STDIN_FILENO) == 1;
  t.progress = isatty(STDERR_FILENO) == 1;
  t.answers = &std::cin;
  return t;
}

bool IsFileCommand(const std::string& command) {
  return command == "copy" || command == "move" || command == "delete" || command == "rename";
}

std::string FileCommandsUsage() {
  return "nxfv copy [options] SRC... DEST\n"
         "nxfv move [options] SRC... DEST\n"
         "  Copies or moves SRC into the folder DEST (made when missing, after asking),\n"
         "  or to the path DEST when it is not a folder and there is one SRC.\n"
         "nxfv delete [--trash] [options] PATH...\n"
         "  Deletes for good, or with --trash moves into the trash.\n"
         "nxfv rename [options] PATH NEWNAME\n"
         "  Gives PATH the name NEWNAME in its folder.\n"
         "  --no-confirm            ask nothing: delete, make folders, replace targets\n"
         "  --rename-on-collision   an existing target gives a free name: \"x (2).txt\"\n"
         "  --silent                no progress line\n"
         "  Questions are read from a terminal; otherwise they are answered no.\n"
         "  Exit status 1 when anything failed or was left out.\n";
}

int RunFileCommand(const std::string& command, const std::vector<std::string>& args, Platform& platform,
                   std::ostream& out, std::ostream& err, const Terminal& terminal) {
  CommandSyntax syntax{command, Operands(command), {{"--no-confirm"}, {"--rename-on-collision"}, {"--silent"}}};
  syntax.manyPositionals = true;
  if (command == "delete") syntax.options.emplace_back("--trash");
  const std::optional<ParsedArguments> parsed = ParseArguments(args, syntax, err);
  if (!parsed) return 2;
  if (parsed->help) {
    out << FileCommandsUsage() << OptionSyntaxUsage();
    return 0;
  }
  const std::vector<std::string>& operands = parsed->positionals;
  auto usage = [&](const std::string& message) {
    err << "nxfv " << command << ": " << message << " (see nxfv --help)\n";
    return 2;
  };
  FileOperationRequest request;
  request.progressTitle = command;
  if (parsed->Has("--no-confirm")) request.flags |= FOF_NOCONFIRMATION;
  if (parsed->Has("--rename-on-collision")) request.flags |= FOF_RENAMEONCOLLISION;
  if (parsed->Has("--silent")) request.flags |= FOF_SILENT;
  if (command == "delete") {
    request.operation = FO_DELETE;
    if (parsed->Has("--trash")) request.flags |= FOF_ALLOWUNDO;
    for (const std::string& p : operands) request.sources.push_back(PlatformPath(platform, p));
  } else if (command == "rename") {
    if (operands.size() != 2) return usage("needs PATH and NEWNAME");
    const std::string& name = operands[1];
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
      return usage("NEWNAME must be a name in PATH's folder, without '/'");
    request.operation = FO_RENAME;
    const std::string path = PlatformPath(platform, operands[0]);
    const size_t slash = path.find_last_of('/');
    request.sources = {path};
    request.destinations = {path.substr(0, slash + 1) + EscapeFileName(name)};
  } else {
    if (operands.size() < 2) return usage("needs SRC and DEST");
    request.operation = command == "move" ? FO_MOVE : FO_COPY;
    for (size_t i = 0; i + 1 < operands.size(); ++i) request.sources.push_back(PlatformPath(platform, operands[i]));
    request.destinations = {PlatformPath(platform, operands.back())};
    // As the control sends several sources: each its own destination flag, one folder.
    if (request.sources.size() > 1) request.flags |= FOF_MULTIDESTFILES;
  }
  CommandLineHost host(err, terminal, !parsed->Has("--silent"));
  FileOperationService& service = platform.FileOperations();
  FileOperationHost* previous = service.Host();
  service.SetHost(&host);
  FileOperationResult result;
  {
    InterruptGuard guard;
    result = service.Perform(request);
  }
  service.SetHost(previous);
  host.EndLine();
  if (interrupted) {
    err << "nxfv " << command << ": interrupted; what was not finished was removed again\n";
    return 130;
  }
  return result.Succeeded() ? 0 : 1;
}

}  // namespace nxfv::cli
