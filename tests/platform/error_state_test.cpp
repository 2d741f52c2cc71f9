#include "nxfv/platform/error_state.h"

#include <gtest/gtest.h>

#include <thread>

#include "nxfv/platform/sim/simulated_platform.h"
#include "nxfv/shell/show_error.h"

namespace nxfv {
namespace {

TEST(ErrorStateTest, RaiseRecordsAndThrowsAndTheStateIsPerThread) {
  ClearError();
  try {
    RaiseError(kErrSubscript);
    FAIL();
  } catch (const VbError& e) {
    EXPECT_EQ(e.number(), 9);
    EXPECT_EQ(e.description(), "Subscript out of range");
  }
  EXPECT_EQ(CurrentError().number, 9);
  int other = -1;
  std::thread([&] { other = CurrentError().number; }).join();
  EXPECT_EQ(other, 0);
  ClearError();
  EXPECT_EQ(CurrentError().number + CurrentError().description.size(), 0u);
}

TEST(ShowErrorTest, ShowsCurrentStateWithRetryCancelCritical) {
  auto p = std::make_shared<SimulatedPlatform>();
  SetError(6, "Overflow");
  p->SimBoxes().Script({kAnswerRetry});
  EXPECT_EQ(ShowError(*p, ".LoadFiles"), kAnswerRetry);
  EXPECT_EQ(ShowError(*p, "Add item 457"), kAnswerCancel);  // script exhausted: Cancel
  ASSERT_EQ(p->SimBoxes().Shown().size(), 2u);
  EXPECT_EQ(p->SimBoxes().Shown()[0], (MessageBoxRecord{".LoadFiles", "Error: 6. Overflow", 21}));
  ClearError();
  ShowError(*p, "t");
  EXPECT_EQ(p->SimBoxes().Shown()[2].text, "Error: 0. ");
  EXPECT_EQ(p->SimBoxes().Show("t", 0, "no Cancel button"), kAnswerOk);
}

}  // namespace
}  // namespace nxfv
