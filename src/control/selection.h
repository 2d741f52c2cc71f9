// Selection and check marks: what the host reads and sets about them.
//
// The list view is the authority: these functions read its rows and copy
// their state into the items silently (no xselitemx), then hand the items
// out. Every item handed to the host becomes the one the control listens
// to (ItemEvents::Subscribe). The go-up row ("..") has no ordinary item and
// is skipped by the synchronisation, the cursors and ListItem; the counts
// and the select/check-all operations take every row as the list view does.
//
// A row is checked when its state image is 2; unchecked rows have state
// image 1, and a row without a state image is neither.
//
// Cursors: each of FirstSelected and FirstChecked resets its cursor; Next
// continues after it. A new control's cursors are at row 0, so a Next
// without a First never returns row 0 (hosts call First first).
//
// Nothing here raises: a missing row or item gives null (or 0).
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "nxfv/model/file_list_item.h"

namespace nxfv {

struct ViewerCore;
class ListRow;

struct SelectionCursors {
  int64_t selected = 0;  // list-view index of the row last returned
  int64_t checked = 0;
};

namespace selection {

using ItemRef = std::shared_ptr<NxFileListItem>;

int32_t SelectedCount(const ViewerCore& core);
int32_t CheckedCount(const ViewerCore& core);
// Copies every row's selection and check mark into its item, silently.
void Synchronise(ViewerCore& core);
ItemRef FirstSelected(ViewerCore& core);
ItemRef NextSelected(ViewerCore& core);
ItemRef FirstChecked(ViewerCore& core);
ItemRef NextChecked(ViewerCore& core);
// The item of the row at list-view index, its Selected and Checked taken
// from the row; null out of range and for the go-up row.
ItemRef ListItem(ViewerCore& core, int64_t index);
// The first item in collection order whose Displayname equals name exactly
// (letter case counts).
ItemRef ItemFromName(ViewerCore& core, std::string_view name);
// SelectAll does nothing while multiple selection is off (a single-select
// list view refuses to select every row).
void SelectAll(ViewerCore& core);
void UnSelectAll(ViewerCore& core);
void CheckAll(ViewerCore& core);
void UnCheckAll(ViewerCore& core);
// Unless renaming is off (AllowitemRenaming False) or a listing runs:
// the first selected item becomes the only selected one and the list view
// is asked to edit its label (ListView::RequestLabelEdit).
void StartLabelEdit(ViewerCore& core);

// The item that the row shows (by the row's key); null when none.
ItemRef ItemOfRow(ViewerCore& core, const ListRow& row);
// The first row whose item has the same Key as item: in an archive view
// the row key is folder + name while the item's Key is the name alone.
ListRow* RowOfItem(ViewerCore& core, const NxFileListItem& item);
bool IsGoUpRow(const ListRow& row);

}  // namespace selection
}  // namespace nxfv
