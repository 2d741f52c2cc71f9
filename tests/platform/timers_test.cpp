#include "nxfv/platform/sim/sim_timers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nxfv {
namespace {

TEST(SimTimersTest, FiresDueTimersInTimeOrderThenStartOrder) {
  SimTimers timers;
  std::vector<std::string> log;
  auto record = [&](const std::string& name) {
    return [&, name](TimerId) { log.push_back(name + "@" + std::to_string(timers.Now())); };
  };
  const TimerId tick = timers.Start(10, true, record("tick"));
  const TimerId once = timers.Start(25, false, record("once"));
  timers.Start(25, false, record("twin"));
  timers.Start(0, false, record("zero"));  // taken as 1 ms
  EXPECT_NE(tick, 0u);
  EXPECT_EQ(timers.Advance(9), 1u);
  EXPECT_EQ(timers.Advance(21), 5u);
  EXPECT_EQ(log, (std::vector<std::string>{"zero@1", "tick@10", "tick@20", "once@25", "twin@25", "tick@30"}));
  EXPECT_FALSE(timers.IsActive(once));
  EXPECT_TRUE(timers.IsActive(tick));
  EXPECT_EQ(timers.Now(), 30u);
}

TEST(SimTimersTest, CallbacksStartAndCancelTimersIncludingThemselves) {
  SimTimers timers;
  std::vector<std::string> log;
  int ticks = 0;
  TimerId victim = 0;
  TimerId self = timers.Start(5, true, [&](TimerId id) {
    log.push_back("self");
    if (++ticks == 3) {
      EXPECT_TRUE(timers.Cancel(id));
    }
  });
  timers.Start(10, false, [&](TimerId) {
    log.push_back("killer");
    EXPECT_TRUE(timers.Cancel(victim));
    timers.Start(0, false, [&](TimerId) { log.push_back("child@" + std::to_string(timers.Now())); });
  });
  victim = timers.Start(10, false, [&](TimerId) { log.push_back("victim"); });
  timers.Advance(100);
  EXPECT_EQ(log, (std::vector<std::string>{"self", "self", "killer", "child@11", "self"}));
  EXPECT_FALSE(timers.IsActive(self));
  EXPECT_FALSE(timers.Cancel(self));
  EXPECT_EQ(timers.Start(5, true, nullptr), 0u);
}

}  // namespace
}  // namespace nxfv
