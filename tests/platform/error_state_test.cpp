#include "nxfv/platform/error_state.h"

#include <gtest/gtest.h>

#include <thread>

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

}  // namespace
}  // namespace nxfv
