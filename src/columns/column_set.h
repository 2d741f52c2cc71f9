// The report view's column set: the built-in table of twenty columns, the
// header options that hosts change (a kCollection of headerdatas records
// keyed by the decimal value of their bit), and the two operations that
// turn the options into list view columns.
//
// Columns that must not show are never removed: they stay at width 0 (and
// locked), so sub-item positions are the same for every kind of listing.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "nxfv/model/header_data.h"
#include "nxfv/model/k_collection.h"
#include "nxfv/platform/list_view.h"

namespace nxfv {

class Platform;

// One row of the built-in column table; the row order is the default
// column order.
struct BuiltInColumn {
  int32_t bit;
  const char* key;
  int32_t defaultWidth;  // twips
  bool onlyArchive;
  bool onlyNonArchive;
};
inline constexpr int kBuiltInColumnCount = 20;
const std::array<BuiltInColumn, kBuiltInColumnCount>& BuiltInColumns();

// The hidden last column that holds each row's sort key.
inline constexpr const char* kSortColumnKey = "sort";

// Captions read once from the system's string tables (English words where
// the system has none), in table order of the captions the system supplies.
struct ColumnCaptions {
  std::string name, extension, size, type, modified, time, created, accessed, attributes, shortName;
};
ColumnCaptions LoadColumnCaptions(Platform& platform);
// Default caption of a built-in column.
std::string DefaultCaption(const ColumnCaptions& captions, int32_t bit);

// Trim(Str(bit)): the key a header record is stored under ("1", "2048").
std::string HeaderOptionKey(int32_t bit);

// Appends a copy of record keyed HeaderOptionKey(record.ShowHeaderItem).
// A second record with the same bit raises error 457; a record beyond the
// twentieth raises error 9 (the column record table has twenty places).
void AddHeaderOption(kCollection& options, const headerdatas& record);

// Fills the options up with the built-in defaults: each table row's record
// gets its default caption/width where empty/0 and a fresh AdvInfo; rows
// without a record are appended in table order. Records for unknown bits
// are left as they are.
void CompleteHeaderOptions(kCollection& options, const ColumnCaptions& captions);

// The first record for bit; false when there is none.
bool FindHeaderOption(kCollection& options, int32_t bit, headerdatas*& record);

// Creates the list view's columns from the options (or, with widthsOnly,
// only sets the widths of the existing ones) and returns the locked-column
// list: the 0-based indices (each written with a leading blank) of the
// columns the user may not resize, comma-separated, ending with "20".
// Errors of the column collection (a duplicate or empty key) are raised.
std::string BuildColumns(ListView& view, kCollection& options, int32_t viewOptions, bool insideArchive,
                         bool widthsOnly);

}  // namespace nxfv
