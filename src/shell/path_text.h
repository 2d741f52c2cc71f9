// Path and text clean-up routines shared by the control, the archive reader
// and the file operations. All pure; positions count code points, 1-based
// where a rule names a position.
//
//   AddBackslash("C:\\")          -> "C:\\"        AddBackslash("docs/") -> "docs/\\"
//   StripNull("ab\0cd")           -> "ab"          StripNull("  x  ")    -> "x"
//   SplitArchivePath("a\\b/c.txt") -> {"a\\b/", "c.txt"}   (forward slash searched first)
//   SplitExtension("C:\\my.dir\\readme") -> {"C:\\my", "dir\\readme"}
//   SplitFullPath(path = "C:\\x\\y.tar.gz") -> path "C:\\x\\", {"y.tar.gz", "y", ".tar.gz"}
#pragma once

#include <string>
#include <string_view>

namespace nxfv {

class Platform;

// s with a backslash appended unless its last character already is one;
// "" gives "\". Always the backslash, whatever the platform's separator.
std::string AddBackslash(std::string_view s);

// Same rule with the platform's own separator ("/" on Linux); "" gives the
// separator alone. The folder listing uses this one.
std::string AddSeparator(const Platform& platform, std::string_view s);

// Clean-up of text that came back from a platform call: cut before the
// first NUL ("" when the text begins with one). Only when there is no NUL
// at all are leading and trailing blanks (spaces) trimmed.
std::string StripNull(std::string_view s);

// Leading and trailing blanks (spaces only) removed.
std::string TrimBlanks(std::string_view s);

struct ArchivePathParts {
  std::string folder;  // up to and including the last separator; "" if none
  std::string name;    // the rest
};
// Splits an archive's stored entry name at its last forward slash, or when
// there is none at its last backslash. The separator's position is held in
// a 16-bit signed integer: a separator past character 32767 raises error 6
// (Overflow) through RaiseError.
ArchivePathParts SplitArchivePath(std::string_view storedName);

struct ExtensionParts {
  std::string base;       // text before the last "."; the whole text if none
  std::string extension;  // text after it, without the dot; "" if none
};
// Splits at the LAST dot anywhere in the text, folder names included.
ExtensionParts SplitExtension(std::string_view text);

struct FullPathParts {
  std::string fileName;   // text after the last separator
  std::string baseName;   // text before the FIRST dot of fileName ("" if none)
  std::string extension;  // from that first dot to the end, dot included
};
// Splits a full path. path is changed in place to its folder part (with the
// trailing separator; "" when it has none). Backslashes are followed first:
// a forward slash is only taken when no backslash follows the current
// position. The extension starts at the first dot of the file name
// ("a.tar.gz" -> "a" + ".tar.gz"), unlike SplitExtension.
FullPathParts SplitFullPath(std::string& path);

}  // namespace nxfv
