#include "nxfv/platform/host_folder_picker.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "nxfv/platform/sim/sim_folder_picker.h"

namespace nxfv {
namespace {

TEST(SimFolderPickerTest, AnswersFromTheScriptThenCancels) {
  SimFolderPicker picker;
  picker.Script({"C:\\chosen", std::nullopt, ""});
  std::string chosen = "stale";
  EXPECT_TRUE(picker.PickFolder("Pick", "C:\\", chosen));
  EXPECT_EQ(chosen, "C:\\chosen");
  for (int i = 0; i < 3; ++i) {  // cancel, an empty choice, the script used up
    chosen = "stale";
    EXPECT_FALSE(picker.PickFolder("Again", "C:\\x", chosen));
    EXPECT_EQ(chosen, "");
  }
  ASSERT_EQ(picker.Requests().size(), 4u);
  EXPECT_EQ(picker.Requests()[1], (FolderPickRecord{"Again", "C:\\x"}));
}

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
