// Change notification on Linux through inotify: one watch on the current
// folder for its entries being created, deleted, moved in or out, modified
// or changing attributes. The host's loop polls PollFd() for reading and
// calls Dispatch() when it is readable; Dispatch turns the kernel's events
// into pending changes (names in the library's escaped text) and runs the
// callback. An attribute change of the watched folder itself is reported
// with the name "". When no inotify instance can be made, PollFd() is -1
// and Watch answers false.
#pragma once

#include "nxfv/platform/change_notifier.h"

namespace nxfv {

class LinuxChangeNotifier : public ChangeNotifierService {
 public:
  LinuxChangeNotifier();
  ~LinuxChangeNotifier() override;
  LinuxChangeNotifier(const LinuxChangeNotifier&) = delete;
  LinuxChangeNotifier& operator=(const LinuxChangeNotifier&) = delete;

  bool Watch(const std::string& folder) override;
  void Unwatch() override;
  std::string WatchedFolder() const override { return folder_; }
  std::vector<FolderChange> TakeChanges() override;
  void SetCallback(Callback callback) override { callback_ = std::move(callback); }

  int PollFd() const { return fd_; }
  // Reads every event the kernel holds; returns how many changes it added.
  size_t Dispatch();

 private:
  void Add(FolderChangeKind kind, std::string name);
  void EndWatch();

  int fd_ = -1;
  int wd_ = -1;
  std::string folder_;
  std::vector<FolderChange> pending_;
  Callback callback_;
};

}  // namespace nxfv
