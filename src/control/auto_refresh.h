// Keeping the view current while the folder on view changes on disk
// (AutoUpdate).
//
// Two timers turn change notifications into refreshes:
//  - the tick timer (Timer2) runs for the control's whole life, every
//    kTickMs. Each tick counts itself, follows the location (starts or
//    stops the watch), delivers the platform notifier's pending changes
//    (taking them is what clears the shared pending state) by setting the
//    refresh-pending flag of every instance slot that shows the changed
//    folder, and, when this control's slot has the flag set, starts the
//    refresh timer unless it already runs. Delivery shows the first tick
//    of a burst at once; while changes keep coming in tick after tick it
//    holds them until a tick without changes, but never longer than
//    kMaxHoldTicks ticks (1.5 s), so a steady stream still refreshes now and
//    then (a copy of thousands of files costs a handful of refreshes) and a
//    single change is never held;
//  - the refresh timer (Timer1) fires once, kRefreshMs later: it takes what
//    is still pending (the refresh it is about to make covers it), clears
//    the slot's flag and refreshes the folder in place.
// Changes arriving while a refresh is waiting or running only set the flag
// again, so a burst of thousands of changes costs a few refreshes (its
// start, its end, one per 1.5 s between), never one per change.
//
// Choices where nothing else decides:
//  - Intervals: 20 ms and 5 ms. A single change shows within 25 ms plus
//    the refresh itself; bursts are folded by the hold above, not by long
//    intervals. Idle, the tick costs a string comparison and an empty take.
//  - Only a folder is watched. Inside an archive, in the drives view and in
//    a virtual list nothing is watched (an archive is read as a whole; the
//    host owns a virtual list).
//  - The platform has one notifier, which watches one folder: when several
//    controls share a platform, the one that listed last holds the watch.
//    Every slot showing the changed folder is marked, so controls showing
//    the same folder all refresh.
//  - A folder that no longer exists is not refreshed (no error box pops up
//    from a timer); the view stays as it was until the host navigates.
//  - A refresh that falls due while a listing runs (a host handler pumping
//    the dispatch) waits for the next tick.
//  - A folder the notifier refuses (no such folder, no inotify) is not
//    retried until the location changes.
#pragma once

#include <cstdint>
#include <string>

#include "nxfv/platform/timer_service.h"

namespace nxfv {

struct ViewerCore;

class AutoRefresh {
 public:
  static constexpr uint32_t kTickMs = 20;    // Timer2
  static constexpr uint32_t kRefreshMs = 5;  // Timer1
  static constexpr int kMaxHoldTicks = 75;   // a burst refreshes at least every 1.5 s

  explicit AutoRefresh(ViewerCore& core) : core_(core) {}
  // Stops both timers and gives up this control's watch.
  ~AutoRefresh();
  AutoRefresh(const AutoRefresh&) = delete;
  AutoRefresh& operator=(const AutoRefresh&) = delete;

  // Called whenever a listing has set the location (folder, archive,
  // drives, virtual list): records whether the drives list is on view
  // (ViewerCore::showingDrives), starts the tick timer on first use and
  // watches the new location, or stops watching one that is not a folder.
  void FollowLocation(bool drivesView = false);

  double TickCount() const { return ticks_; }
  // The folder this control watches, "" when none.
  const std::string& WatchedFolder() const { return watched_; }
  // How many refreshes the timers have made (for tests and benchmarks).
  uint64_t RefreshCount() const { return refreshes_; }

 private:
  void Tick();
  void Fire();
  void Sync();
  void Deliver();
  void MarkSlots();
  void StopRefreshTimer();

  ViewerCore& core_;
  TimerId tickTimer_ = 0;
  TimerId refreshTimer_ = 0;
  double ticks_ = 0;
  int burstTicks_ = 0;  // consecutive ticks that took changes
  bool held_ = false;   // changes taken but not yet marked in the slots
  uint64_t refreshes_ = 0;
  std::string target_;   // the folder last asked for ("" for none)
  std::string watched_;  // the folder the notifier accepted
};

}  // namespace nxfv
