// Change notification driven by tests: SimulateChange reports a change of
// one entry when it lies directly in the watched folder, exactly as the
// real watcher would, and runs the callback at once. Watch accepts only
// folders that exist in the simulated file tree. Paths follow the
// simulated platform's rules: "\" separators, ASCII case ignored, one
// trailing "\" optional.
#pragma once

#include "nxfv/platform/change_notifier.h"
#include "nxfv/platform/services.h"

namespace nxfv {

class SimChangeNotifier : public ChangeNotifierService {
 public:
  explicit SimChangeNotifier(FileSystemService* files) : files_(files) {}
  bool Watch(const std::string& folder) override;
  void Unwatch() override;
  std::string WatchedFolder() const override { return folder_; }
  std::vector<FolderChange> TakeChanges() override;
  void SetCallback(Callback callback) override { callback_ = std::move(callback); }

  // A change of the entry at path (a full path); false when it is not an
  // entry of the watched folder and so is not reported. Overflow and
  // FolderGone ignore path's name; FolderGone also ends the watch.
  bool SimulateChange(const std::string& path, FolderChangeKind kind = FolderChangeKind::Modified);

 private:
  void Report(FolderChange change);

  FileSystemService* files_;
  std::string folder_;
  std::vector<FolderChange> pending_;
  Callback callback_;
};

}  // namespace nxfv
