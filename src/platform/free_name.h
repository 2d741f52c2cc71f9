// Free names for a copy or move whose target name is taken, the way desktop
// file managers number them:
//
//   "report.txt"  -> "report (2).txt", "report (3).txt", ...
//   "a.tar.gz"    -> "a (2).tar.gz"      (a compressed archive keeps both suffixes)
//   "Photos"      -> "Photos (2)"        (a folder never has an extension)
//   "Makefile"    -> "Makefile (2)"
//   ".bashrc"     -> ".bashrc (2)"       (a leading dot starts no extension)
//   "v1.2"        -> "v1 (2).2"          (the last dot wins)
//
// The extension starts at the LAST dot that is not the name's first
// character, so the number lands right before what a program reads as the
// type. When that extension is a compression suffix (gz, bz2, xz, zst, ...)
// and the part before it ends in one more short suffix (1 to 4 letters or
// digits, ".tar" above all), both count as one extension, since "a.tar
// (2).gz" would be useless to anyone opening the file by type.
//
// Names are raw bytes; the rule only looks at '.' and ASCII letters, so it
// is safe for any encoding.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace nxfv {

// Where the extension of a file name starts (the index of its dot), or
// name.size() when it has none.
size_t ExtensionStart(std::string_view name);

// The n-th candidate (n >= 2) for name: "stem (n)ext" for a file, "name (n)"
// for a folder.
std::string NumberedName(std::string_view name, bool isFolder, uint32_t n);

}  // namespace nxfv
