// Opening files on Linux: each verb maps to a command (a program and its
// leading arguments) and the path is appended as one more argument. The
// command is started with an argument vector, never through a shell, so
// spaces, quotes, "$" or a leading "-" in a path reach the program as they
// are (a relative path starting with "-" is passed as "./-..." so that it
// cannot be taken for an option). Launch does not wait for the program: a
// background thread per child waits for it to exit so that none is left a
// zombie.
//
// Default commands: open runs `program PATH`; edit runs the user's editor
// ($VISUAL, else $EDITOR, split at blanks) and without one `program PATH`,
// which opens text with the desktop's text-editor association; explore runs
// `program FOLDER` for a folder, or for a file the folder holding it; print,
// properties and find have no desktop-wide handler on Linux and fail until
// the host sets a command or a handler (its own dialog) for them.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "nxfv/platform/launcher.h"

namespace nxfv {

class LinuxLauncher : public LauncherService {
 public:
  // program: looked up in PATH unless it holds a "/".
  explicit LinuxLauncher(const std::string& program = "xdg-open");

  bool Launch(const std::string& path, const std::string& verb = "open") override;

  // Sets the command of a verb; an empty command leaves the verb without a
  // handler.
  void SetVerbCommand(LaunchVerb verb, std::vector<std::string> command);
  // A host callback for a verb, asked before any command: it gets the path
  // and answers whether it handled it. An empty function removes it.
  using VerbHandler = std::function<bool(const std::string& path)>;
  void SetVerbHandler(LaunchVerb verb, VerbHandler handler);
  // Programs started and not yet exited.
  size_t RunningPrograms() const;
  // Waits up to timeoutMs for every started program to exit; true when
  // none is running any more.
  bool WaitForPrograms(int timeoutMs) const;

 private:
  struct Children;  // shared with the threads that wait for the children
  static void WaitInBackground(const std::shared_ptr<Children>& children, int pid);

  std::array<std::vector<std::string>, 6> commands_;
  std::array<VerbHandler, 6> handlers_;
  std::shared_ptr<Children> children_;
};

}  // namespace nxfv
