#include "nxfv/list_output.h"

#include <charconv>
#include <cmath>
#include <vector>

#include "nxfv/control/file_viewer.h"
#include "nxfv/platform/utf8.h"

namespace nxfv::cli {

namespace {

// Output goes out in large blocks: a listing can have a million rows.
class BlockWriter {
 public:
  explicit BlockWriter(std::ostream& out) : out_(out) { buf_.reserve(kBlock + 4096); }
  ~BlockWriter() { Flush(); }
  std::string& Buffer() { return buf_; }
  void MaybeFlush() {
    if (buf_.size() >= kBlock) Flush();
  }
  void Flush() {
    out_.write(buf_.data(), static_cast<std::streamsize>(buf_.size()));
    buf_.clear();
  }

 private:
  static constexpr size_t kBlock = 1 << 20;
  std::ostream& out_;
  std::string buf_;
};

void Pad(std::string& out, size_t n) { out.append(n, ' '); }

// Characters of a cell: most cells are ASCII, counted by their length
// without decoding.
size_t CellWidth(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) >= 0x80) return CodePointCount(text);
  return text.size();
}

}  // namespace

void AppendJsonString(std::string& out, std::string_view text) {
  // Runs of bytes that need no escape are copied at once.
  static constexpr char kHex[] = "0123456789abcdef";
  out += '"';
  size_t run = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    out.append(text, run, i - run);
    run = i + 1;
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        out += "\\u00";
        out += kHex[c >> 4];
        out += kHex[c & 15];
    }
  }
  out.append(text, run, text.size() - run);
  out += '"';
}

void AppendJsonNumber(std::string& out, double value) {
  if (!std::isfinite(value)) {
    out += "null";
    return;
  }
  char buf[64];
  auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value);
  out.append(buf, ec == std::errc() ? end : buf);
}

void AppendJsonVariant(std::string& out, const Variant& v) {
  switch (v.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null:
    case Variant::Kind::Object:
      out += "null";
      break;
    case Variant::Kind::Boolean:
      out += v.AsBool() ? "true" : "false";
      break;
    case Variant::Kind::String:
      AppendJsonString(out, v.TextView());
      break;
    default:
      AppendJsonNumber(out, v.AsDouble());
  }
}

void WriteListTable(const FileViewer& viewer, std::ostream& out) {
  const ListView& lv = viewer.ListView1();
  std::vector<int32_t> cols;
  for (int32_t c = 0; c < lv.ColumnCount(); ++c)
    if (lv.Column(c).width > 0) cols.push_back(c);
  std::vector<size_t> widths(cols.size());
  std::vector<bool> right(cols.size());
  for (size_t i = 0; i < cols.size(); ++i) {
    widths[i] = CodePointCount(lv.Column(cols[i]).caption);
    right[i] = lv.Column(cols[i]).key == "siz" || lv.Column(cols[i]).key == "cmp";
  }
  std::vector<std::string_view> cells;
  auto load = [&](const ListRow& row) {
    row.SubItemsInto(cells, static_cast<size_t>(lv.ColumnCount()));
    cells[0] = row.Text();
  };
  const std::vector<size_t>& measured = lv.ContentWidths();
  if (measured.size() == static_cast<size_t>(lv.ColumnCount())) {
    // The view measured its columns while sorting: no extra walk.
    for (size_t i = 0; i < cols.size(); ++i) widths[i] = std::max(widths[i], measured[static_cast<size_t>(cols[i])]);
  } else {
    for (size_t r = 0; r < lv.RowCount(); ++r) {
      lv.PrefetchAhead(r);
      load(lv.Row(r));
      for (size_t i = 0; i < cols.size(); ++i)
        widths[i] = std::max(widths[i], CodePointCount(cells[static_cast<size_t>(cols[i])]));
    }
  }

  BlockWriter w(out);
  auto line = [&](auto cell) {
    std::string& b = w.Buffer();
    for (size_t i = 0; i < cols.size(); ++i) {
      const std::string_view text = cell(i);
      const size_t len = CellWidth(text);
      const size_t pad = widths[i] > len ? widths[i] - len : 0;
      if (i > 0) b += "  ";
      if (right[i]) Pad(b, pad);
      b.append(text);
      if (!right[i] && i + 1 < cols.size()) Pad(b, pad);
    }
    b += '\n';
    w.MaybeFlush();
  };
  line([&](size_t i) { return std::string_view(lv.Column(cols[i]).caption); });
  for (size_t r = 0; r < lv.RowCount(); ++r) {
    lv.PrefetchAhead(r);
    const ListRow& row = lv.Row(r);
    line([&](size_t i) { return cols[i] == 0 ? row.Text() : row.SubItem(cols[i]); });
  }
}

namespace {

void AppendItem(std::string& b, const NxFileListItem& item) {
  auto str = [&](const char* name, std::string_view v, bool comma = true) {
    b += '"';
    b += name;
    b += "\":";
    AppendJsonString(b, v);
    if (comma) b += ',';
  };
  auto num = [&](const char* name, double v) {
    b += '"';
    b += name;
    b += "\":";
    AppendJsonNumber(b, v);
    b += ',';
  };
  auto var = [&](const char* name, const Variant& v) {
    b += '"';
    b += name;
    b += "\":";
    AppendJsonVariant(b, v);
    b += ',';
  };
  auto boolean = [&](const char* name, bool v) {
    b += '"';
    b += name;
    b += "\":";
    b += v ? "true," : "false,";
  };
  b += '{';
  str("Key", item.Key());
  str("FileName", item.FileName());
  str("Path", item.Path());
  str("Extension", item.Extension());
  num("FileSize", item.FileSize());
  var("DateModified", item.DateModified());
  var("TimeModified", item.TimeModified());
  var("DateCreated", item.DateCreated());
  var("TimeCreated", item.TimeCreated());
  var("LastAccessed", item.LastAccessed());
  num("Attributes", static_cast<int32_t>(item.Attributes()));
  var("DosName", item.DosName());
  boolean("Checked", item.Checked());
  str("Displayname", item.Displayname());
  str("UserDataA", item.UserDataA());
  str("UserDataB", item.UserDataB());
  boolean("Selected", item.Selected());
  str("FileTyp", item.FileTyp());
  num("ListItemTyp", static_cast<int32_t>(item.ListItemTyp()));
  const AInfo a = item.ArchivInfo();
  b += "\"ArchivInfo\":{";
  boolean("IsInArchive", a.IsInArchive);
  str("ArchiveExt", a.ArchiveExt);
  num("UncompressedSize", a.UncompressedSize);
  num("CompressedSize", a.CompressedSize);
  str("Ratio", a.Ratio);
  str("HexCRC", a.HexCRC);
  num("flags", a.flags);
  num("CRC", a.CRC);
  num("Encoded", a.Encoded);
  str("Method", a.Method);
  str("ArchiveSubPath", a.ArchiveSubPath);
  str("Comments", a.Comments);
  str("Signature", a.Signature, false);
  b += "}}";
}

}  // namespace

void WriteListJson(const FileViewer& viewer, std::ostream& out) {
  const ListView& lv = viewer.ListView1();
  BlockWriter w(out);
  std::string& b = w.Buffer();
  b += "{\"path\":";
  AppendJsonString(b, viewer.Currentfolder());
  b += ",\"insideArchive\":";
  b += viewer.InsideArchive() ? "true" : "false";
  b += ",\"columns\":[";
  for (int32_t c = 0; c < lv.ColumnCount(); ++c) {
    const ListColumn& col = lv.Column(c);
    if (c) b += ',';
    b += "{\"key\":";
    AppendJsonString(b, col.key);
    b += ",\"caption\":";
    AppendJsonString(b, col.caption);
    b += ",\"width\":";
    b += std::to_string(col.width);
    b += '}';
  }
  b += "],\"rows\":[";
  auto items = viewer.Items();
  for (size_t r = 0; r < lv.RowCount(); ++r) {
    const ListRow& row = lv.Row(r);
    if (r) b += ',';
    b += "\n{\"key\":";
    AppendJsonString(b, row.Key());
    b += ",\"text\":";
    AppendJsonString(b, row.Text());
    b += ",\"image\":";
    b += std::to_string(row.Image());
    b += ",\"sub\":{";
    bool first = true;
    for (int32_t c = 1; c < lv.ColumnCount(); ++c) {
      if (!row.HasSubItem(c)) continue;
      if (!first) b += ',';
      first = false;
      AppendJsonString(b, lv.Column(c).key);
      b += ':';
      AppendJsonString(b, row.SubItem(c));
    }
    b += "},\"item\":";
    auto item = row.Key().empty() ? nullptr : items->Item(Variant(std::string(row.Key())));
    if (item) AppendItem(b, *item);
    else b += "null";
    b += '}';
    w.MaybeFlush();
  }
  b += "\n]}\n";
}

}  // namespace nxfv::cli
