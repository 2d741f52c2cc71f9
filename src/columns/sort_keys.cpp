#include "nxfv/columns/sort_keys.h"

#include <algorithm>
#include <cmath>

#include "nxfv/platform/list_view.h"
#include "nxfv/platform/utf8.h"

namespace nxfv {

namespace {

bool IsDateColumn(std::string_view k) { return k == "mod" || k == "tim" || k == "cre" || k == "acc"; }
bool IsSizeColumn(std::string_view k) { return k == "siz" || k == "cmp"; }

bool IsAscii(std::string_view s) {
  for (char c : s)
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  return true;
}

// Digits become letters: ascending 0->A .. 9->J, descending 0->J .. 9->A.
void DigitsToLetters(std::string& s, bool descending) {
  for (char& c : s)
    if (c >= '0' && c <= '9') c = descending ? static_cast<char>('J' - (c - '0')) : static_cast<char>('A' + (c - '0'));
}

// The last n characters of text with zeros in front: the decimal text is
// padded with fifteen zeros and cut from the right.
std::string ZeroPaddedTail(std::string_view text, size_t n) {
  std::string out;
  out.reserve(n);
  if (text.size() < n) out.append(n - text.size(), '0');
  out.append(text.size() > n ? text.substr(text.size() - n) : text);
  return out;
}

}  // namespace

size_t TextBodyWidth(std::string_view key) { return key == "ext" ? 5 : 26; }

size_t SortPartBytes(std::string_view key) {
  const size_t body = IsDateColumn(key) ? kDateBodyWidth : IsSizeColumn(key) ? kSizeBodyWidth : TextBodyWidth(key);
  return 2 + body;
}

std::string DateSortBody(std::optional<int64_t> seconds, bool descending) {
  if (!seconds) return {};
  std::string s = ZeroPaddedTail(std::to_string(*seconds), kDateBodyWidth);
  DigitsToLetters(s, descending);
  return s;
}

std::string SizeSortBody(std::string_view text, bool descending, std::string_view thousands) {
  char unit = descending ? 'D' : 'A';
  if (text.find("KB") != std::string_view::npos) unit = descending ? 'C' : 'B';
  if (text.find("MB") != std::string_view::npos) unit = descending ? 'B' : 'C';
  if (text.find("GB") != std::string_view::npos) unit = descending ? 'A' : 'D';
  // The value is the leading number once the digit grouping is taken out:
  // "1,024 KB" and "1.024 KB" both read 1024. Grouping separators are
  // skipped wherever they stand, so sizes of a million KB and more keep
  // their numeric order as well.
  std::string digits;
  size_t i = 0;
  while (i < text.size() && text[i] == ' ') ++i;
  while (i < text.size()) {
    if (text[i] >= '0' && text[i] <= '9') {
      digits += text[i++];
    } else if (!thousands.empty() && text.substr(i, thousands.size()) == thousands && !digits.empty()) {
      i += thousands.size();
    } else if (text[i] == '.' && !digits.empty()) {
      ++i;  // a stray dot grouping (the classic separator) is skipped as well
    } else {
      break;
    }
  }
  while (digits.size() > 1 && digits[0] == '0') digits.erase(0, 1);
  if (digits.empty()) digits.push_back('0');
  std::string body(1, unit);
  body += ZeroPaddedTail(digits, kSizeBodyWidth - 1);
  DigitsToLetters(body, descending);
  return body;
}

namespace {

// TextSortBody appended to out.
void AppendTextSortBody(std::string& out, std::string_view upper, bool descending, size_t keep) {
  size_t count = 0;
  for (size_t i = 0; i < upper.size() && count < keep; ++count) {
    const auto b = static_cast<unsigned char>(upper[i]);
    if (b < 0x80) {
      char c = static_cast<char>(b);
      if (descending) {
        if (c >= '0' && c <= '9') c = static_cast<char>(48 + 57 - c);
        else if (c >= 'A' && c <= 'Z') c = static_cast<char>(65 + 90 - c);
      }
      out += c;
      ++i;
    } else {
      const size_t start = i;
      DecodeUtf8(upper, i);
      out.append(upper.substr(start, i - start));
    }
  }
  if (count < keep) out.append(keep - count, 'A');
}

}  // namespace

std::string TextSortBody(std::string_view upper, bool descending, size_t keep) {
  std::string out;
  out.reserve(keep + 4);
  AppendTextSortBody(out, upper, descending, keep);
  return out;
}

namespace {

void AppendTextBody(std::string& key, std::string_view text, const SortColumn& col, const SortKeyContext& ctx) {
  const size_t keep = TextBodyWidth(col.key);
  const size_t n = std::min(text.size(), keep);
  if (IsAscii(text.substr(0, n))) {
    // Every case mapping agrees on ASCII letters: no call out, no copy.
    char upper[26];
    for (size_t i = 0; i < n; ++i) {
      const char c = text[i];
      upper[i] = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    }
    AppendTextSortBody(key, std::string_view(upper, n), col.descending, keep);
  } else {
    AppendTextSortBody(key, ctx.upper ? ctx.upper(text) : Utf8Upper(text), col.descending, keep);
  }
}

}  // namespace

std::string BuildRowSortKey(const ListRow& row, std::string_view typeText, const std::vector<SortColumn>& columns,
                            const SortKeyContext& ctx) {
  std::string key;
  BuildRowSortKeyInto(key, row, typeText, columns, ctx);
  return key;
}

void BuildRowSortKeyInto(std::string& key, const ListRow& row, std::string_view typeText,
                         const std::vector<SortColumn>& columns, const SortKeyContext& ctx) {
  const bool goUp = row.Text() == "..";
  const bool folder = typeText == "Ordner" || typeText == "Folder";
  key.clear();
  key.reserve(columns.size() * 28);
  for (const SortColumn& col : columns) {
    std::string_view text;
    if (col.subItem == 0) text = row.Text();
    else if (col.subItem > 0) text = row.SubItem(col.subItem);
    if (col.key == "nam") text = row.Text();
    std::optional<int64_t> seconds;
    if (IsDateColumn(col.key)) {
      seconds = ctx.dateSeconds ? ctx.dateSeconds(text) : std::nullopt;
      if (!seconds) continue;  // an undated row sorts before every dated one
    }
    if (goUp) key += "  ";
    else if (folder == col.descending) key += ' ';
    if (IsDateColumn(col.key)) {
      key += DateSortBody(seconds, col.descending);
    } else if (IsSizeColumn(col.key)) {
      key += SizeSortBody(text, col.descending, ctx.thousandsSeparator);
    } else {
      AppendTextBody(key, text, col, ctx);
    }
  }
}

}  // namespace nxfv
