#include "nxfv/platform/linux/linux_platform.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

// The pollable queues behind the platform's services, and the file-operation
// stub that must not pretend to succeed.
TEST(LinuxPlatformServicesTest, ServicesAreWiredAndFileOperationsFailHonestly) {
  LinuxPlatform p;
  EXPECT_EQ(&p.Timers(), &p.PollableTimers());
  EXPECT_EQ(&p.ChangeNotifier(), &p.PollableNotifier());
  EXPECT_GE(p.PollableTimers().PollFd(), 0);
  EXPECT_GE(p.PollableNotifier().PollFd(), 0);

  const FileOperationResult r = p.FileOperations().Perform({0, FO_COPY, {"/a"}, {"/b"}, FOF_ALLOWUNDO, ""});
  EXPECT_EQ(r.returnCode, LinuxFileOperations::kNotAvailable);
  EXPECT_FALSE(r.Succeeded());
}

}  // namespace
}  // namespace nxfv
