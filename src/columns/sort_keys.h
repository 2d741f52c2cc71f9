// Per-row sort keys. The view is never sorted by comparing items: each row
// gets one text key in its hidden "sort" column, built from the row's shown
// texts, and the list view sorts ascending by that text. Direction, the
// grouping of files against folders, the go-up row's place, and numeric and
// date order are all encoded in the key's characters.
//
//   file row, "nam" ascending            -> " " + first 26 letters, padded with "A"
//   folder row, "nam" ascending          -> ""  + ...  (files sort before folders)
//   go-up row ("..")                     -> "  " + ... (always first)
//   "siz" "1,536 KB" ascending           -> "B" + 15 letters of 000000000001536
//   "mod" descending                     -> 11 letters, digit d written as 'J' - d
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nxfv {

class ListRow;

// One sort column: its key ("nam", "siz", ...), the sub-item index that holds
// its text (0 = the row text, -1 = the column shows nothing) and direction.
struct SortColumn {
  std::string key;
  int32_t subItem = -1;
  bool descending = false;
};

// Whole seconds from 1980-01-01 00:00:00 to the date a text names, or
// nullopt when the text is not a valid date.
using DateSecondsFn = std::function<std::optional<int64_t>(std::string_view text)>;
// Upper-casing of text as the system maps case.
using UpperFn = std::function<std::string(std::string_view text)>;

struct SortKeyContext {
  DateSecondsFn dateSeconds;
  UpperFn upper;
  std::string thousandsSeparator = ",";
};

// Widths of a part's body: dates 11 letters, sizes a unit letter and 15,
// texts 26 characters (the extension column 5: short by nature).
inline constexpr size_t kDateBodyWidth = 11;
inline constexpr size_t kSizeBodyWidth = 16;
size_t TextBodyWidth(std::string_view columnKey);
// Bytes one sort column's part takes at most for an ASCII row: the widest
// prefix (the go-up row's two blanks) and the body.
size_t SortPartBytes(std::string_view columnKey);

// The row's key for the given sort columns, in priority order. typeText is
// the row's "typ" text (decides file or folder grouping). A date column
// whose text is not a valid date adds no part at all, prefix included.
std::string BuildRowSortKey(const ListRow& row, std::string_view typeText,
                            const std::vector<SortColumn>& columns, const SortKeyContext& context);
// The same into key (replacing its contents), so that a walk over a million
// rows reuses one buffer.
void BuildRowSortKeyInto(std::string& key, const ListRow& row, std::string_view typeText,
                         const std::vector<SortColumn>& columns, const SortKeyContext& context);

// The body of one column's part (exposed for tests).
std::string DateSortBody(std::optional<int64_t> seconds, bool descending);
std::string SizeSortBody(std::string_view sizeText, bool descending, std::string_view thousandsSeparator);
std::string TextSortBody(std::string_view upperText, bool descending, size_t keep);

}  // namespace nxfv
