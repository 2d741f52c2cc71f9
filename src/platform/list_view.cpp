#include "nxfv/platform/list_view.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <type_traits>

#include "nxfv/platform/error_state.h"
#include "nxfv/platform/numeric_text.h"
#include "nxfv/platform/utf8.h"

namespace nxfv {

namespace {
uint16_t ReadU16(std::string_view s, size_t at) {
  return static_cast<uint16_t>(static_cast<unsigned char>(s[at]) | (static_cast<unsigned char>(s[at + 1]) << 8));
}

// A row's texts are packed as [index][length][bytes] in index order. Index
// and length take one byte each below 255; 255 means two more bytes follow
// (little-endian). Rows hold a handful of short texts, so a million rows
// spend two bytes a text on bookkeeping instead of four.
constexpr unsigned char kWideField = 0xFF;

struct PackedEntry {
  uint16_t index = 0;
  uint16_t size = 0;
  size_t text = 0;  // where the bytes start
  size_t next = 0;  // where the next entry starts
};

// Reads the entry at `at`; false at the end of the texts.
bool ReadEntry(std::string_view s, size_t at, PackedEntry& e) {
  auto field = [&s](size_t& pos, uint16_t& v) {
    if (pos >= s.size()) return false;
    const auto b = static_cast<unsigned char>(s[pos]);
    if (b != kWideField) {
      v = b;
      pos += 1;
      return true;
    }
    if (s.size() - pos < 3) return false;
    v = ReadU16(s, pos + 1);
    pos += 3;
    return true;
  };
  size_t pos = at;
  if (!field(pos, e.index) || !field(pos, e.size) || e.size > s.size() - pos) return false;
  e.text = pos;
  e.next = pos + e.size;
  return true;
}

// The header of one entry into out (at most 6 bytes); returns its length.
size_t EntryHeader(uint16_t index, uint16_t size, char* out) {
  size_t n = 0;
  for (const uint16_t v : {index, size}) {
    if (v < kWideField) {
      out[n++] = static_cast<char>(v);
    } else {
      out[n++] = static_cast<char>(kWideField);
      out[n++] = static_cast<char>(v & 0xFF);
      out[n++] = static_cast<char>(v >> 8);
    }
  }
  return n;
}

template <class Out>
void AppendEntry(Out& out, int32_t index, std::string_view text) {
  char header[6];
  const size_t n = EntryHeader(static_cast<uint16_t>(index), static_cast<uint16_t>(text.size()), header);
  if constexpr (std::is_same_v<Out, PackedTexts>) {
    out.append(std::string_view(header, n), text);
  } else {
    out.append(header, n);
    out.append(text);
  }
}
// Characters of a text; ASCII (most texts) is counted by its length alone.
size_t TextWidth(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) >= 0x80) return CodePointCount(text);
  return text.size();
}

// Asks the processor to fetch an address ahead of use; a hint only, so a
// compiler without the builtin simply does nothing.
inline void PrefetchAddress(const void* p) {
#if defined(__GNUC__) || defined(__clang__)
  __builtin_prefetch(p);
#else
  (void)p;
#endif
}
}  // namespace

template <class Call>
void ListView::Notify(const Call& call) {
  if (batchDepth_ > 0) {
    batchChanged_ = true;
    return;
  }
  if (observers_.empty()) return;
  ++notifying_;
  // Observers added during the call hear from the next notification on;
  // removed ones are null until the outermost notification compacts.
  const size_t count = observers_.size();
  for (size_t i = 0; i < count; ++i) {
    ListViewObserver* o = observers_[i];
    if (!o) continue;
    try {
      call(*o);
    } catch (...) {
      // The model is already consistent; an observer's fault must not reach
      // the code that changed it, nor keep the other observers uninformed.
    }
  }
  if (--notifying_ == 0) std::erase(observers_, nullptr);
}

void ListView::AddObserver(ListViewObserver* o) {
  if (o && std::find(observers_.begin(), observers_.end(), o) == observers_.end()) observers_.push_back(o);
}

void ListView::RemoveObserver(ListViewObserver* o) {
  const auto it = std::find(observers_.begin(), observers_.end(), o);
  if (it == observers_.end() || !o) return;
  if (notifying_ > 0) {
    *it = nullptr;  // the loop under way still indexes this vector
  } else {
    observers_.erase(it);
  }
}

void ListView::EndBatch() {
  if (batchDepth_ == 0 || --batchDepth_ > 0 || !batchChanged_) return;
  batchChanged_ = false;
  Notify([](ListViewObserver& o) { o.OnReset(); });
}

void ListRow::PrefetchTexts() const { PrefetchAddress(packed_.data()); }

void ListView::PrefetchRow(size_t index) const {
  if (index < rows_.size()) PrefetchAddress(rows_[index].get());
}

void ListView::PrefetchAhead(size_t index) const {
  PrefetchRow(index + 16);
  if (index + 8 < rows_.size()) rows_[index + 8]->PrefetchTexts();
}

void PackedTexts::reserve(size_t n) {
  if (n <= capacity_) return;
  if (n > UINT32_MAX) RaiseError(kErrOutOfMemory);
  auto bigger = std::make_unique_for_overwrite<char[]>(n);
  if (size_) std::memcpy(bigger.get(), data_.get(), size_);
  data_ = std::move(bigger);
  capacity_ = static_cast<uint32_t>(n);
}

void PackedTexts::append(std::string_view first, std::string_view second) {
  const size_t bytes = first.size() + second.size();
  // Rows get their texts in a few appends into a buffer mostly reserved at
  // its final size; an append past it (a sort key with accented letters)
  // grows by an eighth, not by double, as a million rows would carry the
  // slack to the end.
  if (bytes > capacity_ - size_) reserve(std::max<size_t>(size_ + bytes, size_t{capacity_} + capacity_ / 8));
  if (!first.empty()) std::memcpy(data_.get() + size_, first.data(), first.size());
  if (!second.empty()) std::memcpy(data_.get() + size_ + first.size(), second.data(), second.size());
  size_ += static_cast<uint32_t>(bytes);
}

void PackedTexts::assign(std::string_view bytes) {
  data_.reset();
  size_ = capacity_ = 0;
  reserve(bytes.size());
  append(bytes);
}

std::string_view ListRow::SubItem(int32_t index) const {
  const std::string_view packed = packed_.view();
  PackedEntry e;
  for (size_t at = 0; ReadEntry(packed, at, e); at = e.next) {
    if (e.index == index) return packed.substr(e.text, e.size);
    if (e.index > index) break;
  }
  return {};
}

void ListRow::SubItemsInto(std::vector<std::string_view>& byColumn, size_t columnCount) const {
  byColumn.assign(std::max<size_t>(columnCount, lastSubItem_ + 1u), std::string_view());
  const std::string_view packed = packed_.view();
  PackedEntry e;
  for (size_t at = 0; ReadEntry(packed, at, e); at = e.next) byColumn[e.index] = packed.substr(e.text, e.size);
}

bool ListRow::HasSubItem(int32_t index) const {
  const std::string_view packed = packed_.view();
  PackedEntry e;
  for (size_t at = 0; ReadEntry(packed, at, e); at = e.next) {
    if (e.index == index) return true;
    if (e.index > index) break;
  }
  return false;
}

void ListRow::SetText(std::string_view text) {
  if (text.size() > 0xFFFF) text = text.substr(0, 0xFFFF);
  const bool changed = view_ && view_->WantsRowChanges() && Text() != text;
  textIsKey_ = text == key_;
  if (!textIsKey_ || HasSubItem(0)) Store(0, textIsKey_ ? std::string_view() : text);
  if (changed) view_->Notify([row = Index()](ListViewObserver& o) { o.OnRowChanged(row, 0); });
}

void ListRow::SetSubItem(int32_t index, std::string_view text) {
  if (index <= 0 || index > 0xFFFF) RaiseError(kErrInvalidCall);
  if (text.size() > 0xFFFF) text = text.substr(0, 0xFFFF);
  const bool changed = view_ && view_->WantsRowChanges() && SubItem(index) != text;
  Store(index, text);
  if (changed) view_->Notify([row = Index(), index](ListViewObserver& o) { o.OnRowChanged(row, index); });
}

void ListRow::SetImage(int32_t image) {
  if (image_ == image) return;
  image_ = image;
  if (view_) view_->Notify([row = Index()](ListViewObserver& o) { o.OnRowImageChanged(row); });
}

void ListRow::SetTag(int64_t tag) {
  if (tag_ == tag) return;
  tag_ = tag;
  if (view_) view_->Notify([row = Index()](ListViewObserver& o) { o.OnRowStateChanged(row); });
}

void ListRow::SetSelected(bool s) {
  if (selected_ == s) return;
  selected_ = s;
  if (view_) view_->Notify([row = Index()](ListViewObserver& o) { o.OnSelectionChanged(row); });
}

void ListRow::SetChecked(bool c) {
  // Unchecking a row that shows no check box leaves it without one.
  if (!c && stateImage_ == 0) return;
  SetStateImage(c ? kStateChecked : kStateUnchecked);
}

void ListRow::SetStateImage(int32_t image) {
  if (image < 0 || image > 15) RaiseError(kErrInvalidCall);
  if (stateImage_ == image) return;
  stateImage_ = static_cast<uint8_t>(image);
  if (view_) view_->Notify([row = Index()](ListViewObserver& o) { o.OnCheckChanged(row); });
}

void ListRow::Store(int32_t index, std::string_view text) {
  if (text.size() > 0xFFFF) text = text.substr(0, 0xFFFF);
  // Listings fill the columns mostly left to right: appending past the last
  // sub-item needs no rebuild.
  if (index > lastSubItem_ || (index == 0 && packed_.empty())) {
    AppendEntry(packed_, index, text);
    lastSubItem_ = static_cast<uint16_t>(index);
    return;
  }
  const std::string_view packed = packed_.view();
  PackedEntry e;
  if (index == lastSubItem_ && index > 0) {
    // Replacing the last text (a new sort key) needs no rebuild: cut it off
    // and append the new one in the same buffer.
    size_t last = 0;
    for (size_t at = 0; ReadEntry(packed, at, e); at = e.next) last = at;
    packed_.truncate(last);
    AppendEntry(packed_, index, text);
    return;
  }
  std::string out;
  out.reserve(packed.size() + text.size() + 6);
  bool written = false;
  for (size_t at = 0; ReadEntry(packed, at, e); at = e.next) {
    if (!written && e.index >= index) {
      AppendEntry(out, index, text);
      written = true;
    }
    if (e.index != index) out.append(packed.substr(at, e.next - at));
  }
  if (!written) AppendEntry(out, index, text);
  packed_.assign(out);
}

ListView::ListView() = default;

int32_t ListView::AddColumn(const std::string& key, const std::string& caption, int32_t width) {
  if (key.empty()) RaiseError(kErrInvalidKey);
  if (columnIndex_.count(key)) RaiseError(kErrKeyNotUnique);
  ListColumn c;
  c.key = key;
  c.caption = caption;
  c.width = width;
  c.order = static_cast<int32_t>(columns_.size());
  columns_.push_back(std::move(c));
  const auto index = static_cast<int32_t>(columns_.size() - 1);
  columnIndex_.emplace(key, index);
  Notify([](ListViewObserver& o) { o.OnColumnsChanged(); });
  return index;
}

void ListView::ClearColumns() {
  if (columns_.empty()) return;
  columns_.clear();
  columnIndex_.clear();
  Notify([](ListViewObserver& o) { o.OnColumnsChanged(); });
}

ListColumn& ListView::ColumnAt(int32_t index) {
  if (index < 0 || static_cast<size_t>(index) >= columns_.size()) RaiseError(kErrSubscript);
  return columns_[static_cast<size_t>(index)];
}

void ListView::SetColumnCaption(int32_t index, std::string caption) {
  ListColumn& c = ColumnAt(index);
  if (c.caption == caption) return;
  c.caption = std::move(caption);
  Notify([](ListViewObserver& o) { o.OnColumnsChanged(); });
}

void ListView::SetColumnWidth(int32_t index, int32_t width) {
  ListColumn& c = ColumnAt(index);
  if (c.width == width) return;
  c.width = width;
  Notify([](ListViewObserver& o) { o.OnColumnsChanged(); });
}

void ListView::SetColumnOrder(int32_t index, int32_t order) {
  ListColumn& c = ColumnAt(index);
  if (c.order == order) return;
  c.order = order;
  Notify([](ListViewObserver& o) { o.OnColumnsChanged(); });
}

void ListView::SetColumnSortIndicator(int32_t index, int32_t indicator, int32_t priority) {
  ListColumn& c = ColumnAt(index);
  if (c.sortIndicator == indicator && c.sortPriority == priority) return;
  c.sortIndicator = indicator;
  c.sortPriority = priority;
  Notify([](ListViewObserver& o) { o.OnSortChanged(); });
}

int32_t ListView::FindColumn(std::string_view key) const {
  auto it = columnIndex_.find(std::string(key));
  return it == columnIndex_.end() ? -1 : it->second;
}

int32_t ListView::ColumnIndex(std::string_view key) const {
  const int32_t i = FindColumn(key);
  if (i < 0) RaiseError(kErrElementNotFound);
  return i;
}

ListRow& ListView::AddRow(std::string_view key, std::string_view text, size_t textBytes) {
  return AddRowWithKey(SharedText(key), text, textBytes);
}

ListRow& ListView::AddRowWithKey(SharedText key, std::string_view text, size_t textBytes) {
  contentWidths_.clear();
  if (!key.empty() && IsNumericText(key)) RaiseError(kErrInvalidKey);
  auto row = std::make_unique<ListRow>();
  row->key_ = std::move(key);
  if (textBytes) row->ReserveTexts(textBytes);
  row->SetText(text);
  row->index_ = static_cast<uint32_t>(rows_.size());
  ListRow* raw = row.get();
  rows_.push_back(std::move(row));
  if (!raw->key_.empty() && rowIndex_.Insert(rows_.size() - 1, rows_) >= 0) {
    rows_.pop_back();
    RaiseError(kErrKeyNotUnique);
  }
  if (look_.checkBoxes) raw->stateImage_ = ListRow::kStateUnchecked;
  raw->view_ = this;  // its own text above was no change anyone could see
  Notify([at = raw->Index()](ListViewObserver& o) { o.OnRowsInserted(at, 1); });
  return *raw;
}

ListRow* ListView::FindRow(std::string_view key) {
  const int64_t at = key.empty() ? -1 : rowIndex_.Find(key, rows_);
  return at < 0 ? nullptr : rows_[static_cast<size_t>(at)].get();
}

const ListRow* ListView::FindRow(std::string_view key) const {
  const int64_t at = key.empty() ? -1 : rowIndex_.Find(key, rows_);
  return at < 0 ? nullptr : rows_[static_cast<size_t>(at)].get();
}

void ListView::RebuildRowIndex() { rowIndex_.MarkStale(); }

void ListView::SetRowKey(size_t index, std::string_view key) {
  if (index >= rows_.size()) RaiseError(kErrSubscript);
  if (!key.empty() && IsNumericText(key)) RaiseError(kErrInvalidKey);
  ListRow& row = *rows_[index];
  const ListRow* holder = FindRow(key);
  if (holder && holder != &row) RaiseError(kErrKeyNotUnique);
  const std::string text(row.Text());
  row.key_ = SharedText(key);
  row.textIsKey_ = row.key_ == std::string_view(text);
  if (!row.textIsKey_ || row.HasSubItem(0)) row.Store(0, row.textIsKey_ ? std::string_view() : std::string_view(text));
  RebuildRowIndex();
  Notify([index](ListViewObserver& o) { o.OnRowChanged(index, 0); });
}

void ListView::SetLook(const ListViewLook& look) {
  if (look_ == look) return;
  const bool checkBoxesOn = look.checkBoxes && !look_.checkBoxes;
  look_ = look;
  if (checkBoxesOn) {
    Batch batch(*this);
    for (auto& row : rows_)
      if (row->stateImage_ == 0) row->SetStateImage(ListRow::kStateUnchecked);
  }
  Notify([](ListViewObserver& o) { o.OnAppearanceChanged(); });
}

void ListView::RequestLabelEdit(size_t index) {
  if (index >= rows_.size()) return;
  labelEditRow_ = static_cast<int64_t>(index);
  Notify([index](ListViewObserver& o) { o.OnLabelEditRequested(index); });
}

void ListView::Renumber(size_t from) {
  for (size_t i = from; i < rows_.size(); ++i) rows_[i]->index_ = static_cast<uint32_t>(i);
}

bool ListView::RemoveRow(size_t index) {
  contentWidths_.clear();
  if (index >= rows_.size()) return false;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(index));
  Renumber(index);
  RebuildRowIndex();
  Notify([index](ListViewObserver& o) { o.OnRowsRemoved(index, 1); });
  return true;
}

bool ListView::RemoveRowByKey(std::string_view key) {
  ListRow* row = FindRow(key);
  return row && RemoveRow(row->index_);
}

size_t ListView::RemoveRowsIf(const std::function<bool(const ListRow&)>& remove) {
  contentWidths_.clear();
  // Runs of removed rows (first, count), kept only when someone will hear
  // of them one by one.
  struct Run {
    size_t first, count;
  };
  std::vector<Run> runs;
  const bool tellRuns = batchDepth_ == 0 && !observers_.empty();
  size_t out = 0;
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (remove(*rows_[i])) {
      rows_[i].reset();
      if (tellRuns) {
        if (!runs.empty() && runs.back().first + runs.back().count == i) {
          ++runs.back().count;
        } else {
          runs.push_back({i, 1});
        }
      }
    } else {
      if (out != i) rows_[out] = std::move(rows_[i]);
      rows_[out]->index_ = static_cast<uint32_t>(out);
      ++out;
    }
  }
  const size_t removed = rows_.size() - out;
  rows_.resize(out);
  if (removed) RebuildRowIndex();
  if (removed && batchDepth_ > 0) batchChanged_ = true;
  // Last run first: the earlier runs' indices are still right after it.
  for (auto run = runs.rbegin(); run != runs.rend(); ++run)
    Notify([&run](ListViewObserver& o) { o.OnRowsRemoved(run->first, run->count); });
  return removed;
}

void ListView::ClearRows() {
  contentWidths_.clear();
  rowIndex_.Clear();
  const size_t count = rows_.size();
  rows_.clear();
  topRow_ = -1;
  if (count) Notify([count](ListViewObserver& o) { o.OnRowsRemoved(0, count); });
}

void ListView::SortAppended(int32_t sortColumn, size_t firstNew) {
  if (!sorted_ || sortKey_ != sortColumn || firstNew == 0 || firstNew > rows_.size()) return Sort(sortColumn);
  auto text = [sortColumn](const std::unique_ptr<ListRow>& r) {
    return sortColumn == 0 ? r->Text() : r->SubItem(sortColumn);
  };
  // Both steps are stable, so equal texts keep their order, kept rows first,
  // exactly as a full sort of the same rows would leave them.
  auto less = [&](const std::unique_ptr<ListRow>& a, const std::unique_ptr<ListRow>& b) { return text(a) < text(b); };
  const auto middle = rows_.begin() + static_cast<std::ptrdiff_t>(firstNew);
  std::stable_sort(middle, rows_.end(), less);
  std::inplace_merge(rows_.begin(), middle, rows_.end(), less);
  contentWidths_.clear();
  Renumber(0);
  RebuildRowIndex();
  Notify([](ListViewObserver& o) { o.OnSortChanged(); });
}

void ListView::Sort(int32_t sortColumn) {
  sorted_ = true;
  sortKey_ = sortColumn;
  // Every row moves, so the key index is rebuilt on its next use anyway;
  // dropping it now keeps it from adding to the sort buffer's peak.
  rowIndex_.Clear();
  // Each row's text is looked up once, not once per comparison, and its
  // first sixteen bytes ride along as two big-endian numbers, so most
  // comparisons never leave the sort buffer. The buffer is the listing's
  // peak of memory (every row exists by then), so its entries are packed
  // to 20 bytes.
#pragma pack(push, 4)
  struct Keyed {
    uint64_t head0, head1;
    uint32_t row;  // the row's position before the sort
  };
#pragma pack(pop)
  static_assert(sizeof(Keyed) == 20);
  auto bigEndian = [](std::string_view t, size_t from) {
    uint64_t v = 0;
    for (size_t i = 0; i < 8; ++i) v = (v << 8) | (from + i < t.size() ? static_cast<unsigned char>(t[from + i]) : 0u);
    return v;
  };
  auto text = [&](uint32_t row) -> std::string_view {
    return sortColumn == 0 ? rows_[row]->Text() : rows_[row]->SubItem(sortColumn);
  };
  std::vector<Keyed> keyed;
  keyed.reserve(rows_.size());
  std::vector<size_t> widths(static_cast<size_t>(ColumnCount()), 0);
  std::vector<int32_t> shown;
  for (int32_t c = 1; c < ColumnCount(); ++c)
    if (columns_[static_cast<size_t>(c)].width > 0) shown.push_back(c);
  for (size_t i = 0; i < rows_.size(); ++i) {
    PrefetchAhead(i);
    if (measureContent_) {
      // Only the shown columns are measured; their texts come first in most
      // rows, so each lookup stops early.
      const ListRow& row = *rows_[i];
      if (!widths.empty()) widths[0] = std::max(widths[0], TextWidth(row.Text()));
      for (int32_t c : shown) {
        const std::string_view cell = row.SubItem(c);
        if (!cell.empty()) widths[static_cast<size_t>(c)] = std::max(widths[static_cast<size_t>(c)], TextWidth(cell));
      }
    }
    const std::string_view t = text(static_cast<uint32_t>(i));
    keyed.push_back({bigEndian(t, 0), bigEndian(t, 8), static_cast<uint32_t>(i)});
  }
  // Equal texts keep their order through the row number, which makes the
  // sort stable without the extra buffer a stable sort would allocate. The
  // rows' own texts are read only when the first sixteen bytes tie (a
  // shorter text ties with a longer one that goes on with NULs, so the
  // texts decide then, too).
  std::sort(keyed.begin(), keyed.end(), [&](const Keyed& a, const Keyed& b) {
    if (a.head0 != b.head0) return a.head0 < b.head0;
    if (a.head1 != b.head1) return a.head1 < b.head1;
    if (const int c = text(a.row).compare(text(b.row)); c != 0) return c < 0;
    return a.row < b.row;
  });
  // Rows move to their places in the existing array (following each cycle
  // of the permutation), so no second array of a million pointers is needed.
  // The permutation (from[i]: the old position of the row that goes to i)
  // is written over the front of the sort buffer itself: entry i is read
  // before byte 4i is written, and 4i + 4 <= 20i for every i > 0.
  const size_t n = keyed.size();
  auto* from = reinterpret_cast<unsigned char*>(keyed.data());
  auto fromAt = [from](size_t i) {
    uint32_t v;
    std::memcpy(&v, from + 4 * i, 4);
    return v;
  };
  auto setFrom = [from](size_t i, uint32_t v) { std::memcpy(from + 4 * i, &v, 4); };
  for (size_t i = 0; i < n; ++i) {
    const uint32_t row = keyed[i].row;
    setFrom(i, row);
  }
  for (size_t start = 0; start < n; ++start) {
    if (fromAt(start) == start) continue;
    std::unique_ptr<ListRow> held = std::move(rows_[start]);
    size_t at = start;
    while (fromAt(at) != start) {
      const size_t next = fromAt(at);
      rows_[at] = std::move(rows_[next]);
      setFrom(at, static_cast<uint32_t>(at));
      at = next;
    }
    rows_[at] = std::move(held);
    setFrom(at, static_cast<uint32_t>(at));
  }
  keyed.clear();
  keyed.shrink_to_fit();
  Renumber(0);
  RebuildRowIndex();
  if (measureContent_) contentWidths_ = std::move(widths);
  Notify([](ListViewObserver& o) { o.OnSortChanged(); });
}

}  // namespace nxfv
