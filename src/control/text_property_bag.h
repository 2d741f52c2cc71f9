// A property bag kept as a text file a person can read and edit.
//
// Format: UTF-8 text, one `key=value` per line. The key is everything before
// the first '=' (exactly, blanks included); the value everything after it.
// Booleans are written "True"/"False", numbers in decimal (colours as
// signed 32-bit numbers: -2147483643 is the system colour 5), texts as they
// are except that '%', carriage return, line feed and NUL are written %25,
// %0D, %0A and %00. Reading takes "True"/"False", "-1"/"0" or any number
// for Booleans.
//
// Nothing in the file is lost: lines without '=' (comments, damage) and
// keys nobody reads are kept and written back where they were; a new key
// goes at the end; line ends follow the file's first line (CRLF or LF).
// For a repeated key the first line counts.
//
// A file that cannot be read (missing, unreadable, larger than
// kMaxFileBytes) leaves the bag empty with an error text; a value that does
// not fit its property is the reading control's business (it keeps the
// default and reports once).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "nxfv/control/property_bag.h"

namespace nxfv {

class NXFV_EXPORT TextPropertyBag : public PropertyBag {
 public:
  static constexpr size_t kMaxFileBytes = 1 << 20;

  static TextPropertyBag FromText(std::string_view text);
  std::string ToText() const;
  // False (error set, bag empty) when path cannot be read.
  bool LoadFile(const std::string& path, std::string& error);
  // Writes a sibling file and renames it over path, so that a failure
  // leaves the old file whole. False with error set on failure.
  bool SaveFile(const std::string& path, std::string& error) const;

  // The stored text (unescaped) or defaultValue.
  Variant ReadProperty(const std::string& key, const Variant& defaultValue) override;
  void WriteProperty(const std::string& key, const Variant& value, const Variant& defaultValue) override;

  static std::string Escape(std::string_view text);
  // Unknown or broken %-sequences stay as they are.
  static std::string Unescape(std::string_view text);

 private:
  struct Line {
    bool entry = false;  // key=value, else raw text kept as it was
    std::string key;
    std::string text;  // the raw value (escaped) or the raw line
  };
  Line* FindEntry(const std::string& key);
  std::vector<Line> lines_;
  bool crlf_ = false;
  bool finalNewline_ = true;
};

}  // namespace nxfv
