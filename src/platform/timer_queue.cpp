#include "nxfv/platform/timer_queue.h"

namespace nxfv {

TimerId TimerQueue::Start(uint64_t now, uint32_t intervalMs, bool periodic, TimerService::Callback callback) {
  if (!callback) return 0;
  const TimerId id = nextId_++;
  if (nextId_ == 0) nextId_ = 1;  // after four billion timers, skip the invalid id
  Timer t{now + (intervalMs == 0 ? 1 : intervalMs), intervalMs == 0 ? 1 : intervalMs, periodic, std::move(callback)};
  order_.emplace(t.due, id);
  timers_.emplace(id, std::move(t));
  return id;
}

bool TimerQueue::Cancel(TimerId id) {
  const auto it = timers_.find(id);
  if (it == timers_.end()) return false;
  order_.erase({it->second.due, id});
  timers_.erase(it);
  return true;
}

std::optional<uint64_t> TimerQueue::NextDue() const {
  if (order_.empty()) return std::nullopt;
  return order_.begin()->first;
}

bool TimerQueue::RunOne(uint64_t now) {
  if (order_.empty() || order_.begin()->first > now) return false;
  const auto [due, id] = *order_.begin();
  order_.erase(order_.begin());
  Timer& t = timers_.at(id);
  // The callback runs from a copy: it may cancel its own timer, which
  // destroys the stored one.
  TimerService::Callback callback = t.callback;
  if (t.periodic) {
    t.due = due + t.interval > now ? due + t.interval : now + t.interval;
    order_.emplace(t.due, id);
  } else {
    timers_.erase(id);
  }
  callback(id);
  return true;
}

size_t TimerQueue::RunDue(uint64_t now) {
  size_t ran = 0;
  while (RunOne(now)) ++ran;
  return ran;
}

}  // namespace nxfv
