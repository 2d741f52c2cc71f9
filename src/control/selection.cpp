#include "nxfv/control/selection.h"

#include <string>

#include "nxfv/control/viewer_core.h"
#include "nxfv/platform/list_view.h"

namespace nxfv::selection {
namespace {

using Internal = NxFileListItem::Internal;

ItemRef Handout(ViewerCore& core, ItemRef item) {
  if (item) core.itemEvents.Subscribe(item);
  return item;
}

// The next row after `after` that test accepts, skipping the go-up row;
// -1 when there is none.
template <class Test>
int64_t NextRow(const ListView& view, int64_t after, const Test& test) {
  const auto count = static_cast<int64_t>(view.RowCount());
  for (int64_t i = after < -1 ? 0 : after + 1; i < count; ++i) {
    const ListRow& row = view.Row(static_cast<size_t>(i));
    if (test(row) && !IsGoUpRow(row)) return i;
  }
  return -1;
}

// Moves the cursor to the next accepted row and hands out its item.
template <class Test>
ItemRef Advance(ViewerCore& core, int64_t& cursor, int64_t after, const Test& test) {
  const int64_t at = NextRow(core.listView, after, test);
  if (at < 0) return nullptr;
  cursor = at;
  return Handout(core, ItemOfRow(core, core.listView.Row(static_cast<size_t>(at))));
}

bool RowSelected(const ListRow& row) { return row.Selected(); }
bool RowChecked(const ListRow& row) { return row.Checked(); }

}  // namespace

bool IsGoUpRow(const ListRow& row) { return row.Text() == ".."; }

ItemRef ItemOfRow(ViewerCore& core, const ListRow& row) {
  if (row.Key().empty()) return nullptr;
  return core.items->Item(Variant(std::string(row.Key())));
}

ListRow* RowOfItem(ViewerCore& core, const NxFileListItem& item) {
  const std::string_view key = item.Key();
  if (key.empty()) return nullptr;
  // Outside archives a row's key is its item's Key, and keys are unique.
  if (!core.insideArchive) {
    ListRow* row = core.listView.FindRow(key);
    if (row) {
      ItemRef shown = ItemOfRow(core, *row);
      if (shown && shown->Key() == key) return row;
    }
  }
  for (size_t i = 0; i < core.listView.RowCount(); ++i) {
    ListRow& row = core.listView.Row(i);
    ItemRef shown = ItemOfRow(core, row);
    if (shown && shown->Key() == key) return &row;
  }
  return nullptr;
}

int32_t SelectedCount(const ViewerCore& core) {
  int32_t n = 0;
  for (size_t i = 0; i < core.listView.RowCount(); ++i) n += core.listView.Row(i).Selected() ? 1 : 0;
  return n;
}

int32_t CheckedCount(const ViewerCore& core) {
  int32_t n = 0;
  for (size_t i = 0; i < core.listView.RowCount(); ++i) n += core.listView.Row(i).Checked() ? 1 : 0;
  return n;
}

void Synchronise(ViewerCore& core) {
  for (const ItemRef& item : *core.items) {
    if (!item) continue;
    Internal::SetSelectedSilently(*item, false);
    Internal::SetCheckedSilently(*item, false);
  }
  for (size_t i = 0; i < core.listView.RowCount(); ++i) {
    const ListRow& row = core.listView.Row(i);
    if (IsGoUpRow(row) || (!row.Selected() && !row.Checked())) continue;
    if (ItemRef item = ItemOfRow(core, row)) {
      if (row.Selected()) Internal::SetSelectedSilently(*item, true);
      if (row.Checked()) Internal::SetCheckedSilently(*item, true);
    }
  }
}

ItemRef FirstSelected(ViewerCore& core) {
  Synchronise(core);
  core.selection.selected = 0;
  return Advance(core, core.selection.selected, -1, RowSelected);
}

ItemRef NextSelected(ViewerCore& core) {
  return Advance(core, core.selection.selected, core.selection.selected, RowSelected);
}

ItemRef FirstChecked(ViewerCore& core) {
  Synchronise(core);
  core.selection.checked = 0;
  return Advance(core, core.selection.checked, -1, RowChecked);
}

ItemRef NextChecked(ViewerCore& core) {
  return Advance(core, core.selection.checked, core.selection.checked, RowChecked);
}

ItemRef ListItem(ViewerCore& core, int64_t index) {
  if (index < 0 || static_cast<uint64_t>(index) >= core.listView.RowCount()) return nullptr;
  const ListRow& row = core.listView.Row(static_cast<size_t>(index));
  if (IsGoUpRow(row)) return nullptr;
  ItemRef item = ItemOfRow(core, row);
  if (!item) return nullptr;
  Internal::SetSelectedSilently(*item, row.Selected());
  Internal::SetCheckedSilently(*item, row.Checked());
  return Handout(core, item);
}

ItemRef ItemFromName(ViewerCore& core, std::string_view name) {
  for (const ItemRef& item : *core.items)
    if (item && item->Displayname() == name) return Handout(core, item);
  return nullptr;
}

void SelectAll(ViewerCore& core) {
  if (!core.listView.Look().multiSelect) return;
  ListView::Batch batch(core.listView);
  for (size_t i = 0; i < core.listView.RowCount(); ++i) core.listView.Row(i).SetSelected(true);
}

void UnSelectAll(ViewerCore& core) {
  {
    ListView::Batch batch(core.listView);
    for (size_t i = 0; i < core.listView.RowCount(); ++i) core.listView.Row(i).SetSelected(false);
  }
  for (const ItemRef& item : *core.items)
    if (item) Internal::SetSelectedSilently(*item, false);
}

void CheckAll(ViewerCore& core) {
  ListView::Batch batch(core.listView);
  for (size_t i = 0; i < core.listView.RowCount(); ++i) core.listView.Row(i).SetChecked(true);
}

void UnCheckAll(ViewerCore& core) {
  {
    ListView::Batch batch(core.listView);
    for (size_t i = 0; i < core.listView.RowCount(); ++i) core.listView.Row(i).SetStateImage(ListRow::kStateUnchecked);
  }
  for (const ItemRef& item : *core.items)
    if (item) Internal::SetCheckedSilently(*item, false);
}

void StartLabelEdit(ViewerCore& core) {
  if (!core.settings.allowItemRenaming || core.busy) return;
  ItemRef item = FirstSelected(core);
  if (!item) return;
  const auto row = static_cast<size_t>(core.selection.selected);
  UnSelectAll(core);
  core.listView.SetFocus();
  Internal::SetSelectedSilently(*item, true);
  core.listView.RequestLabelEdit(row);
}

}  // namespace nxfv::selection
