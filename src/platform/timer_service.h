// Timers: single-shot and periodic, each known by an id.
//
// Contract:
//  - Threading: Start, Cancel and IsActive are called on the host's thread,
//    and callbacks run on that thread only, from the platform's dispatch
//    (the Linux queue's Dispatch, the simulated clock's Advance). No
//    callback ever runs on another thread or inside Start or Cancel.
//  - Ordering: due timers fire in order of their due time; timers due at the
//    same moment fire in the order they were started.
//  - A periodic timer stays active until cancelled; a single-shot timer is
//    inactive once its callback has begun. A callback may start or cancel
//    any timer, itself included; a timer started from a callback never fires
//    in the same dispatch pass (so a zero-delay restart cannot spin).
//  - An interval of 0 ms is taken as 1 ms.
//  - Errors: Start answers 0 when the timer cannot be started (no callback,
//    or the OS refuses a timer); Cancel answers false for an id that is not
//    active. Nothing throws for OS failures. Callbacks must not throw: the
//    queue stays consistent if one does, but the exception goes to whoever
//    called the dispatch.
#pragma once

#include <cstdint>
#include <functional>

namespace nxfv {

using TimerId = uint32_t;  // 0 is never a valid id

class TimerService {
 public:
  using Callback = std::function<void(TimerId)>;
  virtual ~TimerService() = default;
  // Starts a timer due intervalMs from now; a periodic one is due again
  // every intervalMs after that. Returns its id, or 0 on failure.
  virtual TimerId Start(uint32_t intervalMs, bool periodic, Callback callback) = 0;
  // Stops the timer; its callback will not run again.
  virtual bool Cancel(TimerId id) = 0;
  virtual bool IsActive(TimerId id) const = 0;
};

}  // namespace nxfv
