#include "nxfv/platform/linux/linux_timers.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <string>
#include <vector>

namespace nxfv {
namespace {

// What a host loop does: wait until the queue's descriptor is readable (at
// most timeoutMs), then dispatch. Returns how many callbacks ran.
size_t PollAndDispatch(LinuxTimers& timers, int timeoutMs) {
  pollfd p{timers.PollFd(), POLLIN, 0};
  if (poll(&p, 1, timeoutMs) <= 0) return 0;
  return timers.Dispatch();
}

TEST(LinuxTimersTest, SingleShotFiresOnceThroughThePolledDescriptor) {
  LinuxTimers timers;
  ASSERT_GE(timers.PollFd(), 0);
  int fired = 0;
  const TimerId id = timers.Start(5, false, [&](TimerId) { ++fired; });
  ASSERT_NE(id, 0u);
  EXPECT_EQ(timers.Dispatch(), 0u);  // not due yet: nothing runs early
  while (fired == 0) ASSERT_GT(PollAndDispatch(timers, 2000), 0u);
  EXPECT_FALSE(timers.IsActive(id));
  EXPECT_EQ(PollAndDispatch(timers, 20), 0u);  // disarmed: never readable again
  EXPECT_EQ(fired, 1);
}

TEST(LinuxTimersTest, OneDispatchRunsEverythingDueInOrderButNotWhatItStarts) {
  LinuxTimers timers;
  std::vector<std::string> log;
  TimerId cancelled = 0;
  auto record = [&](const char* name) { return [&, name](TimerId) { log.push_back(name); }; };
  timers.Start(10, false, record("10ms"));
  timers.Start(5, false, record("5ms-first"));
  timers.Start(1, false, [&](TimerId) {
    log.push_back("1ms");
    EXPECT_TRUE(timers.Cancel(cancelled));
    timers.Start(0, false, record("started"));  // due after this dispatch
  });
  timers.Start(5, false, record("5ms-second"));
  cancelled = timers.Start(5, false, record("cancelled"));
  poll(nullptr, 0, 15);  // let all of them fall due before one dispatch
  EXPECT_EQ(timers.Dispatch(), 4u);
  EXPECT_EQ(log, (std::vector<std::string>{"1ms", "5ms-first", "5ms-second", "10ms"}));
  EXPECT_EQ(PollAndDispatch(timers, 2000), 1u);
  EXPECT_EQ(log.back(), "started");
}

}  // namespace
}  // namespace nxfv
