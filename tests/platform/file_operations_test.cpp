#include "nxfv/platform/sim/sim_file_operations.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

TEST(SimFileOperationsTest, RecordsRequestsAndAnswersFromTheScriptThenSucceeds) {
  SimFileOperations ops;
  ops.Script({{0, true}, {1223, false}});
  const FileOperationRequest copy{7, FO_COPY, {"C:\\a", "C:\\b"}, {"D:\\"}, FOF_MULTIDESTFILES | FOF_ALLOWUNDO | FOF_RENAMEONCOLLISION, ""};
  const FileOperationRequest del{0, FO_DELETE, {"C:\\a"}, {}, FOF_ALLOWUNDO, "Deleting"};
  const FileOperationResult aborted = ops.Perform(copy);
  EXPECT_FALSE(aborted.Succeeded());
  EXPECT_TRUE(aborted.anyOperationsAborted);
  EXPECT_EQ(ops.Perform(del), (FileOperationResult{1223, false}));
  EXPECT_TRUE(ops.Perform(del).Succeeded());
  EXPECT_EQ(ops.Requests(), (std::vector<FileOperationRequest>{copy, del, del}));
}

}  // namespace
}  // namespace nxfv
