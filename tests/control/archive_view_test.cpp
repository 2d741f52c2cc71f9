#include "archive/archive_writer.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

using testing_archive::BuildCab;
using testing_archive::BuildZip;
using testing_archive::CabFile;
using testing_archive::ZipEntry;

class ArchiveViewTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    viewer->setViewOptions(0x1FFBFF);
  }
  std::shared_ptr<NxFileListItem> Item(const std::string& key) { return viewer->Items()->Item(Variant(key)); }
};

TEST_F(ArchiveViewTest, ZipEntriesBecomeRowsAndItems) {
  files().AddFileWithContent(
      "C:\\a\\t.zip",
      BuildZip({ZipEntry("docs/"), ZipEntry("docs/read.me.txt").Size(200).CompressedSize(50).Flags(1).Comment("c1"),
                ZipEntry("2024").Method(0).Size(0).CompressedSize(0), ZipEntry("grew.bin").Size(10).CompressedSize(12),
                ZipEntry("noext").Crc(0xFFFFFFFF)}));
  listener.log.clear();
  viewer->setCurrentfolder("C:\\a\\t.zip");
  EXPECT_TRUE(viewer->InsideArchive());
  ASSERT_GE(listener.log.size(), 2u);
  EXPECT_EQ(listener.log[listener.log.size() - 2], "AfterNewView C:\\a\\t.zip archive");
  EXPECT_EQ(viewer->ListView1().RowCount(), 5u);
  EXPECT_TRUE(platform->SimBoxes().Shown().empty());

  // A folder entry: empty text, type Folder, the folder in "pth" and Path.
  auto folder = Item("docs/");
  ASSERT_TRUE(folder);
  EXPECT_EQ(folder->ListItemTyp(), typeoffitem::Folder);
  EXPECT_EQ(folder->Path(), "docs/\\");
  EXPECT_EQ(Cell("docs/", "pth"), "docs/");

  auto file = Item("docs/read.me.txt");
  ASSERT_TRUE(file);
  EXPECT_EQ(file->Key(), "read.me.txt");  // the item keeps the bare name as its key
  EXPECT_EQ(file->ListItemTyp(), typeoffitem::file);
  // Archive times are not shifted to local time.
  const std::vector<std::string> cells = {"75.0%", "True", "Deflated:N", "12345678", "na", "c1", "Text Document",
                                          "3/15/2024", "10:30:42 AM", "3/15/2024 10:30:42 AM"};
  std::vector<std::string> got;
  for (const char* c : {"rat", "enc", "mtd", "crc", "sig", "com", "typ", "mod", "tim", "cre"}) {
    got.push_back(Cell("docs/read.me.txt", c));
  }
  EXPECT_EQ(got, cells);
  const AInfo info = file->ArchivInfo();
  EXPECT_EQ(info.CompressedSize, 50);
  EXPECT_EQ(info.Encoded, -1);
  EXPECT_EQ(info.Comments, "c1");

  EXPECT_NE(Item("2024##$$"), nullptr);                  // numeric names are marked at the end
  EXPECT_EQ(Cell("2024##$$", "rat"), "00.0%");          // size 0
  EXPECT_EQ(Cell("grew.bin", "rat"), "00.0%");          // grew: no negative ratio
  EXPECT_EQ(Cell("noext", "crc"), "FFFFFFFF");
  EXPECT_EQ(Cell("noext", "com"), "c1");  // the reader carries an earlier comment over
  // No extension: the icon of the entry before it, and no type.
  const ListView& lv = viewer->ListView1();
  EXPECT_EQ(lv.FindRow("noext")->Image(), lv.FindRow("grew.bin")->Image());
  EXPECT_EQ(Cell("noext", "typ"), "");
}

TEST_F(ArchiveViewTest, CabEntriesAndHostUserData) {
  testing_archive::CabLayout cab;
  cab.files = {CabFile("a.txt"), CabFile("sub\\b.txt")};
  cab.typeCompress = 2;
  files().AddFileWithContent("C:\\a\\t.cab", BuildCab(cab));
  listener.onSetUserdata = [](FileViewerEvents::ItemRef& item, std::string& a, std::string&) {
    a = "seen";
    NxFileListItem::Internal::SetKey(*item, "changed");
    item->setDisplayname("changed");
  };
  viewer->setCurrentfolder("C:\\a\\t.cab");
  EXPECT_EQ(Cell("a.txt", "mtd"), "Lzx");
  EXPECT_EQ(Cell("a.txt", "enc"), "False");
  EXPECT_EQ(Cell("a.txt", "rat"), "100.0%");  // cabinets report no compressed size
  EXPECT_EQ(Cell("a.txt", "userd1"), "seen");
  auto item = Item("a.txt");
  EXPECT_EQ(item->Key(), "a.txt");  // the host cannot change key or name here
  EXPECT_EQ(item->Displayname(), "a.txt");
  EXPECT_EQ(Item("sub\\b.txt")->Path(), "sub\\");
}

TEST_F(ArchiveViewTest, DuplicateEntriesAreReportedAndTheRestListed) {
  files().AddFileWithContent("C:\\a\\d.zip", BuildZip({ZipEntry("s/x.txt"), ZipEntry("s/x.txt"), ZipEntry("y.txt")}));
  viewer->setCurrentfolder("C:\\a\\d.zip");
  EXPECT_EQ(viewer->ListView1().RowCount(), 2u);
  ASSERT_EQ(platform->SimBoxes().Shown().size(), 1u);
  EXPECT_NE(platform->SimBoxes().Shown()[0].text.find("\"s/x.txt\""), std::string::npos);
  EXPECT_NE(viewer->ListView1().FindRow("y.txt"), nullptr);
}

TEST_F(ArchiveViewTest, ArchivesAreFoldersListedAsFilesWhenDivingIsOff) {
  files().AddFileWithContent("C:\\a\\t.ZIP", BuildZip({ZipEntry("x.txt")}));
  viewer->setAllowDiveIntoArchives(false);
  viewer->setCurrentfolder("C:\\a\\t.ZIP");
  EXPECT_FALSE(viewer->InsideArchive());
  EXPECT_TRUE(platform->SimBoxes().Shown().empty());  // it exists: listed as a folder, it shows nothing
  EXPECT_EQ(viewer->ListView1().RowCount(), 1u);
  viewer->setAllowDiveIntoArchives(true);
  viewer->setCurrentfolder("C:\\a\\t.ZIP");  // the extension is lower-cased for the reader
  EXPECT_TRUE(viewer->InsideArchive());
  EXPECT_NE(viewer->ListView1().FindRow("x.txt"), nullptr);
}

}  // namespace
}  // namespace nxfv::testing
