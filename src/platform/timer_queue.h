// The bookkeeping both timer services share: which timers exist, when each
// is due, and running the due ones in order. Time is a plain millisecond
// count supplied by the caller (a monotonic clock or a virtual one), so the
// queue itself is deterministic.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "nxfv/platform/timer_service.h"

namespace nxfv {

class TimerQueue {
 public:
  // Adds a timer due at now + interval (an interval of 0 counts as 1).
  // Returns its id; 0 when callback is empty.
  TimerId Start(uint64_t now, uint32_t intervalMs, bool periodic, TimerService::Callback callback);
  bool Cancel(TimerId id);
  bool IsActive(TimerId id) const { return timers_.count(id) != 0; }
  bool Empty() const { return timers_.empty(); }
  // Due time of the earliest timer.
  std::optional<uint64_t> NextDue() const;

  // Runs the earliest timer if it is due at now; false when none is. A
  // periodic timer is first rescheduled one interval after its due time, or
  // one interval after now when it is already that late (missed ticks are
  // dropped, not replayed).
  bool RunOne(uint64_t now);
  // Runs every timer due at now, each at most once; returns how many ran.
  // Timers started by the callbacks are due after now and wait.
  size_t RunDue(uint64_t now);

 private:
  struct Timer {
    uint64_t due = 0;
    uint32_t interval = 1;
    bool periodic = false;
    TimerService::Callback callback;
  };
  // Ordered by (due, id): ids grow, so ties go in start order.
  std::set<std::pair<uint64_t, TimerId>> order_;
  std::map<TimerId, Timer> timers_;
  TimerId nextId_ = 1;
};

}  // namespace nxfv
