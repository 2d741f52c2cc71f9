#include "nxfv/platform/linux/mime_database.h"

#include <dirent.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "nxfv/platform/utf8.h"

namespace nxfv {
namespace {

// Reads a whole (small, local) database file; "" when missing.
std::string ReadTextFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return {};
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// Calls f(line) for every line of text, without the line break.
template <typename F>
void ForEachLine(std::string_view text, F&& f) {
  while (!text.empty()) {
    const size_t eol = text.find('\n');
    std::string_view line = text.substr(0, eol);
    text = eol == std::string_view::npos ? std::string_view{} : text.substr(eol + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    f(line);
  }
}

// Splits at the first `sep`; false when there is none.
bool SplitAt(std::string_view text, char sep, std::string_view& head, std::string_view& tail) {
  const size_t at = text.find(sep);
  if (at == std::string_view::npos) return false;
  head = text.substr(0, at);
  tail = text.substr(at + 1);
  return true;
}

bool IsTypeChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("!#$&^_.+-").find(c) != std::string_view::npos;
}

bool ParseInt(std::string_view text, int& value) {
  if (text.empty() || text.size() > 6) return false;
  value = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
    value = value * 10 + (c - '0');
  }
  return true;
}

std::string FirstPlainComment(std::string_view xml);

// Records type's comment for every <mime-type type="..."> of a package file.
void CollectPackageComments(std::string_view xml, std::unordered_map<std::string, std::string>& out) {
  constexpr std::string_view kOpen = "<mime-type type=\"";
  for (size_t at = xml.find(kOpen); at != std::string_view::npos; at = xml.find(kOpen, at)) {
    at += kOpen.size();
    const size_t quote = xml.find('"', at);
    if (quote == std::string_view::npos) return;
    const std::string type(xml.substr(at, quote - at));
    const size_t end = xml.find("</mime-type>", quote);
    const std::string_view body = xml.substr(quote, end == std::string_view::npos ? std::string_view::npos : end - quote);
    std::string comment = FirstPlainComment(body);
    if (!comment.empty()) out.emplace(type, std::move(comment));
  }
}

// Decodes the five XML entities and numeric character references; anything
// else stays as written.
std::string DecodeXmlText(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    if (text[i] != '&') {
      out += text[i++];
      continue;
    }
    const size_t semi = text.find(';', i);
    if (semi == std::string_view::npos || semi - i > 10) {
      out += text[i++];
      continue;
    }
    const std::string_view name = text.substr(i + 1, semi - i - 1);
    char32_t cp = 0;
    if (name == "amp") cp = '&';
    else if (name == "lt") cp = '<';
    else if (name == "gt") cp = '>';
    else if (name == "quot") cp = '"';
    else if (name == "apos") cp = '\'';
    else if (name.size() > 1 && name[0] == '#') {
      const bool hex = name[1] == 'x' || name[1] == 'X';
      const std::string digits(name.substr(hex ? 2 : 1));
      char* end = nullptr;
      const unsigned long v = digits.empty() ? 0 : std::strtoul(digits.c_str(), &end, hex ? 16 : 10);
      if (end != nullptr && *end == '\0' && v > 0 && v <= 0x10FFFF && !(v >= 0xD800 && v <= 0xDFFF))
        cp = static_cast<char32_t>(v);
    }
    if (cp == 0) {
      out += text[i++];
      continue;
    }
    AppendUtf8(out, cp);
    i = semi + 1;
  }
  return out;
}

// The text of the first <comment> without attributes (the English one).
std::string FirstPlainComment(std::string_view xml) {
  constexpr std::string_view kOpen = "<comment>";
  const size_t start = xml.find(kOpen);
  if (start == std::string_view::npos) return {};
  const size_t textStart = start + kOpen.size();
  const size_t end = xml.find("</comment>", textStart);
  if (end == std::string_view::npos) return {};
  return DecodeXmlText(xml.substr(textStart, end - textStart));
}

// A well-formed "media/subtype"; also keeps paths built from it inside the
// database folders.
bool IsMimeTypeName(std::string_view text) {
  std::string_view media, sub;
  if (!SplitAt(text, '/', media, sub) || media.empty() || sub.empty()) return false;
  if (media[0] == '.' || sub[0] == '.') return false;
  for (char c : media)
    if (!IsTypeChar(c)) return false;
  for (char c : sub)
    if (!IsTypeChar(c)) return false;
  return true;
}

}  // namespace

MimeDatabase::MimeDatabase(std::vector<std::string> dataDirs) {
  for (std::string& dir : dataDirs) {
    while (dir.size() > 1 && dir.back() == '/') dir.pop_back();
    mimeDirs_.push_back(dir + "/mime");
  }
}

std::vector<std::string> MimeDatabase::DataDirsFromEnvironment() {
  std::vector<std::string> dirs;
  // Relative entries are ignored, as the base-directory rules ask.
  auto add = [&dirs](std::string_view dir) {
    if (!dir.empty() && dir[0] == '/') dirs.emplace_back(dir);
  };
  if (const char* home = std::getenv("XDG_DATA_HOME"); home != nullptr && *home != '\0') add(home);
  else if (const char* h = std::getenv("HOME"); h != nullptr && *h != '\0') add(std::string(h) + "/.local/share");
  std::string_view list = "/usr/local/share/:/usr/share/";
  if (const char* env = std::getenv("XDG_DATA_DIRS"); env != nullptr && *env != '\0') list = env;
  for (std::string_view head, tail; SplitAt(list, ':', head, tail); list = tail) add(head);
  add(list);
  return dirs;
}

MimeDatabase& MimeDatabase::Shared() {
  // Never destroyed: icon and type lookups may run during static teardown.
  static MimeDatabase* shared = new MimeDatabase(DataDirsFromEnvironment());
  return *shared;
}

void MimeDatabase::LoadGlobs(const std::string& path, std::map<std::string, bool, std::less<>>& noGlobs) {
  std::map<std::string, bool, std::less<>> noGlobsHere;
  ForEachLine(ReadTextFile(path), [&](std::string_view line) {
    if (line.empty() || line[0] == '#') return;
    std::string_view weightText, rest, type, globAndFlags, glob, flags;
    int weight = 0;
    if (!SplitAt(line, ':', weightText, rest) || !ParseInt(weightText, weight)) return;
    if (!SplitAt(rest, ':', type, globAndFlags)) return;
    if (!SplitAt(globAndFlags, ':', glob, flags)) glob = globAndFlags;
    // A higher-priority folder can drop every glob of a type below it.
    if (glob == "__NOGLOBS__") {
      noGlobsHere.emplace(type, true);
      return;
    }
    if (noGlobs.find(type) != noGlobs.end()) return;
    if (glob.size() < 3 || glob.substr(0, 2) != "*.") return;
    const std::string_view extension = glob.substr(2);
    if (extension.find_first_of("*?[") != std::string_view::npos) return;
    bool caseSensitive = false;
    for (std::string_view flag, more; !flags.empty(); flags = more) {
      if (!SplitAt(flags, ',', flag, more)) {
        flag = flags;
        more = {};
      }
      if (flag == "cs") caseSensitive = true;
    }
    GlobChoice candidate{weight, caseSensitive, glob.size(), std::string(type)};
    auto& table = caseSensitive ? caseSensitive_ : caseInsensitive_;
    const std::string key = caseSensitive ? std::string(extension) : Utf8Lower(extension);
    auto [it, inserted] = table.emplace(key, candidate);
    if (!inserted && (candidate.weight > it->second.weight ||
                      (candidate.weight == it->second.weight && candidate.globLength > it->second.globLength)))
      it->second = std::move(candidate);
  });
  noGlobs.merge(noGlobsHere);
}

void MimeDatabase::LoadTables() {
  std::map<std::string, bool, std::less<>> noGlobs;
  for (const std::string& dir : mimeDirs_) {
    LoadGlobs(dir + "/globs2", noGlobs);
    ForEachLine(ReadTextFile(dir + "/aliases"), [&](std::string_view line) {
      std::string_view alias, type;
      if (SplitAt(line, ' ', alias, type) && !alias.empty() && !type.empty()) aliases_.emplace(alias, type);
    });
    ForEachLine(ReadTextFile(dir + "/generic-icons"), [&](std::string_view line) {
      std::string_view type, icon;
      if (SplitAt(line, ':', type, icon) && !type.empty() && !icon.empty()) genericIcons_.emplace(type, icon);
    });
  }
}

std::string MimeDatabase::TypeForExtension(std::string_view extension) {
  std::call_once(tablesOnce_, [this] { LoadTables(); });
  if (extension.empty()) return {};
  const GlobChoice* best = nullptr;
  if (auto it = caseSensitive_.find(std::string(extension)); it != caseSensitive_.end()) best = &it->second;
  if (auto it = caseInsensitive_.find(Utf8Lower(extension)); it != caseInsensitive_.end()) {
    const GlobChoice& c = it->second;
    // On equal weight the case-sensitive match (found first) stays.
    if (best == nullptr || c.weight > best->weight) best = &c;
  }
  return best != nullptr ? best->type : std::string();
}

std::string MimeDatabase::CanonicalType(std::string_view mimeType) {
  std::call_once(tablesOnce_, [this] { LoadTables(); });
  const auto it = aliases_.find(std::string(mimeType));
  return it != aliases_.end() ? it->second : std::string(mimeType);
}

std::string MimeDatabase::ReadComment(const std::string& mimeType) {
  for (const std::string& dir : mimeDirs_) {
    const std::string xml = ReadTextFile(dir + "/" + mimeType + ".xml");
    if (xml.empty()) continue;
    if (std::string comment = FirstPlainComment(xml); !comment.empty()) return comment;
  }
  return CommentFromPackages(mimeType);
}

std::string MimeDatabase::CommentFromPackages(const std::string& mimeType) {
  // Only reached for types without a compiled per-type file (a database
  // that was never updated); the package sources are read once.
  if (!packagesLoaded_) {
    packagesLoaded_ = true;
    for (const std::string& dir : mimeDirs_) {
      const std::string packages = dir + "/packages";
      DIR* d = opendir(packages.c_str());
      if (d == nullptr) continue;
      std::vector<std::string> files;
      while (const dirent* e = readdir(d)) {
        const std::string_view name = e->d_name;
        if (name.size() > 4 && name.substr(name.size() - 4) == ".xml") files.emplace_back(name);
      }
      closedir(d);
      for (const std::string& file : files) CollectPackageComments(ReadTextFile(packages + "/" + file), packageComments_);
    }
  }
  const auto it = packageComments_.find(mimeType);
  return it != packageComments_.end() ? it->second : std::string();
}

std::string MimeDatabase::Comment(std::string_view mimeType) {
  if (!IsMimeTypeName(mimeType)) return {};
  const std::string type = CanonicalType(mimeType);
  if (!IsMimeTypeName(type)) return {};
  std::lock_guard<std::mutex> lock(commentsMutex_);
  if (auto it = comments_.find(type); it != comments_.end()) return it->second;
  std::string comment = ReadComment(type);
  comments_.emplace(type, comment);
  return comment;
}

std::string MimeDatabase::GenericIcon(std::string_view mimeType) {
  const std::string type = CanonicalType(mimeType);
  if (auto it = genericIcons_.find(type); it != genericIcons_.end()) return it->second;
  if (!IsMimeTypeName(type)) return "application-x-generic";
  const std::string_view media = std::string_view(type).substr(0, type.find('/'));
  for (std::string_view known : {"text", "image", "audio", "video", "font"})
    if (media == known) return std::string(media) + "-x-generic";
  return "application-x-generic";
}

}  // namespace nxfv
