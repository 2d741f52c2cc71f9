// Timers on Linux: a queue behind one timerfd on CLOCK_MONOTONIC, always
// armed for the earliest due timer. The host's loop polls PollFd() for
// reading and calls Dispatch() when it is readable (calling it at other
// times is harmless); the callbacks run inside Dispatch, on that thread.
// When no timerfd can be made, PollFd() is -1 and Start answers 0.
#pragma once

#include "nxfv/platform/timer_queue.h"

namespace nxfv {

class LinuxTimers : public TimerService {
 public:
  LinuxTimers();
  ~LinuxTimers() override;
  LinuxTimers(const LinuxTimers&) = delete;
  LinuxTimers& operator=(const LinuxTimers&) = delete;

  TimerId Start(uint32_t intervalMs, bool periodic, Callback callback) override;
  bool Cancel(TimerId id) override;
  bool IsActive(TimerId id) const override { return queue_.IsActive(id); }

  int PollFd() const { return fd_; }
  // Runs the timers that are due, each at most once; returns how many ran.
  size_t Dispatch();

 private:
  void Arm();

  int fd_ = -1;
  TimerQueue queue_;
};

}  // namespace nxfv
