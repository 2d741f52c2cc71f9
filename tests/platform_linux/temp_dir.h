// A real temporary folder for the Linux platform tests, removed with
// everything in it when the object goes.
#pragma once

#include <fcntl.h>
#include <ftw.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <ctime>
#include <functional>
#include <optional>
#include <string>

#include "nxfv/platform/linux/linux_file_system.h"

namespace nxfv::testing {

class TempDir {
 public:
  TempDir() {
    std::string pattern = LinuxFileSystem().TempPath() + "nxfv-linux-test-XXXXXX";
    if (mkdtemp(pattern.data()) != nullptr) path_ = pattern;
  }
  ~TempDir() {
    if (path_.empty()) return;
    nftw(path_.c_str(), Remove, 16, FTW_DEPTH | FTW_PHYS);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  bool ok() const { return !path_.empty(); }
  const std::string& path() const { return path_; }
  // Raw path of a name inside the folder.
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  // Creates a file with the given bytes (raw name); false on failure.
  bool WriteFile(const std::string& name, const std::string& bytes = "", mode_t mode = 0644) const {
    const int fd = open((*this / name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
    if (fd < 0) return false;
    const bool ok = write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    return close(fd) == 0 && ok;
  }
  bool MakeDir(const std::string& name, mode_t mode = 0755) const { return mkdir((*this / name).c_str(), mode) == 0; }

 private:
  static int Remove(const char* p, const struct stat*, int type, struct FTW*) {
    if (type == FTW_DP) {
      chmod(p, 0700);
      rmdir(p);
    } else {
      unlink(p);
    }
    return 0;
  }
  std::string path_;
};

// Runs check as an unprivileged user (in a child process when we are root,
// since root ignores folder permissions); true when it returned true.
inline bool AsUnprivilegedUser(const std::function<bool()>& check) {
  if (geteuid() != 0) return check();
  const pid_t child = fork();
  if (child == 0) {
    const bool dropped = setgid(65534) == 0 && setuid(65534) == 0;
    _exit(dropped && check() ? 0 : 1);
  }
  int status = 0;
  return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Sets (or, given null, removes) an environment variable and puts the old
// value back when the object goes.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const char* value) : name_(name) {
    if (const char* old = getenv(name)) old_ = old;
    Set(value);
  }
  ~ScopedEnv() { Set(old_ ? old_->c_str() : nullptr); }
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;
  void Set(const char* value) const {
    value ? setenv(name_.c_str(), value, 1) : unsetenv(name_.c_str());
    if (name_ == "TZ") tzset();
  }

 private:
  std::string name_;
  std::optional<std::string> old_;
};

}  // namespace nxfv::testing
