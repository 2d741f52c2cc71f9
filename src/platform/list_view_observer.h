// What a front end hears from the list view model (see ListView for when
// each notification fires). Every notification comes after the change, so an
// observer always reads a consistent model; row indices are those of the
// model at the time of the call.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nxfv {

// Every member defaults to doing nothing, so a front end overrides only what
// it renders. Observers must not throw: the view swallows what one throws
// and carries on with the next (see ListView).
class ListViewObserver {
 public:
  virtual ~ListViewObserver() = default;
  // Everything may have changed (the end of a batch).
  virtual void OnReset() {}
  // Rows [first, first+count) are new.
  virtual void OnRowsInserted(size_t /*first*/, size_t /*count*/) {}
  // The rows that were at [first, first+count) are gone.
  virtual void OnRowsRemoved(size_t /*first*/, size_t /*count*/) {}
  // The text (column 0) or sub-item `column` of a row.
  virtual void OnRowChanged(size_t /*row*/, int32_t /*column*/) {}
  virtual void OnRowImageChanged(size_t /*row*/) {}
  // The tag or other row state (not selection or check mark).
  virtual void OnRowStateChanged(size_t /*row*/) {}
  virtual void OnSelectionChanged(size_t /*row*/) {}
  virtual void OnCheckChanged(size_t /*row*/) {}
  // Columns added or cleared, or a caption, width or order changed.
  virtual void OnColumnsChanged() {}
  // Rows reordered by Sort, or sort indicators changed.
  virtual void OnSortChanged() {}
  // The look (colours, border, styles, check boxes, multiple selection).
  virtual void OnAppearanceChanged() {}
  // The control asks for in-place editing of a row's label; the front end
  // hands the edited text back through FileViewer::EndLabelEdit.
  virtual void OnLabelEditRequested(size_t /*row*/) {}
};

}  // namespace nxfv
