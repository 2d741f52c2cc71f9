// The two output forms of `nxfv list`: an aligned table of the visible
// columns, and one JSON document with everything the view holds.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

namespace nxfv {
class FileViewer;
class Variant;
}

namespace nxfv::cli {

// Visible columns (width > 0) in column order, a caption line, then one line
// per row in view order; sizes right-aligned, other columns left-aligned,
// two blanks between columns.
void WriteListTable(const FileViewer& viewer, std::ostream& out);

// {"path","insideArchive","columns":[{"key","caption","width"}],
//  "rows":[{"key","text","image","sub":{key:text},"item":{...,"ArchivInfo":{...}}}]}
void WriteListJson(const FileViewer& viewer, std::ostream& out);

// JSON helpers (exposed for tests).
void AppendJsonString(std::string& out, std::string_view text);
void AppendJsonNumber(std::string& out, double value);
// Numbers and dates as numbers, text as strings, Empty/Null as null,
// Booleans as true/false.
void AppendJsonVariant(std::string& out, const Variant& value);

}  // namespace nxfv::cli
