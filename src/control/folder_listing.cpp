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
// a sweep restarting after every removal would give. Returns whether any
// row went.
bool SweepUnfound(ViewerCore& core, const FolderRows& rows) {
  std::unordered_set<std::string> gone;
  for (size_t r = 0; r < core.listView.RowCount(); ++r)
    if (!rows.Found(r)) gone.emplace(core.listView.Row(r).Key());
  if (gone.empty()) return false;
  core.listView.RemoveRowsIf([&](const ListRow& r) { return gone.count(std::string(r.Key())) > 0; });
  NxFileCollection::Internal items(*core.items);
  for (const std::string& key : gone)
    if (key != "sysgoup") items.Remove(Variant(key));
  return true;
}

// A refresh in place asks only which entries are there, which spares the
// details of every kept entry (on Linux one statx each, most of a listing's
// time); only the new entries are then looked up in full.
void EnumerateForRefresh(FileSystemService& files, FolderRows& rows) {
  std::vector<std::string> fresh;
  files.EnumerateNames(rows.FolderPath(), [&](const FindData& entry) {
    if (rows.NeedsRow(entry)) fresh.push_back(entry.name);
    return true;
  });
  files.FindEntries(rows.FolderPath(), fresh, [&](const FindData& entry) {
    rows.Add(entry);
    return true;
  });
}

// Returns how many rows at the top of the view were kept from before (in
// their old order, after them come the new ones).
size_t Enumerate(ViewerCore& core, const std::string& path, bool keepItems) {
  const ScopedPointer hourglass(core.platform.Ui(), kHourglassPointer);
  const size_t before = keepItems ? core.listView.RowCount() : 0;
  FolderRows rows(core, path, keepItems, core.settings.filePattern);
  rows.AddGoUpRow();
  if (keepItems) {
    EnumerateForRefresh(core.platform.Files(), rows);
    const size_t added = core.listView.RowCount() - before;
    SweepUnfound(core, rows);
    return core.listView.RowCount() - added;
  }
  core.platform.Files().Enumerate(rows.FolderPath(), [&](const FindData& entry) {
    rows.Add(entry);
    return true;
  });
  return 0;
}

}  // namespace

void LoadFiles(ViewerCore& core, const std::string& path, bool keepItems, bool resetSort, bool selectFirst) {
  ListingGuard guard(core);
  if (!guard.Acquired()) return;  // re-entrant calls from event handlers are ignored
  core.insideArchive = false;
  // A refresh in place keeps its rows, so it only re-applies the widths.
  ApplyColumns(core, keepItems);
  if (!keepItems) core.ClearItems();
  const size_t keptRows = Enumerate(core, path, keepItems);
  core.listView.SetVisible(true);
  core.listView.Refresh();
  core.autoRefresh.FollowLocation();  // watch the folder now on view
  AnnounceNewView(core, core.currentFolder);
  // A refresh in place keeps the kept rows' order and keys: only new rows need keys.
  if (keepItems && !resetSort) core.sort.RunAfterRefresh(core.listView, core.platform, keptRows);
  else core.sort.Run(core.listView, core.platform, resetSort);
  if (selectFirst && core.listView.RowCount() > 0) {
    core.listView.Row(0).SetSelected(true);
    core.listView.EnsureVisible(0);
  }
}

}  // namespace nxfv
