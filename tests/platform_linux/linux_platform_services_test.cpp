#include "nxfv/platform/linux/linux_platform.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

// The file-operation stub must not pretend to succeed. (The pollable timer and
// notifier queues are driven end to end by the Linux auto-refresh tests.)
TEST(LinuxPlatformServicesTest, FileOperationsFailHonestly) {
  LinuxPlatform p;
  const FileOperationResult r = p.FileOperations().Perform({0, FO_COPY, {"/a"}, {"/b"}, FOF_ALLOWUNDO, ""});
  EXPECT_EQ(r.returnCode, LinuxFileOperations::kNotAvailable);
  EXPECT_FALSE(r.Succeeded());
}

}  // namespace
}  // namespace nxfv
