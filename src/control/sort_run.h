// The control's sort state and the sort run that applies it to the view.
//
// The state is an ordered list of sort columns (at most ten), each with its
// direction. A header click makes its column the only sort column, or
// reverses it when it already is; with Ctrl held (and multi-column sorting
// allowed) the column is appended, or reversed if present. The default
// state, which a reset restores, is the name column ascending.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "nxfv/control/file_viewer_events.h"

namespace nxfv {

class ListView;
class Platform;

class SortRun {
 public:
  static constexpr size_t kMaxColumns = 10;

  const std::vector<SortState>& State() const { return state_; }
  // Keeps the first kMaxColumns entries.
  void SetState(const std::vector<SortState>& columns);
  void ApplyClick(const std::string& columnKey, bool ctrlHeld, bool allowMultiColumnSort);

  // Writes every row's sort key into the "sort" column, sorts the view and
  // updates the header indicators. With resetSort (or no state yet) the
  // default state is restored first.
  void Run(ListView& view, Platform& platform, bool resetSort);
  // For a refresh in place that kept the sort state: the first keyedRows
  // rows are the kept ones, still in order with their keys, so only the
  // rows after them get keys, and nothing is sorted when there are none.
  void RunAfterRefresh(ListView& view, Platform& platform, size_t keyedRows);
  // Bytes a row's sort key takes (with its 4-byte record header), so that
  // listings reserve the room when they fill a row.
  size_t KeyBytes() const;

 private:
  void UpdateIndicators(ListView& view) const;
  // Writes the keys of the rows from firstRow on, sorts, updates the indicators.
  void RunFrom(ListView& view, Platform& platform, size_t firstRow);

  std::vector<SortState> state_;
};

}  // namespace nxfv
