// The column records of the report view: which column a record describes
// (ShowHeader), the mask of visible columns (showinfocolb), and the records
// themselves (headerdatas with its control-filled AdvHeaderdatas).
//
// Bit 1024 is unused in both enumerations. Hosts persist ViewOptions masks
// as plain numbers, so the gap must stay where it is.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "nxfv/platform/variant.h"

namespace nxfv {

enum ShowHeader : int32_t {
  header_Name = 1,
  header_FileExt = 2,
  header_FileSize = 4,
  header_Type = 8,
  header_DateModified = 16,
  header_TimeModified = 32,
  header_DateCreated = 64,
  header_LastAccessed = 128,
  header_Attributes = 256,
  header_DosName = 512,
  header_ZipCompress = 2048,
  header_ZipRatio = 4096,
  header_ZipHexCRC = 8192,
  header_ZipEncoded = 16384,
  header_ZipMethod = 32768,
  header_ZipPath = 65536,
  header_ZipComments = 131072,
  header_ZipSignature = 262144,
  header_UserdataA = 524288,
  header_UserdataB = 1048576,
};

enum showinfocolb : int32_t {
  show_Name = 1,
  show_FileExt = 2,
  show_FileSize = 4,
  show_Type = 8,
  show_DateModified = 16,
  show_TimeModified = 32,
  show_DateCreated = 64,
  show_LastAccessed = 128,
  show_Attributes = 256,
  show_DosName = 512,
  show_ZipCompress = 2048,
  show_ZipRatio = 4096,
  show_ZipHexCRC = 8192,
  show_ZipEncoded = 16384,
  show_ZipMethod = 32768,
  show_ZipPath = 65536,
  show_ZipComments = 131072,
  show_ZipSignature = 262144,
  show_UserdataA = 524288,
  show_UserdataB = 1048576,
  // Name, extension, size, type and date modified: the default mask.
  SetNormalView = 31,
};

// Filled by the control from its built-in column table; never taken from
// the host.
struct AdvHeaderdatas {
  std::string xname;             // the column's key in the list view
  int32_t XShow = 0;             // the column's bit, tested against ViewOptions
  bool xonlyarchive = false;     // shown only while an archive is listed
  bool xonlynonarchive = false;  // shown only while a plain folder is listed
  bool operator==(const AdvHeaderdatas&) const = default;
};

// One column's header option.
struct headerdatas {
  int32_t ShowHeaderItem = 0;  // a ShowHeader bit: the record's identity
  int32_t HeaderWidth = 0;     // twips; 0 = the column's default
  std::string HeaderText;      // empty = the column's default caption
  bool HeaderSizeable = false;  // false: the user may not drag the width
  AdvHeaderdatas AdvInfo;
  bool operator==(const headerdatas&) const = default;
};

// A headerdatas record as a value of a collection of Variants (the header
// options collection). The Variant holds a reference: whoever reads the
// record back through the collection sees, and may change, the stored one.
// Make a new HeaderRecord for every add so that records are never shared.
class HeaderRecord : public Object {
 public:
  explicit HeaderRecord(headerdatas value) : data(std::move(value)) {}
  headerdatas data;
};

inline Variant MakeHeaderRecord(const headerdatas& value) {
  return Variant(std::make_shared<HeaderRecord>(value));
}

// The record a Variant holds, or null when it holds something else. The
// pointer stays valid while anything (the collection) holds the record.
inline HeaderRecord* HeaderRecordOf(const Variant& value) {
  return value.As<HeaderRecord>().get();
}

}  // namespace nxfv
