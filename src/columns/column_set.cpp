#include "nxfv/columns/column_set.h"

#include <charconv>

#include "nxfv/platform/error_state.h"
#include "nxfv/platform/platform.h"
#include "nxfv/shell/resource_strings.h"

namespace nxfv {

const std::array<BuiltInColumn, kBuiltInColumnCount>& BuiltInColumns() {
  // Not in bit order: the archive columns compressed size, ratio and path
  // follow the time column, and the short name comes after all archive
  // columns.
  static const std::array<BuiltInColumn, kBuiltInColumnCount> table{{
      {header_Name, "nam", 1800, false, false},
      {header_FileExt, "ext", 500, false, false},
      {header_FileSize, "siz", 1100, false, false},
      {header_Type, "typ", 1400, false, false},
      {header_DateModified, "mod", 1000, false, false},
      {header_TimeModified, "tim", 1100, false, false},
      {header_ZipCompress, "cmp", 800, true, false},
      {header_ZipRatio, "rat", 700, true, false},
      {header_ZipPath, "pth", 4000, true, false},
      {header_DateCreated, "cre", 1700, false, false},
      {header_LastAccessed, "acc", 1500, false, false},
      {header_Attributes, "atr", 1000, false, false},
      {header_ZipMethod, "mtd", 1000, true, false},
      {header_ZipEncoded, "enc", 1000, true, false},
      {header_ZipHexCRC, "crc", 1000, true, false},
      {header_ZipSignature, "sig", 1000, true, false},
      {header_ZipComments, "com", 4000, true, false},
      {header_DosName, "dos", 400, false, true},
      {header_UserdataA, "userd1", 500, false, false},
      {header_UserdataB, "userd2", 500, false, false},
  }};
  return table;
}

namespace {
std::string Caption(Platform& p, const char* library, int32_t number, const char* fallback) {
  std::string s = LoadResString(p, library, number);
  return s.empty() ? fallback : s;
}
}  // namespace

ColumnCaptions LoadColumnCaptions(Platform& p) {
  ColumnCaptions c;
  c.name = Caption(p, "Shell32.Dll", 8976, "Name");
  c.extension = "Ext";
  c.size = Caption(p, "Shell32.Dll", 8978, "Size");
  c.type = Caption(p, "Shell32.Dll", 8979, "Type");
  c.modified = Caption(p, "Shell32.Dll", 8980, "Modified");
  c.time = Caption(p, "Intl.Cpl", 25, "Time");
  c.created = Caption(p, "Shell32.Dll", 8996, "Created");
  c.accessed = Caption(p, "Shell32.Dll", 8997, "Accessed");
  c.attributes = Caption(p, "Shell32.Dll", 8987, "Attributes");
  c.shortName = "MsDos 8.3";
  return c;
}

std::string DefaultCaption(const ColumnCaptions& c, int32_t bit) {
  switch (bit) {
    case header_Name: return c.name;
    case header_FileExt: return c.extension;
    case header_FileSize: return c.size;
    case header_Type: return c.type;
    case header_DateModified: return c.modified;
    case header_TimeModified: return c.time;
    case header_ZipCompress: return "Comp";
    case header_ZipRatio: return "Ratio";
    case header_ZipPath: return "Path";
    case header_DateCreated: return c.created;
    case header_LastAccessed: return c.accessed;
    case header_Attributes: return c.attributes;
    case header_ZipMethod: return "Method";
    case header_ZipEncoded: return "Encoded";
    case header_ZipHexCRC: return "Hex CRC";
    case header_ZipSignature: return "Signature";
    case header_ZipComments: return "Comments";
    case header_DosName: return c.shortName;
    // German on purpose: these are the captions hosts have always seen.
    case header_UserdataA: return "Userdaten1";
    case header_UserdataB: return "Userdaten2";
    default: return "";
  }
}

std::string HeaderOptionKey(int32_t bit) { return std::to_string(bit); }

void AddHeaderOption(kCollection& options, const headerdatas& record) {
  const std::string key = HeaderOptionKey(record.ShowHeaderItem);
  auto col = options.Colnewb();
  // The column record table has twenty places: a twenty-first record is
  // the caller's bounds failure, and nothing is added.
  if (col->Count() >= kBuiltInColumnCount) RaiseError(kErrSubscript);
  col->Add(Variant(key), Variant(key));  // raises 457 for a second record of the bit
  col->Replace(col->Count(), MakeHeaderRecord(record));
}

bool FindHeaderOption(kCollection& options, int32_t bit, headerdatas*& record) {
  auto col = options.Colnewb();
  const int32_t count = col->Count();
  for (int32_t i = 1; i <= count; ++i) {
    if (HeaderRecord* r = HeaderRecordOf(col->Item(Variant(i))); r && r->data.ShowHeaderItem == bit) {
      record = &r->data;
      return true;
    }
  }
  return false;
}

void CompleteHeaderOptions(kCollection& options, const ColumnCaptions& captions) {
  for (const BuiltInColumn& row : BuiltInColumns()) {
    const AdvHeaderdatas adv{row.key, row.bit, row.onlyArchive, row.onlyNonArchive};
    headerdatas* found = nullptr;
    if (FindHeaderOption(options, row.bit, found)) {
      if (found->HeaderText.empty()) found->HeaderText = DefaultCaption(captions, row.bit);
      if (found->HeaderWidth == 0) found->HeaderWidth = row.defaultWidth;
      found->AdvInfo = adv;
    } else {
      headerdatas rec;
      rec.ShowHeaderItem = row.bit;
      rec.HeaderWidth = row.defaultWidth;
      rec.HeaderText = DefaultCaption(captions, row.bit);
      rec.HeaderSizeable = true;
      rec.AdvInfo = adv;
      AddHeaderOption(options, rec);
    }
  }
}

std::string BuildColumns(ListView& view, kCollection& options, int32_t viewOptions, bool insideArchive,
                         bool widthsOnly) {
  if (!widthsOnly) {
    view.ClearRows();
    view.ClearColumns();
    view.SetVisible(false);
  }
  std::string locked;
  std::string_view separator;
  auto col = options.Colnewb();
  const int32_t count = col->Count();
  for (int32_t i = 1; i <= count; ++i) {
    HeaderRecord* r = HeaderRecordOf(col->Item(Variant(i)));
    if (!r) RaiseError(kErrTypeMismatch);
    const headerdatas& h = r->data;
    int32_t width = h.HeaderWidth;
    if ((h.AdvInfo.xonlyarchive && !insideArchive) || (h.AdvInfo.xonlynonarchive && insideArchive) ||
        ((~viewOptions) & h.AdvInfo.XShow) != 0)
      width = 0;
    if (width == 0 || !h.HeaderSizeable) {
      // Str() puts a blank before a non-negative number.
      char number[16];
      const auto end = std::to_chars(number, number + sizeof number, i - 1).ptr;
      locked.append(separator).append(1, ' ').append(number, end);
      separator = ",";
    }
    if (widthsOnly) {
      view.SetColumnWidth(view.ColumnIndex(h.AdvInfo.xname), width);
    } else {
      view.AddColumn(h.AdvInfo.xname, h.HeaderText, width);
    }
  }
  // Written whatever the number of records: right for the default twenty.
  locked += separator;
  locked += "20";
  if (widthsOnly) {
    view.SetColumnWidth(view.ColumnIndex(kSortColumnKey), 0);
  } else {
    view.AddColumn(kSortColumnKey, kSortColumnKey, 0);
  }
  return locked;
}

}  // namespace nxfv
