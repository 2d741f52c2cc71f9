// The headless list view model that every front end renders.
//
// The list view, not the items, is the authority on rows, selection and
// check marks. Columns have a key, a caption, a width in twips and a display
// order; column 0 is the row's own text and column k > 0 is sub-item k.
// Rows have a key, a text, sub-items, an image index, a tag, a selection and
// a check state.
//
// Key rules (the runtime's list view rules):
//   - row keys are unique (error 35602) and may not be numeric (35603);
//     an empty key is allowed and not indexed;
//   - column keys are unique (35602) and may not be empty (35603);
//   - an unknown column key in a lookup is error 35601.
// Sorting is ascending by the sort column's text, ordinal (byte) order,
// stable. Complexity: key lookups O(1) on average; AddRow amortised O(1);
// RemoveRowsIf O(n) in one pass; Sort O(n log n).
//
// Observers (ListViewObserver) let front ends follow the model instead of
// polling it. What fires when:
//   AddRow, AddRowWithKey      OnRowsInserted(index, 1)
//   RemoveRow, RemoveRowByKey  OnRowsRemoved(index, 1)
//   RemoveRowsIf               one OnRowsRemoved per contiguous run of removed
//                              rows, last run first, each with the indices
//                              the run had before it was removed (so an
//                              observer that applies them in turn to its own
//                              copy stays in step); nothing when none matched
//   ClearRows                  OnRowsRemoved(0, old count) when there were rows
//   Sort                       OnSortChanged, once per call
//   AddColumn, ClearColumns, SetColumnCaption/Width/Order   OnColumnsChanged
//   SetColumnSortIndicator     OnSortChanged
//   ListRow::SetText           OnRowChanged(row, 0)
//   ListRow::SetSubItem(k)     OnRowChanged(row, k)
//   ListRow::SetImage          OnRowImageChanged
//   ListRow::SetTag            OnRowStateChanged
//   ListRow::SetSelected       OnSelectionChanged
//   ListRow::SetChecked        OnCheckChanged
//   ListRow::SetStateImage     OnCheckChanged
//   SetRowKey                  OnRowChanged(row, 0)
//   the look setters           OnAppearanceChanged
//   RequestLabelEdit           OnLabelEditRequested(row)
// Setters notify only when the value actually changes (an unset sub-item
// set to "" is no change). View state (visibility, view style, top row,
// refresh count) is not notified.
//
// Every notification comes after the change is complete, to the observers
// in the order they were added. An observer may add or remove observers
// (itself included) and change the model from inside a notification: a
// removed observer hears nothing more, not even the rest of the current
// notification; an added one hears from the next notification on. An
// exception thrown by an observer is swallowed and the next observer is
// notified: the change has already been made, and no observer's fault may
// reach the code that changed the model (a Batch ends in a destructor).
//
// Batches: while at least one batch is open nothing is notified; when the
// outermost batch closes and anything changed, every observer hears exactly
// one OnReset. Batches nest. Bulk work (a listing, a refill) should batch:
// inside a batch the setters do not even compare old and new values once
// the batch is known to have changed something.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "nxfv/platform/list_view_observer.h"
#include "nxfv/platform/row_key_index.h"
#include "nxfv/platform/shared_text.h"

namespace nxfv {

struct ListColumn {
  std::string key;
  std::string caption;
  int32_t width = 0;  // twips
  int32_t order = 0;  // display position, 0-based
  // Sort indicator shown in the header: 0 none, 1 ascending, 2 descending,
  // with the column's 1-based priority among the sort columns.
  int32_t sortIndicator = 0;
  int32_t sortPriority = 0;
};

// A row's packed texts: a byte buffer that is always on the heap anyway,
// so it is held as pointer, size and capacity (16 bytes, where a
// std::string would take 32 for a small-text buffer it never uses).
class PackedTexts {
 public:
  std::string_view view() const { return {data_.get(), size_}; }
  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const char* data() const { return data_.get(); }
  void reserve(size_t n);
  void append(std::string_view bytes) { append(bytes, {}); }
  // Both texts, growing the buffer at most once.
  void append(std::string_view first, std::string_view second);
  void assign(std::string_view bytes);
  void truncate(size_t size) {
    if (size < size_) size_ = static_cast<uint32_t>(size);
  }

 private:
  std::unique_ptr<char[]> data_;
  uint32_t size_ = 0;
  uint32_t capacity_ = 0;
};

class ListView;

class ListRow {
 public:
  std::string_view Key() const { return key_; }
  // The key as a shared text (an item showing the row can hold the same).
  const SharedText& SharedKey() const { return key_; }
  // The row's own text (column 0). Most rows show their key, so the text is
  // only stored when it differs.
  std::string_view Text() const { return textIsKey_ ? std::string_view(key_) : SubItem(0); }
  void SetText(std::string_view text);
  // Text of sub-item index (column index > 0; 0 gives the row's text); ""
  // when never set.
  std::string_view SubItem(int32_t index) const;
  void SetSubItem(int32_t index, std::string_view text);
  bool HasSubItem(int32_t index) const;
  // All sub-items at once: byColumn[i] = text of sub-item i ("" when unset);
  // byColumn is resized to at least columnCount. One pass over the row.
  void SubItemsInto(std::vector<std::string_view>& byColumn, size_t columnCount) const;
  int32_t Image() const { return image_; }
  void SetImage(int32_t image);
  int64_t Tag() const { return tag_; }
  void SetTag(int64_t tag);
  bool Selected() const { return selected_; }
  void SetSelected(bool s);
  // Check marks are state images: 0 none, 1 unchecked, 2 checked. A row
  // gets state image 1 when it is added while check boxes show; a row
  // without one is neither checked nor counted as unchecked.
  bool Checked() const { return stateImage_ == kStateChecked; }
  // State image 2 (true) or 1 (false; a row without a state image keeps none).
  void SetChecked(bool c);
  int32_t StateImage() const { return stateImage_; }
  // 0..15 (the four state-image bits); others are error 5.
  void SetStateImage(int32_t image);
  static constexpr int32_t kStateUnchecked = 1;
  static constexpr int32_t kStateChecked = 2;
  // 0-based position in the view.
  size_t Index() const { return index_; }
  // Asks the processor to fetch the row's texts ahead of use. Walks over a
  // million rows are bound by memory latency, not by work.
  void PrefetchTexts() const;
  // Makes room for bytes of texts (each text takes 2 more, up to 6 for a
  // text of 255 bytes or more or a column past 254), so that a row filled
  // column by column grows in one step.
  void ReserveTexts(size_t bytes) { packed_.reserve(bytes); }

 private:
  friend class ListView;
  // Stores a text under index (0 = the row's own text when it is not the key).
  void Store(int32_t index, std::string_view text);

  SharedText key_;
  // The view that holds the row, which hears of its changes (null for a row
  // outside any view). Rows are 56 bytes with it, still one 64-byte heap
  // block each.
  ListView* view_ = nullptr;
  // Sub-items packed as [index][length][bytes]... in index order, index and
  // length one byte each when small (list_view.cpp has the layout): a
  // million rows with a handful of texts each stay small. Entry 0 holds the
  // row's text when it differs from the key.
  PackedTexts packed_;
  int64_t tag_ = 0;
  int32_t image_ = 0;
  uint32_t index_ = 0;
  uint16_t lastSubItem_ = 0;  // highest sub-item index set, 0 = none
  bool selected_ = false;
  uint8_t stateImage_ = 0;
  bool textIsKey_ = false;
};

enum ViewStyles : int16_t { FvIcon = 0, FvSmallIcon = 1, FvList = 2, FvReport = 3 };

// How the list view looks and reacts, for front ends to render. Colours are
// OLE colours: 0x80000000 | n is the system colour n (5 window background,
// 8 window text), anything else 0x00BBGGRR. The defaults are a new
// control's.
struct ListViewLook {
  uint32_t backColor = 0x80000005;
  uint32_t foreColor = 0x80000008;
  int16_t borderStyle = 0;  // 0 none, 1 fixed single
  int16_t appearance = 1;   // 0 flat, 1 3-D
  bool hideColumnHeaders = false;
  bool hideSelection = false;   // the selection disappears without focus
  bool hoverSelection = false;  // rows are selected by resting the pointer
  bool movableColumns = true;   // headers can be dragged to reorder
  bool fullRowSelection = true;
  bool gridLines = false;
  bool checkBoxes = false;
  bool multiSelect = true;
  bool enabled = true;
  bool operator==(const ListViewLook&) const = default;
};

class ListView {
 public:
  ListView();
  // Rows point back at their view, so a view stays where it was made.
  ListView(const ListView&) = delete;
  ListView& operator=(const ListView&) = delete;

  // Observers: several, not owned, notified in the order added. Adding one
  // that is already there or null does nothing; removing is safe from
  // inside a notification.
  void AddObserver(ListViewObserver* o);
  void RemoveObserver(ListViewObserver* o);
  // Bulk changes: see the batch rules above. EndBatch without an open batch
  // does nothing.
  void BeginBatch() { ++batchDepth_; }
  void EndBatch();
  class Batch {
   public:
    explicit Batch(ListView& view) : view_(view) { view_.BeginBatch(); }
    ~Batch() { view_.EndBatch(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

   private:
    ListView& view_;
  };

  // Columns.
  int32_t AddColumn(const std::string& key, const std::string& caption, int32_t width);
  void ClearColumns();
  int32_t ColumnCount() const { return static_cast<int32_t>(columns_.size()); }
  const ListColumn& Column(int32_t index) const { return columns_.at(static_cast<size_t>(index)); }
  // Index of the column with key, or -1.
  int32_t FindColumn(std::string_view key) const;
  // Index of the column with key; error 35601 "Element not found" if absent.
  int32_t ColumnIndex(std::string_view key) const;
  // Header changes; an index out of range is error 9.
  void SetColumnCaption(int32_t index, std::string caption);
  void SetColumnWidth(int32_t index, int32_t width);
  void SetColumnOrder(int32_t index, int32_t order);
  void SetColumnSortIndicator(int32_t index, int32_t indicator, int32_t priority);

  // Rows.
  // textBytes: room to make for the row's texts (ListRow::ReserveTexts), so
  // that a row whose texts follow at once is allocated once.
  ListRow& AddRow(std::string_view key, std::string_view text, size_t textBytes = 0);
  // The same, keeping the given key text (shared with whoever else holds it).
  ListRow& AddRowWithKey(SharedText key, std::string_view text, size_t textBytes = 0);
  size_t RowCount() const { return rows_.size(); }
  ListRow& Row(size_t index) { return *rows_.at(index); }
  const ListRow& Row(size_t index) const { return *rows_.at(index); }
  // Fetches the row at index ahead of use (see ListRow::PrefetchTexts);
  // nothing past the end.
  void PrefetchRow(size_t index) const;
  // Both steps for a forward walk that is now at index.
  void PrefetchAhead(size_t index) const;
  ListRow* FindRow(std::string_view key);
  const ListRow* FindRow(std::string_view key) const;
  bool RemoveRow(size_t index);
  bool RemoveRowByKey(std::string_view key);
  // Removes every row for which remove(row) is true, in one pass; the
  // survivors keep their order. Returns the number removed.
  size_t RemoveRowsIf(const std::function<bool(const ListRow&)>& remove);
  void ClearRows();

  // Stable ascending sort by the text of column sortColumn (0 = row text).
  void Sort(int32_t sortColumn);
  // The same result as Sort(sortColumn) when rows [0, firstNew) are still in
  // the order the last Sort by that column left them (a refresh that kept
  // them and appended new ones): the new rows are sorted on their own and
  // merged in, O(n + k log k) instead of O(n log n). Otherwise it is Sort.
  // Content widths are not measured.
  void SortAppended(int32_t sortColumn, size_t firstNew);
  bool Sorted() const { return sorted_; }
  // Widest text (in characters) of each shown column (0 for the hidden
  // ones), taken by the last sort
  // while it read every row anyway, so that a front end can size columns to
  // their contents without another walk over a million rows. Only measured
  // when asked for (MeasureContentOnSort); empty when rows were added or
  // removed since, or texts were changed through the view; a caller that
  // changes row texts directly and then needs the widths measures them
  // itself.
  const std::vector<size_t>& ContentWidths() const { return contentWidths_; }
  void MeasureContentOnSort(bool measure) { measureContent_ = measure; }
  int32_t SortKey() const { return sortKey_; }

  // View state.
  bool Visible() const { return visible_; }
  void SetVisible(bool v) { visible_ = v; }
  ViewStyles ViewStyle() const { return viewStyle_; }
  void SetViewStyle(ViewStyles s) { viewStyle_ = s; }
  // The row scrolled into view last (EnsureVisible), or -1.
  int64_t TopRow() const { return topRow_; }
  void EnsureVisible(size_t index) { topRow_ = static_cast<int64_t>(index); }

  // --- look, focus, label editing (selection unit) ---
  const ListViewLook& Look() const { return look_; }
  // Replaces the look; OnAppearanceChanged when anything differs. Turning
  // check boxes on gives every row without a state image state image 1.
  void SetLook(const ListViewLook& look);
  // Changes a row's key (its text stays). Numeric keys are 35603, a key
  // another row has 35602, an index out of range 9.
  void SetRowKey(size_t index, std::string_view key);
  // Focus given by the control (a counter front ends can follow).
  void SetFocus() { ++focusRequests_; }
  int64_t FocusRequests() const { return focusRequests_; }
  // Asks the front end to start editing the row's label in place; the row
  // being edited (or -1) until EndLabelEditRequest.
  void RequestLabelEdit(size_t index);
  int64_t LabelEditRow() const { return labelEditRow_; }
  void EndLabelEditRequest() { labelEditRow_ = -1; }
  // --- end look ---
  // Painting refreshes asked for; a front end repaints on each.
  int64_t Refreshes() const { return refreshes_; }
  void Refresh() { ++refreshes_; }

 private:
  friend class ListRow;
  // Tells every observer through call(observer), or marks the open batch.
  template <class Call>
  void Notify(const Call& call);
  // Whether a row setter should compare old and new values: someone hears
  // of it, and no open batch already knows it changed.
  bool WantsRowChanges() const { return !observers_.empty() && !(batchDepth_ > 0 && batchChanged_); }
  ListColumn& ColumnAt(int32_t index);
  void Renumber(size_t from);

  std::vector<ListColumn> columns_;
  std::unordered_map<std::string, int32_t> columnIndex_;
  std::vector<std::unique_ptr<ListRow>> rows_;
  void RebuildRowIndex();
  RowKeyIndex rowIndex_;  // views into the rows' keys
  bool sorted_ = false;
  std::vector<size_t> contentWidths_;
  bool measureContent_ = false;
  int32_t sortKey_ = 0;
  bool visible_ = true;
  ViewStyles viewStyle_ = FvReport;
  int64_t topRow_ = -1;
  int64_t refreshes_ = 0;
  ListViewLook look_;
  int64_t focusRequests_ = 0;
  int64_t labelEditRow_ = -1;
  std::vector<ListViewObserver*> observers_;  // null where one left mid-notification
  int32_t notifying_ = 0;                     // nested notifications under way
  int32_t batchDepth_ = 0;
  bool batchChanged_ = false;
};

}  // namespace nxfv
