#include "nxfv/control/drives_view.h"
#include "nxfv/control/virtual_list.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

class DrivesViewTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    platform->SetDrives({"C:\\", "D:\\", "E:\\"});
    files().AddVolume("D:\\", "FAT32");
    files().SetVolumeDetails("D:\\", "USB STICK", 1024 * 1024, 4 * 1024 * 1024);
    files().AddFolder("C:\\Users\\User\\Documents");
    files().AddFolder("C:\\Users\\User\\Music");
    files().AddFile("C:\\w\\a.txt", 1);
    viewer->setCurrentfolder("C:\\w");
    listener.log.clear();
    LoadDrives(FileViewer::Internal::Core(*viewer));
  }
  std::string Caption(const char* key) const {
    const ListView& lv = viewer->ListView1();
    return lv.Column(lv.ColumnIndex(key)).caption;
  }
};

TEST_F(DrivesViewTest, VolumesThenExistingSpecialFoldersWithTheirFigures) {
  struct Case {
    std::string key, text, path, fileName;
    typeoffitem type;
    std::string free, total, fileSystem;
  };
  const Case cases[] = {
      {"C:\\", "C:\\", "C:\\", "", typeoffitem::Drive, "", "", "NTFS"},  // a size the volume does not tell
      {"D:\\", "USB STICK", "D:\\", "", typeoffitem::Drive, "1,024 KB", "4,096 KB", "FAT32"},
      {"E:\\", "E:\\", "E:\\", "", typeoffitem::Drive, "", "", ""},  // no medium: no figures
      {"C:\\Users\\User", "Home", "C:\\Users\\", "User", typeoffitem::Folder, "", "", "Folder"},
      {"C:\\Users\\User\\Documents", "Documents", "C:\\Users\\User\\", "Documents", typeoffitem::Folder, "", "",
       "Folder"},
      {"C:\\Users\\User\\Music", "Music", "C:\\Users\\User\\", "Music", typeoffitem::Folder, "", "", "Folder"},
  };
  EXPECT_EQ(viewer->ItemCount(), 6);  // the desktop, pictures and videos folders do not exist
  for (const Case& c : cases) {
    SCOPED_TRACE(c.key);
    auto item = viewer->Items()->Item(Variant(c.key));
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(viewer->ListView1().FindRow(c.key)->Text(), c.text);
    EXPECT_EQ(item->ListItemTyp(), c.type);
    EXPECT_EQ(item->Path(), c.path);
    EXPECT_EQ(item->FileName(), c.fileName);
    EXPECT_EQ(Cell(c.key, "ext"), c.free);
    EXPECT_EQ(Cell(c.key, "siz"), c.total);
    EXPECT_EQ(Cell(c.key, "typ"), c.fileSystem);
  }
  EXPECT_EQ(Caption("ext"), "Free Space");
  EXPECT_EQ(Caption("siz"), "Total Size");
}

TEST_F(DrivesViewTest, HasNoFolderIsNotWatchedAndTheNextListingRestoresTheColumns) {
  EXPECT_EQ(viewer->Currentfolder(), "");
  EXPECT_EQ(platform->SimNotifier().WatchedFolder(), "");
  ASSERT_GE(listener.log.size(), 2u);
  EXPECT_EQ(listener.log.back(), "OnCurrentFolderChanged ");
  viewer->setCurrentfolder("C:\\w");
  EXPECT_EQ(Caption("siz"), "Size");
  EXPECT_EQ(platform->SimNotifier().WatchedFolder(), "C:\\w");
}

class VirtualListTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    files().AddFile("C:\\w\\a.txt", 1);
    viewer->setCurrentfolder("C:\\w");
    listener.log.clear();
  }
  static VirtualFile File(std::string name, uint64_t size, int32_t attributes = 32) {
    VirtualFile f;
    f.FileName = std::move(name);
    f.Path = "C:\\found\\";
    f.FileSize = size;
    f.DateModified = 45366.4375;  // 2024-03-15 10:30
    f.Attributes = attributes;
    f.UserDataA = "hit";
    return f;
  }
};

TEST_F(VirtualListTest, TheHostsEntriesBecomeRowsKeyedAsAListingKeysThem) {
  viewer->AddVirtualFilesBegin();
  EXPECT_EQ(viewer->ItemCount(), 0);
  EXPECT_EQ(platform->SimNotifier().WatchedFolder(), "");  // nothing on disk to follow
  viewer->VirtualAddItem(File("report.txt", 2048));
  viewer->VirtualAddItem(File("Projects", 0, 16));
  viewer->VirtualAddItem(File("2024", 5));
  viewer->VirtualAddItem(File("report.txt", 1));  // a second entry under one key
  viewer->AddVirtualFilesEnd();
  ASSERT_EQ(platform->SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(platform->SimBoxes().Shown()[0].title, ".VirtualAddItem");
  EXPECT_EQ(viewer->ItemCount(), 3);
  EXPECT_NE(viewer->Items()->Item(Variant("##$$2024")), nullptr);
  EXPECT_EQ(Cell("report.txt", "siz"), "2 KB");
  EXPECT_EQ(Cell("report.txt", "typ"), "Text Document");
  EXPECT_EQ(Cell("Projects", "typ"), "Folder");
  EXPECT_EQ(viewer->Items()->Item(Variant("Projects"))->ListItemTyp(), typeoffitem::VirtualFolder);
  EXPECT_EQ(listener.log, (std::vector<std::string>{"AfterNewView ", "OnCurrentFolderChanged "}));

  platform->SimTimerQueue().Advance(10 * AutoRefresh::kTickMs);  // no refresh overwrites the host's list
  EXPECT_EQ(viewer->ItemCount(), 3);
}

}  // namespace
}  // namespace nxfv::testing
