#include "nxfv/control/folder_listing.h"

#include <unordered_set>

#include "nxfv/control/column_setup.h"
#include "nxfv/control/folder_rows.h"
#include "nxfv/control/host_events.h"
#include "nxfv/control/listing_guard.h"

namespace nxfv {

namespace {

// Every row a refresh did not find goes, and its item with it; the go-up
// item stays in the collection even when its row goes. One pass gives what
// a sweep restarting after every removal would give.
void SweepUnfound(ViewerCore& core) {
  std::unordered_set<std::string_view> gone;
  for (const auto& item : *core.items)
    if (item && !NxFileListItem::Internal::FoundInPass(*item) && core.listView.FindRow(item->Key()))
      gone.insert(item->Key());
  if (gone.empty()) return;
  // The keys are views into the items, which the collection still holds here.
  std::vector<std::string> removed(gone.begin(), gone.end());
  core.listView.RemoveRowsIf([&](const ListRow& r) { return gone.count(r.Key()) > 0; });
  NxFileCollection::Internal items(*core.items);
  for (const std::string& key : removed)
    if (key != "sysgoup") items.Remove(Variant(key));
}

void Enumerate(ViewerCore& core, const std::string& path, bool keepItems) {
  const ScopedPointer hourglass(core.platform.Ui(), kHourglassPointer);
  FolderRows rows(core, path, keepItems, core.settings.filePattern);
  rows.AddGoUpRow();
  core.platform.Files().Enumerate(rows.FolderPath(), [&](const FindData& entry) {
    rows.Add(entry);
    return true;
  });
  if (keepItems) SweepUnfound(core);
}

}  // namespace

void LoadFiles(ViewerCore& core, const std::string& path, bool keepItems, bool resetSort, bool selectFirst) {
  ListingGuard guard(core);
  if (!guard.Acquired()) return;  // re-entrant calls from event handlers are ignored
  if (keepItems) {
    for (const auto& item : *core.items)
      if (item) NxFileListItem::Internal::SetFoundInPass(*item, false);
  }
  core.insideArchive = false;
  // A refresh in place keeps its rows, so it only re-applies the widths.
  ApplyColumns(core, keepItems);
  if (!keepItems) core.ClearItems();
  Enumerate(core, path, keepItems);
  core.listView.SetVisible(true);
  core.listView.Refresh();
  AnnounceNewView(core, core.currentFolder);
  core.sort.Run(core.listView, core.platform, resetSort);
  if (selectFirst && core.listView.RowCount() > 0) {
    core.listView.Row(0).SetSelected(true);
    core.listView.EnsureVisible(0);
  }
}

}  // namespace nxfv
