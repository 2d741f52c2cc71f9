#include "nxfv/platform/host_folder_picker.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace nxfv {
namespace {

TEST(HostFolderPickerTest, CancelsWithoutAHandlerAndWhenTheHandlerFails) {
  HostFolderPicker picker;
  std::string chosen = "stale";
  EXPECT_FALSE(picker.PickFolder("t", "/", chosen));
  EXPECT_EQ(chosen, "");
  picker.SetHandler([](const std::string& title, const std::string& start, std::string& out) {
    if (title == "throw") throw std::runtime_error("dialog failed");
    out = start + title;
    return title != "no";
  });
  EXPECT_TRUE(picker.PickFolder("x", "/home/", chosen));
  EXPECT_EQ(chosen, "/home/x");
  for (const char* title : {"no", "throw"}) {
    EXPECT_FALSE(picker.PickFolder(title, "/", chosen)) << title;
    EXPECT_EQ(chosen, "") << title;
  }
}

}  // namespace
}  // namespace nxfv
