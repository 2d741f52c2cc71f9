#include "nxfv/platform/linux/linux_launcher.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <csignal>
#include <mutex>
#include <thread>

#include "nxfv/platform/linux/file_name_escape.h"

namespace nxfv {

struct LinuxLauncher::Children {
  mutable std::mutex mutex;
  mutable std::condition_variable exited;
  size_t running = 0;
  std::vector<pid_t> unwatched;  // children no waiting thread could be made for

  // Reaps the unwatched children that have exited (never blocks).
  void ReapUnwatched() {
    std::lock_guard lock(mutex);
    std::erase_if(unwatched, [this](pid_t pid) {
      if (waitpid(pid, nullptr, WNOHANG) == 0) return false;
      --running;
      return true;
    });
  }
};

namespace {

bool Spawn(const std::vector<std::string>& args, pid_t& pid) {
  std::vector<char*> argv;
  for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  // The child starts with no blocked signals and default handling of
  // SIGPIPE, whatever the host's thread had set.
  posix_spawnattr_t attr;
  if (posix_spawnattr_init(&attr) != 0) return false;
  sigset_t none;
  sigset_t defaults;
  sigemptyset(&none);
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  posix_spawnattr_setsigmask(&attr, &none);
  posix_spawnattr_setsigdefault(&attr, &defaults);
  posix_spawnattr_setflags(&attr, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  const int error = posix_spawnp(&pid, argv[0], nullptr, &attr, argv.data(), environ);
  posix_spawnattr_destroy(&attr);
  return error == 0;
}

// The folder that explore shows: the path itself when it is a folder, else
// the folder holding it.
std::string FolderToExplore(const std::string& raw) {
  struct stat st {};
  if (stat(raw.c_str(), &st) == 0 && S_ISDIR(st.st_mode)) return raw;
  const size_t slash = raw.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : raw.substr(0, slash);
}

// The user's editor as an argument vector: $VISUAL, else $EDITOR, split at
// blanks ("code --wait"); empty when neither is set.
std::vector<std::string> UserEditor() {
  for (const char* name : {"VISUAL", "EDITOR"}) {
    const char* value = std::getenv(name);
    std::vector<std::string> words;
    std::string word;
    for (const char* p = value ? value : ""; ; ++p) {
      if (*p == ' ' || *p == '\t' || *p == '\0') {
        if (!word.empty()) words.push_back(std::move(word));
        word.clear();
        if (*p == '\0') break;
      } else {
        word += *p;
      }
    }
    if (!words.empty()) return words;
  }
  return {};
}

}  // namespace

void LinuxLauncher::WaitInBackground(const std::shared_ptr<Children>& children, int pid) {
  {
    std::lock_guard lock(children->mutex);
    ++children->running;
  }
  try {
    std::thread([children, pid] {
      while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
      }
      {
        std::lock_guard lock(children->mutex);
        --children->running;
      }
      children->exited.notify_all();
    }).detach();
  } catch (...) {
    // No thread to be had: the child is reaped by a later call instead.
    std::lock_guard lock(children->mutex);
    children->unwatched.push_back(pid);
  }
}

LinuxLauncher::LinuxLauncher(const std::string& program) : children_(std::make_shared<Children>()) {
  for (LaunchVerb verb : {LaunchVerb::Open, LaunchVerb::Edit, LaunchVerb::Explore}) SetVerbCommand(verb, {program});
  if (std::vector<std::string> editor = UserEditor(); !editor.empty()) SetVerbCommand(LaunchVerb::Edit, std::move(editor));
}

void LinuxLauncher::SetVerbHandler(LaunchVerb verb, VerbHandler handler) {
  handlers_[static_cast<size_t>(verb)] = std::move(handler);
}

void LinuxLauncher::SetVerbCommand(LaunchVerb verb, std::vector<std::string> command) {
  commands_[static_cast<size_t>(verb)] = std::move(command);
}

bool LinuxLauncher::Launch(const std::string& path, const std::string& verb) {
  const std::optional<LaunchVerb> parsed = ParseLaunchVerb(verb);
  if (!parsed || path.empty()) return false;
  if (const VerbHandler& handler = handlers_[static_cast<size_t>(*parsed)]) {
    try {
      return handler(path);
    } catch (...) {
      return false;  // a host's handler that throws did not handle it
    }
  }
  std::vector<std::string> args = commands_[static_cast<size_t>(*parsed)];
  if (args.empty() || args[0].empty()) return false;
  std::string raw = UnescapeFileName(path);
  if (*parsed == LaunchVerb::Explore) raw = FolderToExplore(raw);
  if (raw.front() == '-') raw.insert(0, "./");
  args.push_back(std::move(raw));
  children_->ReapUnwatched();
  pid_t pid = 0;
  if (!Spawn(args, pid)) return false;
  WaitInBackground(children_, pid);
  return true;
}

size_t LinuxLauncher::RunningPrograms() const {
  children_->ReapUnwatched();
  std::lock_guard lock(children_->mutex);
  return children_->running;
}

bool LinuxLauncher::WaitForPrograms(int timeoutMs) const {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
  for (;;) {
    children_->ReapUnwatched();
    std::unique_lock lock(children_->mutex);
    if (children_->running == 0) return true;
    if (Clock::now() >= deadline) return false;
    // Children without a waiting thread are only noticed by looking again.
    const Clock::time_point until =
        children_->unwatched.empty() ? deadline : std::min(deadline, Clock::now() + std::chrono::milliseconds(10));
    children_->exited.wait_until(lock, until);
  }
}

}  // namespace nxfv
