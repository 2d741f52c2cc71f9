// Change notification for one folder at a time.
//
// Contract:
//  - One folder is watched at a time, not recursively: its entries being
//    created, deleted, moved in or out, modified or having their attributes
//    changed. Watch replaces any earlier watch.
//  - Threading: every member is called on the host's thread. Changes are
//    collected by the platform's dispatch (the Linux watcher's Dispatch, the
//    simulator's SimulateChange) and wait there, in the order they happened,
//    until TakeChanges. The optional callback runs on the host's thread at
//    the end of a dispatch that added changes; it is only a nudge, the
//    changes stay pending until taken.
//  - Coalescing is the caller's business. What the watcher could not follow
//    is still reported as a change: a kernel queue overflow, or more than
//    kMaxPendingChanges waiting, becomes one Overflow entry ("something
//    changed, look again"); the watched folder itself going away becomes
//    FolderGone and ends the watch.
//  - Errors: Watch answers false (and nothing is watched) when the folder
//    cannot be watched. Nothing throws.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace nxfv {

enum class FolderChangeKind { Created, Deleted, MovedIn, MovedOut, Modified, AttributesChanged, Overflow, FolderGone };

struct FolderChange {
  FolderChangeKind kind = FolderChangeKind::Modified;
  std::string name;  // the entry's name inside the folder; "" for Overflow and FolderGone
  bool operator==(const FolderChange&) const = default;
};

class ChangeNotifierService {
 public:
  using Callback = std::function<void()>;
  static constexpr size_t kMaxPendingChanges = 4096;
  virtual ~ChangeNotifierService() = default;
  // Watches folder (the platform's path text); pending changes of an earlier
  // watch are dropped.
  virtual bool Watch(const std::string& folder) = 0;
  // Stops watching and drops pending changes.
  virtual void Unwatch() = 0;
  // The folder being watched, "" when none.
  virtual std::string WatchedFolder() const = 0;
  // The pending changes, oldest first; the queue is empty afterwards.
  virtual std::vector<FolderChange> TakeChanges() = 0;
  virtual void SetCallback(Callback callback) = 0;
};

}  // namespace nxfv
