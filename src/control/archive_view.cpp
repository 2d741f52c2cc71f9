#include "nxfv/control/archive_view.h"

#include "nxfv/archive/archive_limits.h"
#include "nxfv/archive/archive_reader.h"
#include "nxfv/control/archive_rows.h"
#include "nxfv/control/column_setup.h"
#include "nxfv/control/host_events.h"
#include "nxfv/control/listing_guard.h"

namespace nxfv {

namespace {

// Hands each entry the reader finds to the row builder.
class EntrySink : public cArchiveEvents {
 public:
  explicit EntrySink(ArchiveRows& rows) : rows_(rows) {}
  void FileFound(int32_t Index, int32_t Total, std::string_view FileName, std::string_view ArchiveExt,
                 double Modified, int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr, std::string_view Path,
                 int32_t flags, int32_t CRC, std::string_view Comments) override {
    // The row and the item keep the texts, so they are copied here.
    rows_.Add({Index, Total, std::string(FileName), std::string(ArchiveExt), Modified, Size, CompSize, Method, Attr,
               std::string(Path), flags, CRC, std::string(Comments)});
  }

 private:
  ArchiveRows& rows_;
};

// A warning box with OK alone: nothing failed, so there is nothing to retry.
constexpr int32_t kNoticeBoxStyle = 48;

// Tells the user once, after the reader, why a well-formed archive is not
// listed (or listed wrongly); says nothing when there is no such reason.
void TellWhyNotListed(Platform& platform, const std::string& notice) {
  if (!notice.empty()) platform.MessageBox().Show(notice, kNoticeBoxStyle, ".LoadArchive");
}

}  // namespace

void LoadArchive(ViewerCore& core, const std::string& archivePath) {
  ListingGuard guard(core);
  if (!guard.Acquired()) return;
  core.currentFolder = archivePath;
  core.Slot().currentFolder = archivePath;
  core.insideArchive = true;
  core.autoRefresh.FollowLocation();  // an archive is not watched: the folder left behind is let go
  ApplyColumns(core, false);
  core.ClearItems();
  ArchiveRows rows(core);
  EntrySink sink(rows);
  cArchive reader(core.platformRef);
  reader.SetListener(&sink);
  reader.ArchiveName = archivePath;
  reader.ArchiveExt = core.platform.Locale().CharLower(archivePath.substr(archivePath.rfind('.') + 1));
  reader.GetInfo();
  TellWhyNotListed(core.platform, ArchiveLimitNotice(core.platform, archivePath, reader.ArchiveExt));
  core.listView.SetVisible(true);
  core.listView.Refresh();
  AnnounceNewView(core, core.currentFolder);
  core.sort.Run(core.listView, core.platform, false);
}

}  // namespace nxfv
