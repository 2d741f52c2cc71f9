// Whatever a host's handler does, the control reports it and stays usable.
#include <stdexcept>

#include "archive/archive_writer.h"
#include "nxfv/platform/error_state.h"
#include "viewer_fixture.h"

namespace nxfv::testing {
namespace {

class HostFailuresTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    files().AddFile("C:\\f\\a.txt", 1);
    files().AddFile("C:\\f\\b.txt", 2);
    files().AddFile("C:\\g\\c.txt", 3);
  }
  void ExpectIdle() {
    EXPECT_FALSE(FileViewer::Internal::ListingBusy(*viewer));
    EXPECT_FALSE(platform->SimWindow().Locked());
    EXPECT_EQ(platform->SimWindow().MousePointer(), 0);
  }
};

TEST_F(HostFailuresTest, AThrowingHandlerIsReportedAndTheNextListingIsWhole) {
  struct Case {
    const char* name;
    std::function<void()> fail;
    const char* text;
  } cases[] = {
      {"int", [] { throw 7; }, "Error: 5. Invalid procedure call or argument"},
      {"runtime_error", [] { throw std::runtime_error("host"); }, "Error: 5. Invalid procedure call or argument"},
      {"VbError", [] { RaiseError(kErrOverflow); }, "Error: 6. Overflow"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    for (int event = 0; event < 2; ++event) {
      bool armed = true;
      auto fail = [&] {
        if (armed) c.fail();
      };
      listener.onSetUserdata = [&](FileViewerEvents::ItemRef&, std::string&, std::string&) { if (event == 0) fail(); };
      listener.onAfterNewView = [&] { if (event == 1) fail(); };
      platform->SimBoxes().Clear();
      viewer->setCurrentfolder("C:\\f");
      ASSERT_EQ(platform->SimBoxes().Shown().size(), 1u);
      EXPECT_EQ(platform->SimBoxes().Shown()[0].title, ".LoadFiles");
      EXPECT_EQ(platform->SimBoxes().Shown()[0].text, c.text);
      ExpectIdle();
      armed = false;
      viewer->RefreshView(true);
      EXPECT_EQ(Texts(), (std::vector<std::string>{"..", "a.txt", "b.txt"}));
      EXPECT_EQ(platform->SimBoxes().Shown().size(), 1u);
    }
  }
}

TEST_F(HostFailuresTest, NavigationFromAHandlerDuringAListingIsIgnored) {
  viewer->setCurrentfolder("C:\\g");
  int calls = 0;
  listener.onSetUserdata = [&](FileViewerEvents::ItemRef&, std::string&, std::string&) {
    ++calls;
    viewer->setCurrentfolder("C:\\g");
    viewer->RefreshView(false);
    viewer->setFilePattern("*.none");
  };
  listener.onAfterNewView = [&] {
    EXPECT_TRUE(FileViewer::Internal::ListingBusy(*viewer));
    FileViewer::Internal::LoadFiles(*viewer, "C:\\g", false, false, false);
  };
  viewer->setCurrentfolder("C:\\f");
  EXPECT_EQ(calls, 2);  // a.txt and b.txt, once each
  EXPECT_EQ(viewer->Currentfolder(), "C:\\f");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"..", "a.txt", "b.txt"}));
  EXPECT_TRUE(platform->SimBoxes().Shown().empty());
  ExpectIdle();
}

TEST_F(HostFailuresTest, AThrowingColumnClickHandlerLeavesTheSortAlone) {
  viewer->setCurrentfolder("C:\\f");
  listener.onColumnClick = [] { throw 1; };
  viewer->ClickColumnHeader(0, false);
  ASSERT_EQ(platform->SimBoxes().Shown().size(), 1u);
  EXPECT_EQ(platform->SimBoxes().Shown()[0].title, ".ColumnClick");
  EXPECT_EQ(viewer->SortColumns(), (std::vector<SortState>{{"nam", false}}));  // the click did not happen
  ExpectIdle();
}

TEST_F(HostFailuresTest, AnArchiveEntryWhoseHandlerThrowsIsReportedAndTheRestStillShow) {
  using testing_archive::ZipEntry;
  files().AddFileWithContent("C:\\t.zip", testing_archive::BuildZip({ZipEntry("a.txt"), ZipEntry("b.txt")}));
  listener.onSetUserdata = [](FileViewerEvents::ItemRef&, std::string&, std::string&) { throw 3; };
  viewer->setCurrentfolder("C:\\t.zip");
  ASSERT_EQ(platform->SimBoxes().Shown().size(), 2u);  // one box per entry, as the row builder reports
  EXPECT_EQ(platform->SimBoxes().Shown()[1].title, ".ArchiveFileFound");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"a.txt", "b.txt"}));
  ExpectIdle();
  // Both boxes belong to the one call, so a window can ignore the rest; the
  // next call is another operation.
  viewer->RefreshView(true);
  const std::vector<uint64_t>& ops = platform->SimBoxes().Operations();
  ASSERT_EQ(ops.size(), 4u);
  EXPECT_NE(ops[0], 0u);
  EXPECT_EQ(ops[0], ops[1]);
  EXPECT_NE(ops[1], ops[2]);
  EXPECT_EQ(ops[2], ops[3]);
  EXPECT_EQ(platform->MessageBox().CurrentOperation().id, 0u);
}

TEST_F(HostFailuresTest, ListViewObserversHearOneResetPerListing) {
  struct Counter : ListViewObserver {
    int resets = 0, other = 0;
    void OnReset() override { ++resets; }
    void OnRowsInserted(size_t, size_t) override { ++other; }
    void OnRowChanged(size_t, int32_t) override { ++other; }
  } counter;
  viewer->ListView1().AddObserver(&counter);
  viewer->setCurrentfolder("C:\\f");
  EXPECT_EQ(counter.resets, 1);
  EXPECT_EQ(counter.other, 0);
  viewer->ListView1().RemoveObserver(&counter);
}

TEST(FileViewerCreateTest, NeedsAPlatform) { EXPECT_EQ(FileViewer::Create(nullptr), nullptr); }

}  // namespace
}  // namespace nxfv::testing
