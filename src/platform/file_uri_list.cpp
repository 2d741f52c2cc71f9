#include "nxfv/platform/file_uri_list.h"

namespace nxfv {

namespace {

bool Unreserved(unsigned char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
         c == '_' || c == '~';
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// Splits text into lines at LF, dropping a CR before it.
std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return lines;
}

}  // namespace

std::string PathToFileUri(std::string_view path) {
  if (path.empty() || path.front() != '/') return "";
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string uri = "file://";
  for (const char ch : path) {
    const auto c = static_cast<unsigned char>(ch);
    if (Unreserved(c) || c == '/') {
      uri += ch;
    } else {
      uri += '%';
      uri += kHex[c >> 4];
      uri += kHex[c & 0xF];
    }
  }
  return uri;
}

bool FileUriToPath(std::string_view uri, std::string& path) {
  path.clear();
  constexpr std::string_view kScheme = "file://";
  if (uri.size() < kScheme.size()) return false;
  for (size_t i = 0; i < kScheme.size(); ++i) {  // the scheme ignores case
    const char c = uri[i] >= 'A' && uri[i] <= 'Z' ? static_cast<char>(uri[i] - 'A' + 'a') : uri[i];
    if (c != kScheme[i]) return false;
  }
  uri.remove_prefix(kScheme.size());
  if (uri.starts_with("localhost/")) uri.remove_prefix(9);
  if (uri.empty() || uri.front() != '/') return false;  // another host
  std::string out;
  for (size_t i = 0; i < uri.size(); ++i) {
    if (uri[i] != '%') {
      out += uri[i];
      continue;
    }
    const int hi = i + 2 < uri.size() ? HexValue(uri[i + 1]) : -1;
    const int lo = hi >= 0 ? HexValue(uri[i + 2]) : -1;
    if (lo < 0 || (hi == 0 && lo == 0)) return false;
    out += static_cast<char>(hi * 16 + lo);
    i += 2;
  }
  path = std::move(out);
  return true;
}

std::string EncodeUriList(const std::vector<std::string>& paths) {
  std::string text;
  for (const std::string& p : paths)
    if (std::string uri = PathToFileUri(p); !uri.empty()) text += uri + "\r\n";
  return text;
}

std::vector<std::string> DecodeUriList(std::string_view text) {
  std::vector<std::string> paths;
  std::string path;
  for (const std::string_view line : Lines(text))
    if (!line.empty() && line.front() != '#' && FileUriToPath(line, path)) paths.push_back(path);
  return paths;
}

std::string EncodeGnomeCopiedFiles(const std::vector<std::string>& paths, bool cut) {
  std::string text = cut ? "cut" : "copy";
  for (const std::string& p : paths)
    if (std::string uri = PathToFileUri(p); !uri.empty()) text += "\n" + uri;
  return text;
}

bool DecodeGnomeCopiedFiles(std::string_view text, std::vector<std::string>& paths, bool& cut) {
  paths.clear();
  cut = false;
  const std::vector<std::string_view> lines = Lines(text);
  if (lines.empty() || (lines[0] != "copy" && lines[0] != "cut")) return false;
  std::string path;
  for (size_t i = 1; i < lines.size(); ++i)
    if (FileUriToPath(lines[i], path)) paths.push_back(path);
  cut = !paths.empty() && lines[0] == "cut";
  return !paths.empty();
}

}  // namespace nxfv
