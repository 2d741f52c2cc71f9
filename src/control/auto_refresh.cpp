#include "nxfv/control/auto_refresh.h"

#include <vector>

#include "nxfv/control/folder_listing.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/navigation.h"
#include "nxfv/control/viewer_core.h"

namespace nxfv {

AutoRefresh::~AutoRefresh() {
  TimerService& timers = core_.platform.Timers();
  if (tickTimer_ != 0) timers.Cancel(tickTimer_);
  StopRefreshTimer();
  ChangeNotifierService& notifier = core_.platform.ChangeNotifier();
  if (!watched_.empty() && SamePlace(core_.platform, notifier.WatchedFolder(), watched_)) notifier.Unwatch();
}

void AutoRefresh::FollowLocation(bool drivesView) {
  core_.showingDrives = drivesView;
  if (tickTimer_ == 0) tickTimer_ = core_.platform.Timers().Start(kTickMs, true, [this](TimerId) { Tick(); });
  Sync();
}

void AutoRefresh::StopRefreshTimer() {
  if (refreshTimer_ != 0) core_.platform.Timers().Cancel(refreshTimer_);
  refreshTimer_ = 0;
}

void AutoRefresh::Sync() {
  const ViewerSettings& s = core_.settings;
  const bool folderOnView = !core_.insideArchive && !core_.showingDrives && !s.virtualFileList;
  const std::string target = s.autoUpdate && folderOnView ? core_.currentFolder : std::string();
  if (target == target_) return;
  ChangeNotifierService& notifier = core_.platform.ChangeNotifier();
  // Another control of the platform may hold the watch by now: only our own goes.
  if (!watched_.empty() && SamePlace(core_.platform, notifier.WatchedFolder(), watched_)) notifier.Unwatch();
  watched_.clear();
  target_ = target;
  // A change of the folder left behind must not refresh the new one.
  core_.Slot().refreshPending = false;
  StopRefreshTimer();
  if (!target.empty() && notifier.Watch(target)) watched_ = target;
}

void AutoRefresh::Deliver() {
  const bool changed = !core_.platform.ChangeNotifier().TakeChanges().empty();
  if (!changed) {
    burstTicks_ = 0;
    if (held_) MarkSlots();  // the burst has calmed down
    return;
  }
  // The first tick of a burst shows it at once; while it goes on, ticks
  // hold their changes until a quiet tick, or for kMaxHoldTicks at most.
  ++burstTicks_;
  if (burstTicks_ == 1 || burstTicks_ % kMaxHoldTicks == 0) MarkSlots();
  else held_ = true;
}

void AutoRefresh::MarkSlots() {
  held_ = false;
  ChangeNotifierService& notifier = core_.platform.ChangeNotifier();
  // A folder that went away ends the watch, so the notifier may have
  // forgotten it: the changes then belong to the folder we watched.
  std::string folder = notifier.WatchedFolder();
  if (folder.empty()) folder = watched_;
  if (folder.empty()) return;
  InstanceTable& table = InstanceTable::ForThisThread();
  for (int16_t i = 0; i < InstanceTable::kRows; ++i) {
    InstanceSlot& slot = table.Row(i);
    if (!slot.currentFolder.empty() && SamePlace(core_.platform, slot.currentFolder, folder))
      slot.refreshPending = true;
  }
}

void AutoRefresh::Tick() {
  ticks_ += 1;
  RunReported(core_.platform, ".Timer2", [&] {
    Sync();
    Deliver();
    TimerService& timers = core_.platform.Timers();
    if (core_.Slot().refreshPending && !watched_.empty() && (refreshTimer_ == 0 || !timers.IsActive(refreshTimer_)))
      refreshTimer_ = timers.Start(kRefreshMs, false, [this](TimerId) { Fire(); });
  });
}

void AutoRefresh::Fire() {
  refreshTimer_ = 0;  // a single-shot timer is spent once it fires
  RunReported(core_.platform, ".Timer1", [&] {
    if (core_.busy) return;  // the flag stays set: the next tick tries again
    Sync();
    if (watched_.empty() || !SamePlace(core_.platform, watched_, core_.currentFolder)) return;
    // What is waiting now happened before the enumeration below, which sees it.
    core_.platform.ChangeNotifier().TakeChanges();
    held_ = false;
    core_.Slot().refreshPending = false;
    uint32_t attributes = 0;
    if (!core_.platform.Files().GetAttributes(core_.currentFolder, attributes)) return;
    ++refreshes_;
    const std::string folder = core_.currentFolder;
    RunReported(core_.platform, ".LoadFiles", [&] { LoadFiles(core_, folder, true, false, false); });
  });
}

}  // namespace nxfv
