// Creating folders on a real temporary folder of the Linux platform.
#include <sys/stat.h>


#include "nxfv/platform/linux/linux_platform.h"
#include "platform_linux/temp_dir.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

TEST(LinuxNavigation, CreateNewFolderMakesRealFoldersAndNeverReplaces) {
  TempDir tmp;
  const std::string dir = tmp.path();
  auto platform = std::make_shared<LinuxPlatform>();
  std::vector<std::string> boxes;
  platform->MessageBoxHandler().SetHandler([&](const std::string& text, int32_t, const std::string& title) {
    boxes.push_back(title + ": " + text);
    return kAnswerCancel;
  });
  auto viewer = FileViewer::Create(platform);
  viewer->setCurrentfolder(dir);
  EXPECT_TRUE(viewer->CreateNewFolder());
  EXPECT_TRUE(viewer->CreateNewFolder());
  struct stat st {};
  EXPECT_EQ(stat((dir + "/New Folder").c_str(), &st), 0);
  EXPECT_TRUE(S_ISDIR(st.st_mode));
  EXPECT_EQ(stat((dir + "/New Folder (2)").c_str(), &st), 0);
  EXPECT_NE(viewer->ListView1().FindRow("New Folder (2)"), nullptr);
  EXPECT_FALSE(viewer->CreateNewFolder("New Folder"));
  EXPECT_EQ(boxes, (std::vector<std::string>{".CreateNewFolder: Error: 58. File already exists"}));
  EXPECT_FALSE(platform->Files().CreateFolder(dir + "/missing/child"));
}

}  // namespace
}  // namespace nxfv::testing
