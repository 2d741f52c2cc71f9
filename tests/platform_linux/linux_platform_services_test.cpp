#include "nxfv/platform/linux/linux_platform.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace nxfv {
namespace {

// The platform wires its file operations to its error box: without a host,
// every failed item shows one box with the system's reason.
TEST(LinuxPlatformServicesTest, FileOperationFailuresWithoutHostShowTheErrorBox) {
  LinuxPlatform p;
  std::vector<std::string> boxes;
  p.MessageBoxHandler().SetHandler([&](const std::string& text, int32_t, const std::string& title) {
    boxes.push_back(title + "|" + text);
    return 1;
  });
  const FileOperationResult r = p.FileOperations().Perform(
      {0, FO_COPY, {"/nonexistent-nxfv/a", "/nonexistent-nxfv/b"}, {"/tmp"}, FOF_MULTIDESTFILES, ""});
  EXPECT_EQ(r.returnCode, ENOENT);
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0], "File operation|Cannot copy \"/nonexistent-nxfv/a\": No such file or directory");
}

}  // namespace
}  // namespace nxfv
