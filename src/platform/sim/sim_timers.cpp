#include "nxfv/platform/sim/sim_timers.h"

namespace nxfv {

TimerId SimTimers::Start(uint32_t intervalMs, bool periodic, Callback callback) {
  return queue_.Start(now_, intervalMs, periodic, std::move(callback));
}

size_t SimTimers::Advance(uint64_t ms) {
  const uint64_t target = now_ + ms;
  size_t ran = 0;
  // One timer at a time, the clock standing at its due time, so that
  // callbacks see exactly the time they would on a real clock.
  for (auto due = queue_.NextDue(); due && *due <= target; due = queue_.NextDue()) {
    now_ = *due;
    ran += queue_.RunOne(now_) ? 1 : 0;
  }
  now_ = target;
  return ran;
}

}  // namespace nxfv
