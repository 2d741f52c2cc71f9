// Timers on a virtual clock that only tests move: Advance(ms) fires every
// timer that falls due on the way, in time order, each callback seeing Now()
// at its own due time. A periodic timer fires once per interval passed.
#pragma once

#include "nxfv/platform/timer_queue.h"

namespace nxfv {

class SimTimers : public TimerService {
 public:
  TimerId Start(uint32_t intervalMs, bool periodic, Callback callback) override;
  bool Cancel(TimerId id) override { return queue_.Cancel(id); }
  bool IsActive(TimerId id) const override { return queue_.IsActive(id); }

  // Moves the clock forward by ms, running the callbacks due up to the new
  // time (timers those callbacks start included). Returns how many ran.
  size_t Advance(uint64_t ms);
  uint64_t Now() const { return now_; }

 private:
  TimerQueue queue_;
  uint64_t now_ = 0;
};

}  // namespace nxfv
