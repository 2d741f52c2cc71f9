#include "nxfv/platform/linux/linux_timers.h"

#include <sys/timerfd.h>
#include <time.h>
#include <unistd.h>

namespace nxfv {

namespace {

// Monotonic milliseconds. A timer's due time is counted from the next whole
// millisecond and checked against the last one, so rounding never makes a
// timer fire before its full interval has passed.
uint64_t NowMs(bool roundUp) {
  timespec ts{};
  clock_gettime(CLOCK_MONOTONIC, &ts);
  const uint64_t ms = static_cast<uint64_t>(ts.tv_sec) * 1000 + static_cast<uint64_t>(ts.tv_nsec) / 1000000;
  return roundUp && ts.tv_nsec % 1000000 != 0 ? ms + 1 : ms;
}

}  // namespace

LinuxTimers::LinuxTimers() : fd_(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {}

LinuxTimers::~LinuxTimers() {
  if (fd_ >= 0) close(fd_);
}

TimerId LinuxTimers::Start(uint32_t intervalMs, bool periodic, Callback callback) {
  if (fd_ < 0) return 0;
  const TimerId id = queue_.Start(NowMs(true), intervalMs, periodic, std::move(callback));
  Arm();
  return id;
}

bool LinuxTimers::Cancel(TimerId id) {
  if (!queue_.Cancel(id)) return false;
  Arm();
  return true;
}

size_t LinuxTimers::Dispatch() {
  if (fd_ < 0) return 0;
  uint64_t expirations = 0;
  (void)!read(fd_, &expirations, sizeof expirations);  // clears readability; EAGAIN when not yet due
  const size_t ran = queue_.RunDue(NowMs(false));
  Arm();
  return ran;
}

void LinuxTimers::Arm() {
  // Absolute expiry of the earliest timer; an all-zero value disarms.
  itimerspec expiry{};
  if (const auto due = queue_.NextDue()) {
    expiry.it_value.tv_sec = static_cast<time_t>(*due / 1000);
    expiry.it_value.tv_nsec = static_cast<long>(*due % 1000 * 1000000);
    if (expiry.it_value.tv_sec == 0 && expiry.it_value.tv_nsec == 0) expiry.it_value.tv_nsec = 1;
  }
  timerfd_settime(fd_, TFD_TIMER_ABSTIME, &expiry, nullptr);
}

}  // namespace nxfv
