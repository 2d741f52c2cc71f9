#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

class RefreshTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    for (const char* n : {"a.txt", "b.txt", "c.txt", "d.txt", "e.txt"}) files().AddFile(std::string("C:\\w\\") + n, 1);
    viewer->setCurrentfolder("C:\\w");
  }
};

TEST_F(RefreshTest, DeletesAndAddsWithoutTouchingSurvivors) {
  viewer->ListView1().FindRow("c.txt")->SetSelected(true);
  auto survivor = viewer->Items()->Item(Variant("c.txt"));
  files().Remove("C:\\w\\b.txt");
  files().Remove("C:\\w\\d.txt");
  files().AddFile("C:\\w\\0new.txt", 1);
  listener.log.clear();
  viewer->RefreshView(false);
  EXPECT_EQ(Keys(), (std::vector<std::string>{"sysgoup", "0new.txt", "a.txt", "c.txt", "e.txt"}));
  EXPECT_EQ(viewer->Items()->Count(), 5);
  EXPECT_EQ(viewer->Items()->Item(Variant("c.txt")), survivor);  // the same item object
  EXPECT_TRUE(viewer->ListView1().FindRow("c.txt")->Selected());
  EXPECT_EQ(viewer->Items()->Item(Variant("b.txt")), nullptr);
  // Items added by a refresh get no user data event.
  EXPECT_EQ(listener.log, (std::vector<std::string>{"AfterNewView C:\\w"}));
}

TEST_F(RefreshTest, NothingChangedKeepsEverythingButAGoUpRowCanLeaveTheView) {
  const auto before = Keys();
  viewer->RefreshView(false);
  EXPECT_EQ(Keys(), before);
  EXPECT_TRUE(platform->SimBoxes().Shown().empty());
  viewer->setGoUpTopFolder("C:\\w");
  viewer->RefreshView(false);
  EXPECT_EQ(viewer->ListView1().FindRow("sysgoup"), nullptr);
  EXPECT_NE(viewer->Items()->Item(Variant("sysgoup")), nullptr);  // it stays in the collection
  EXPECT_EQ(viewer->ListView1().RowCount(), 5u);
}

}  // namespace
}  // namespace nxfv::testing
