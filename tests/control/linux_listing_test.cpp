// The folder listing on real temporary folders of the Linux platform.
#include <sys/stat.h>
#include <unistd.h>


#include "nxfv/control/file_viewer.h"
#include "nxfv/platform/linux/linux_platform.h"
#include "platform_linux/temp_dir.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

class LinuxListingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(tmp.ok());
    platform->MessageBoxHandler().SetHandler([this](const std::string& text, int32_t, const std::string& title) {
      boxes.push_back(title + ": " + text);
      return kAnswerCancel;
    });
    viewer->SetEventListener(&listener);
  }
  void Write(const std::string& name, const std::string& bytes) { ASSERT_TRUE(tmp.WriteFile(name, bytes)); }
  const ListRow* Row(const std::string& key) { return viewer->ListView1().FindRow(key); }
  std::string Cell(const std::string& key, const char* column) {
    const ListRow* r = Row(key);
    return r ? std::string(r->SubItem(FileViewer::Internal::SubItemIndexOf(*viewer, column))) : "<no row>";
  }

  TempDir tmp;
  const std::string dir = tmp.path();
  std::shared_ptr<LinuxPlatform> platform = std::make_shared<LinuxPlatform>();
  std::shared_ptr<FileViewer> viewer = FileViewer::Create(platform);
  RecordingListener listener;
  std::vector<std::string> boxes;
};

TEST_F(LinuxListingTest, RealFolderWithEveryKindOfEntry) {
  Write("a.txt", std::string(3000, 'x'));
  Write(".dotfile", "x");
  Write("secret.txt", "x");
  Write(".hidden", "secret.txt\nhiddendir\n");
  Write("2024", "x");
  ASSERT_TRUE(tmp.MakeDir("sub") && tmp.MakeDir("hiddendir"));
  ASSERT_EQ(symlink("sub", (dir + "/linkdir").c_str()), 0);
  ASSERT_EQ(mkfifo((dir + "/pipe").c_str(), 0644), 0);
  Write(std::string("caf\xE9.txt"), "x");  // Latin-1 byte: not UTF-8

  viewer->setViewOptions(31 | 256 | 512);
  viewer->setCurrentfolder(dir + "/");
  EXPECT_EQ(viewer->Currentfolder(), dir);
  EXPECT_TRUE(boxes.empty()) << boxes.front();

  EXPECT_EQ(Row(".dotfile"), nullptr);
  EXPECT_NE(Row("caf\\xE9.txt"), nullptr);
  // Attribute bits per kind of entry are checked on the file system itself.
  struct Case { const char* key; const char* column; const char* text; } cases[] = {
      {"a.txt", "siz", "3 KB"},  {"a.txt", "typ", "plain text document"}, {"a.txt", "atr", ".......n......."},
      {"a.txt", "dos", "A.TXT"}, {"secret.txt", "atr", ".h............."},  // "normal" only without other bits
      {"##$$2024", "typ", ""},   {"sub", "typ", "Folder"},  {"linkdir", "atr", "....d.....l...."},
  };
  for (const Case& c : cases) EXPECT_EQ(Cell(c.key, c.column), c.text) << c.key << " " << c.column;
  auto item = viewer->Items()->Item(Variant("a.txt"));
  EXPECT_EQ(item->Path(), dir + "/");
}

TEST_F(LinuxListingTest, RootFolderKeepsItsSeparator) {
  viewer->setShowFiles(false);
  viewer->setCurrentfolder("/");
  EXPECT_EQ(viewer->Currentfolder(), "/");
  EXPECT_GT(viewer->ListView1().RowCount(), 3u);
  auto item = viewer->Items()->Item(Variant("tmp"));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->Path(), "/");
}

}  // namespace
}  // namespace nxfv::testing
