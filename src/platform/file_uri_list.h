// The file-list formats Linux file managers exchange through the system
// clipboard and drag and drop, as pure functions so that any front end can
// back the file clipboard with the real one.
//
// Paths here are raw byte strings as the file system spells them (on the
// Linux platform: UnescapeFileName of the library's text, and
// EscapeFileName of what comes back). URIs percent-encode every byte except
// the unreserved ASCII letters, digits, "-._~" and the "/" separators, so
// any byte string survives a round trip:
//   "/tmp/a b%.txt"       <-> "file:///tmp/a%20b%25.txt"
//   "/d/caf\xC3\xA9"      <-> "file:///d/caf%C3%A9"
//
//   text/uri-list:               "file:///a\r\nfile:///b\r\n"
//   x-special/gnome-copied-files: "copy\nfile:///a\nfile:///b" (or "cut\n...")
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nxfv {

// An absolute path -> its file URI; "" for a path not starting with "/".
std::string PathToFileUri(std::string_view path);
// A local file URI ("file:///p" or "file://localhost/p") -> its path; false
// for another scheme or host, a bad "%" escape or an encoded NUL.
bool FileUriToPath(std::string_view uri, std::string& path);

// Paths -> text/uri-list (CRLF after every line). Paths that are not
// absolute are left out.
std::string EncodeUriList(const std::vector<std::string>& paths);
// text/uri-list -> the local paths it names; comment lines ("#..."), blank
// lines and URIs that are not local files are skipped. LF or CRLF.
std::vector<std::string> DecodeUriList(std::string_view text);

// Paths -> x-special/gnome-copied-files: the mark line, then one URI a
// line, no final line break. Paths that are not absolute are left out.
std::string EncodeGnomeCopiedFiles(const std::vector<std::string>& paths, bool cut);
// x-special/gnome-copied-files -> paths and mark; false when the first line
// is not "copy" or "cut" or no local file follows it. LF or CRLF.
bool DecodeGnomeCopiedFiles(std::string_view text, std::vector<std::string>& paths, bool& cut);

}  // namespace nxfv
