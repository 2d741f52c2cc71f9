// The shared-mime-info database (the freedesktop.org MIME database that
// desktop programs share): extension -> MIME type, MIME type -> English
// comment and generic icon name.
//
// Files read under each data folder's "mime/" directory: globs2 (weighted
// file-name globs), aliases, generic-icons, "<media>/<subtype>.xml" (one per
// type, for comments) and, only when that file is missing, packages/*.xml.
// Data folders are searched in priority order (first = highest): a value in
// an earlier folder wins over the same key in a later one.
//
// Thread safety: every member may be called from any thread. The glob,
// alias and icon tables are loaded once on first use (std::call_once);
// comments are looked up per type and cached under a mutex.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace nxfv {

class MimeDatabase {
 public:
  // dataDirs: folders such as "/usr/share" holding a "mime" subfolder,
  // highest priority first.
  explicit MimeDatabase(std::vector<std::string> dataDirs);

  // The process-wide database of $XDG_DATA_HOME (default ~/.local/share)
  // followed by $XDG_DATA_DIRS (default /usr/local/share:/usr/share).
  static MimeDatabase& Shared();
  static std::vector<std::string> DataDirsFromEnvironment();

  // MIME type of files named "*.<extension>" ("txt" -> "text/plain"); "" when
  // no simple "*.ext" glob names it. Globs without the cs flag match
  // without regard to case. Highest weight wins; on equal weight a
  // case-sensitive glob beats a case-insensitive one, then a longer glob,
  // then the first seen (higher-priority folder, earlier line).
  std::string TypeForExtension(std::string_view extension);
  // English comment of a MIME type or one of its aliases
  // ("text/plain" -> "plain text document"); "" when unknown.
  std::string Comment(std::string_view mimeType);
  // Generic icon name of a MIME type from generic-icons; otherwise by media
  // type ("text-x-generic", "image-x-generic", "audio-x-generic",
  // "video-x-generic", "font-x-generic"), otherwise "application-x-generic".
  std::string GenericIcon(std::string_view mimeType);

 private:
  struct GlobChoice {
    int weight = 0;
    bool caseSensitive = false;
    size_t globLength = 0;
    std::string type;
  };
  void LoadTables();
  void LoadGlobs(const std::string& path, std::map<std::string, bool, std::less<>>& noGlobs);
  std::string CanonicalType(std::string_view mimeType);
  std::string ReadComment(const std::string& mimeType);
  std::string CommentFromPackages(const std::string& mimeType);

  std::vector<std::string> mimeDirs_;  // "<dataDir>/mime"
  std::once_flag tablesOnce_;
  std::unordered_map<std::string, GlobChoice> caseInsensitive_;  // key: lower-cased extension
  std::unordered_map<std::string, GlobChoice> caseSensitive_;    // key: extension as written
  std::unordered_map<std::string, std::string> aliases_;         // alias -> canonical type
  std::unordered_map<std::string, std::string> genericIcons_;    // type -> icon name

  std::mutex commentsMutex_;
  std::unordered_map<std::string, std::string> comments_;  // cached, "" for unknown
  bool packagesLoaded_ = false;
  std::unordered_map<std::string, std::string> packageComments_;
};

}  // namespace nxfv
