#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

class SortingTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    auto file = [&](const char* name, uint64_t size, int day) {
      FindData& d = files().AddFile(std::string("C:\\s\\") + name, size);
      d.lastWriteTime = SimFileSystem::kDefaultTime + static_cast<uint64_t>(day) * 864000000000ULL;
    };
    file("b.txt", 999 * 1024, 3);
    file("a.doc", 1000 * 1024, 1);
    file("c.bin", 10, 2);
    files().AddFolder("C:\\s\\zdir");
    files().AddFolder("C:\\s\\adir");
    viewer->setCurrentfolder("C:\\s");
  }
  int32_t Col(const char* key) { return viewer->ListView1().ColumnIndex(key); }
};

TEST_F(SortingTest, DefaultIsNameAscendingFilesBeforeFoldersGoUpFirst) {
  EXPECT_EQ(Texts(), (std::vector<std::string>{"..", "a.doc", "b.txt", "c.bin", "adir", "zdir"}));
  EXPECT_EQ(viewer->ListView1().Column(0).sortIndicator, 1);
}

TEST_F(SortingTest, HeaderClicksChooseAndReverse) {
  viewer->ClickColumnHeader(Col("nam"), false);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"..", "zdir", "adir", "c.bin", "b.txt", "a.doc"}));
  EXPECT_EQ(viewer->ListView1().Column(0).sortIndicator, 2);
  // Numeric: 999 KB before 1,000 KB. Folders have no size and keep their
  // previous order (the sort is stable).
  viewer->ClickColumnHeader(Col("siz"), false);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"..", "c.bin", "b.txt", "a.doc", "zdir", "adir"}));
  viewer->ClickColumnHeader(Col("siz"), false);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"..", "zdir", "adir", "a.doc", "b.txt", "c.bin"}));
  EXPECT_EQ(listener.log.back(), "ColumnClick siz");
  viewer->ClickColumnHeader(Col("mod"), false);
  EXPECT_EQ(Texts()[1], "a.doc");
  EXPECT_EQ(Texts()[3], "b.txt");
}

TEST_F(SortingTest, CtrlClickAddsSortColumnsWithPriorities) {
  viewer->ClickColumnHeader(Col("typ"), false);
  viewer->ClickColumnHeader(Col("nam"), true);
  viewer->ClickColumnHeader(Col("nam"), true);  // reverses the second column only
  const auto state = viewer->SortColumns();
  ASSERT_EQ(state.size(), 2u);
  EXPECT_EQ(state[1].key, "nam");
  EXPECT_TRUE(state[1].descending);
  EXPECT_EQ(viewer->ListView1().Column(Col("nam")).sortPriority, 2);
  // "File" < "Microsoft Word Document" < "Text Document"; folders by name, reversed.
  EXPECT_EQ(Texts(), (std::vector<std::string>{"..", "c.bin", "a.doc", "b.txt", "zdir", "adir"}));
  viewer->setAllowMultiColumnSort(false);
  viewer->ClickColumnHeader(Col("ext"), true);
  EXPECT_EQ(viewer->SortColumns().size(), 1u);
}

TEST_F(SortingTest, RowsWithoutAValidDateSortFirst) {
  viewer->setViewOptions(31 | 256);
  viewer->RefreshView(true);
  viewer->SetSortColumns({{"mod", false}});
  // The go-up row has no date; it stays first anyway.
  EXPECT_EQ(Texts(), (std::vector<std::string>{"..", "a.doc", "c.bin", "b.txt", "adir", "zdir"}));
  viewer->SetSortColumns({{"mod", true}});
  EXPECT_EQ(Texts().front(), "..");
}

}  // namespace
}  // namespace nxfv::testing
