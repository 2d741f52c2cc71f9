#include "nxfv/control/sort_run.h"

#include <algorithm>

#include "nxfv/columns/column_set.h"
#include "nxfv/columns/date_text.h"
#include "nxfv/columns/sort_keys.h"
#include "nxfv/control/ui_pointer.h"
#include "nxfv/platform/list_view.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

namespace {
const SortState kDefaultSort{"nam", false};
}  // namespace

void SortRun::SetState(const std::vector<SortState>& columns) {
  state_.assign(columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(std::min(columns.size(), kMaxColumns)));
}

void SortRun::ApplyClick(const std::string& key, bool ctrlHeld, bool allowMultiColumnSort) {
  // The last entry with the key, as the header shows only one indicator.
  auto present = std::find_if(state_.rbegin(), state_.rend(), [&](const SortState& s) { return s.key == key; });
  if (ctrlHeld && allowMultiColumnSort) {
    if (present != state_.rend()) present->descending = !present->descending;
    else if (state_.size() < kMaxColumns) state_.push_back({key, false});
  } else if (present != state_.rend() && state_.size() == 1) {
    state_[0].descending = !state_[0].descending;
  } else {
    state_.assign(1, {key, false});
  }
}

size_t SortRun::KeyBytes() const {
  size_t bytes = 2;  // the sort column's entry header
  if (state_.empty()) return bytes + SortPartBytes(kDefaultSort.key);
  for (const SortState& s : state_) bytes += SortPartBytes(s.key);
  return bytes;
}

void SortRun::UpdateIndicators(ListView& view) const {
  for (int32_t c = 0; c < view.ColumnCount(); ++c) {
    int32_t indicator = 0, priority = 0;
    for (size_t i = 0; i < state_.size() && indicator == 0; ++i) {
      if (state_[i].key != view.Column(c).key) continue;
      indicator = state_[i].descending ? 2 : 1;
      priority = static_cast<int32_t>(i + 1);
    }
    view.SetColumnSortIndicator(c, indicator, priority);
  }
}

void SortRun::Run(ListView& view, Platform& platform, bool resetSort) {
  if (resetSort || state_.empty()) state_.assign(1, kDefaultSort);
  RunFrom(view, platform, 0);
}

void SortRun::RunAfterRefresh(ListView& view, Platform& platform, size_t keyedRows) {
  if (state_.empty()) {
    Run(view, platform, false);
    return;
  }
  if (keyedRows >= view.RowCount()) {
    UpdateIndicators(view);
    return;
  }
  RunFrom(view, platform, keyedRows);
}

void SortRun::RunFrom(ListView& view, Platform& platform, size_t firstRow) {
  const int32_t sortColumn = view.FindColumn(kSortColumnKey);
  if (sortColumn < 0) return;
  const ScopedPointer hourglass(platform.Ui(), kHourglassPointer);

  std::vector<SortColumn> columns;
  for (const SortState& s : state_)
    columns.push_back({s.key, s.key == "nam" ? 0 : view.FindColumn(s.key), s.descending});
  const LocaleFormats formats = platform.Locale().Formats();
  SortKeyContext ctx;
  ctx.dateSeconds = [&formats](std::string_view text) { return DateTextSecondsSince1980(formats, text); };
  LocaleService& locale = platform.Locale();
  ctx.upper = [&locale](std::string_view text) { return locale.CharUpper(std::string(text)); };
  ctx.thousandsSeparator = formats.thousandsSeparator;
  const int32_t typeColumn = view.FindColumn("typ");
  std::string key;  // one buffer for every row's key
  for (size_t r = firstRow; r < view.RowCount(); ++r) {
    view.PrefetchAhead(r);
    ListRow& row = view.Row(r);
    const std::string_view type = typeColumn > 0 ? row.SubItem(typeColumn) : std::string_view();
    BuildRowSortKeyInto(key, row, type, columns, ctx);
    row.SetSubItem(sortColumn, key);
  }
  // Rows before firstRow kept their keys and their order: only the new ones
  // need placing.
  if (firstRow > 0) view.SortAppended(sortColumn, firstRow);
  else view.Sort(sortColumn);
  UpdateIndicators(view);
}

}  // namespace nxfv
