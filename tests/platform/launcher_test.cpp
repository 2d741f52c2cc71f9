#include "nxfv/platform/sim/sim_launcher.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

TEST(LaunchVerbTest, KnowsTheSixVerbsInAnyCaseAndEmptyAsOpen) {
  struct Case {
    const char* verb;
    std::optional<LaunchVerb> expected;
  } cases[] = {
      {"open", LaunchVerb::Open},   {"", LaunchVerb::Open},         {"EDIT", LaunchVerb::Edit},
      {"Print", LaunchVerb::Print}, {"properties", LaunchVerb::Properties}, {"explore", LaunchVerb::Explore},
      {"fInd", LaunchVerb::Find},   {"openwith", std::nullopt},     {"open ", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(ParseLaunchVerb(c.verb), c.expected) << c.verb;
}

TEST(SimLauncherTest, RecordsEveryRequestAndAnswersKnownVerbsFromTheScript) {
  SimLauncher launcher;
  launcher.Script({false, true});
  EXPECT_FALSE(launcher.Launch("C:\\a.txt", "print"));
  EXPECT_FALSE(launcher.Launch("C:\\a.txt", "bogus"));  // does not use up an answer
  EXPECT_FALSE(launcher.Launch("", "open"));
  EXPECT_TRUE(launcher.Launch("C:\\b.txt"));
  EXPECT_TRUE(launcher.Launch("C:\\c", "explore"));  // script empty: success
  EXPECT_EQ(launcher.Requests(), (std::vector<LaunchRecord>{{"C:\\a.txt", "print"},
                                                            {"C:\\a.txt", "bogus"},
                                                            {"", "open"},
                                                            {"C:\\b.txt", "open"},
                                                            {"C:\\c", "explore"}}));
}

}  // namespace
}  // namespace nxfv
