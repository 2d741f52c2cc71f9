// Sorting the view: one text key per row in the hidden "sort" column.
#include "columns/date_text.h"
#include "columns/sort_keys.h"
#include "control/file_viewer.h"
#include "platform/error_state.h"
#include "shell/show_error.h"

namespace nxfv {

namespace {
constexpr int32_t kHourglass = 11;
constexpr int16_t kMaxSortColumns = 10;
}  // namespace

std::vector<SortState> FileViewer::SortColumns() const {
  std::vector<SortState> out;
  for (int16_t i = 1; i <= sortColumnCount_; ++i) out.push_back({sortColumns_[i], sortDescending_[i]});
  return out;
}

void FileViewer::SetSortColumns(const std::vector<SortState>& columns) {
  try {
    ApplySortColumns(columns);
  } catch (const std::exception& e) {
    RecordException(e);
    ShowError(*platform_, ".SortView");
  }
}

void FileViewer::ApplySortColumns(const std::vector<SortState>& columns) {
  sortColumnCount_ = 0;
  for (const SortState& s : columns) {
    if (sortColumnCount_ == kMaxSortColumns) break;
    ++sortColumnCount_;
    sortColumns_[sortColumnCount_] = s.key;
    sortDescending_[sortColumnCount_] = s.descending;
  }
  SortView(false);
}

void FileViewer::ClickColumnHeader(int32_t columnIndex, bool ctrlHeld) {
  try {
    ApplyColumnClick(columnIndex, ctrlHeld);
  } catch (const std::exception& e) {
    RecordException(e);
    ShowError(*platform_, ".ColumnClick");
  }
}

void FileViewer::ApplyColumnClick(int32_t columnIndex, bool ctrlHeld) {
  if (columnIndex < 0 || columnIndex >= listView_.ColumnCount()) return;
  if (events_) events_->ColumnClick(listView_.Column(columnIndex));
  const std::string key = listView_.Column(columnIndex).key;
  if (key == "sort") return;
  int16_t present = 0;
  for (int16_t i = 1; i <= sortColumnCount_; ++i)
    if (sortColumns_[i] == key) present = i;
  if (ctrlHeld && allowMultiColumnSort_) {
    if (present) {
      sortDescending_[present] = !sortDescending_[present];
    } else if (sortColumnCount_ < kMaxSortColumns) {
      ++sortColumnCount_;
      sortColumns_[sortColumnCount_] = key;
      sortDescending_[sortColumnCount_] = false;
    }
  } else if (present && sortColumnCount_ == 1) {
    sortDescending_[1] = !sortDescending_[1];
  } else {
    sortColumnCount_ = 1;
    sortColumns_[1] = key;
    sortDescending_[1] = false;
  }
  SortView(false);
}

size_t FileViewer::SortKeyBytes() const {
  size_t bytes = 4;
  const int16_t count = sortColumnCount_ == 0 ? 1 : sortColumnCount_;
  for (int16_t i = 1; i <= count; ++i) {
    const std::string& k = sortColumnCount_ == 0 ? std::string("nam") : sortColumns_[i];
    const bool date = k == "mod" || k == "tim" || k == "cre" || k == "acc";
    const bool size = k == "siz" || k == "cmp";
    bytes += 1 + (date ? 11 : size ? 16 : k == "ext" ? 5 : 26);
  }
  return bytes;
}

void FileViewer::UpdateSortIndicators() {
  for (int32_t c = 0; c < listView_.ColumnCount(); ++c) {
    ListColumn& col = listView_.Column(c);
    col.sortIndicator = 0;
    col.sortPriority = 0;
    for (int16_t i = 1; i <= sortColumnCount_; ++i) {
      if (sortColumns_[i] == col.key && col.sortIndicator == 0) {
        col.sortIndicator = sortDescending_[i] ? 2 : 1;
        col.sortPriority = i;
      }
    }
  }
}

void FileViewer::SortView(bool ResetSort) {
  if (ResetSort || sortColumnCount_ == 0) {
    sortColumnCount_ = 1;
    sortColumns_[1] = "nam";
    sortDescending_[1] = false;
  }
  const int32_t sortColumn = listView_.FindColumn("sort");
  if (sortColumn < 0) return;
  Platform& p = *platform_;
  const int32_t oldPointer = p.Ui().MousePointer();
  p.Ui().SetMousePointer(kHourglass);

  std::vector<SortColumn> columns;
  for (int16_t i = 1; i <= sortColumnCount_; ++i) {
    const std::string& key = sortColumns_[i];
    columns.push_back({key, key == "nam" ? 0 : listView_.FindColumn(key), sortDescending_[i]});
  }
  const LocaleFormats formats = p.Locale().Formats();
  SortKeyContext ctx;
  ctx.dateSeconds = [&formats](std::string_view text) { return DateTextSecondsSince1980(formats, text); };
  LocaleService& locale = p.Locale();
  ctx.upper = [&locale](std::string_view text) { return locale.CharUpper(std::string(text)); };
  ctx.thousandsSeparator = formats.thousandsSeparator;
  const int32_t typeColumn = listView_.FindColumn("typ");
  for (size_t r = 0; r < listView_.RowCount(); ++r) {
    listView_.PrefetchAhead(r);
    ListRow& row = listView_.Row(r);
    const std::string_view type = typeColumn > 0 ? row.SubItem(typeColumn) : std::string_view();
    row.SetSubItem(sortColumn, BuildRowSortKey(row, type, columns, ctx));
  }
  listView_.Sort(sortColumn);
  UpdateSortIndicators();
  p.Ui().SetMousePointer(oldPointer);
}

}  // namespace nxfv
