#include "nxfv/control/text_property_bag.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace nxfv {
namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::string TextPropertyBag::Escape(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '%': out += "%25"; break;
      case '\r': out += "%0D"; break;
      case '\n': out += "%0A"; break;
      case '\0': out += "%00"; break;
      default: out += c;
    }
  }
  return out;
}

std::string TextPropertyBag::Unescape(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && text.size() - i > 2) {
      const int hi = HexDigit(text[i + 1]), lo = HexDigit(text[i + 2]);
      if (hi >= 0 && lo >= 0) {
        out += static_cast<char>((hi << 4) | lo);
        i += 2;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}

TextPropertyBag TextPropertyBag::FromText(std::string_view text) {
  TextPropertyBag bag;
  const size_t firstEnd = text.find('\n');
  bag.crlf_ = firstEnd != std::string_view::npos && firstEnd > 0 && text[firstEnd - 1] == '\r';
  bag.finalNewline_ = text.empty() || text.back() == '\n';
  size_t at = 0;
  while (at < text.size()) {
    size_t end = text.find('\n', at);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(at, end - at);
    at = end + 1;
    if (bag.crlf_ && !line.empty() && line.back() == '\r') line.remove_suffix(1);
    Line l;
    const size_t eq = line.find('=');
    if (eq != std::string_view::npos) {
      l.entry = true;
      l.key = std::string(line.substr(0, eq));
      l.text = std::string(line.substr(eq + 1));
    } else {
      l.text = std::string(line);
    }
    bag.lines_.push_back(std::move(l));
  }
  return bag;
}

std::string TextPropertyBag::ToText() const {
  const char* eol = crlf_ ? "\r\n" : "\n";
  std::string out;
  for (size_t i = 0; i < lines_.size(); ++i) {
    const Line& l = lines_[i];
    out += l.entry ? l.key + "=" + l.text : l.text;
    if (i + 1 < lines_.size() || finalNewline_) out += eol;
  }
  return out;
}

bool TextPropertyBag::LoadFile(const std::string& path, std::string& error) {
  *this = TextPropertyBag();
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = "cannot read " + path;
    return false;
  }
  std::string text;
  char buffer[4096];
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
    if (text.size() + static_cast<size_t>(in.gcount()) > kMaxFileBytes) {
      error = path + " is larger than " + std::to_string(kMaxFileBytes) + " bytes";
      return false;
    }
    text.append(buffer, static_cast<size_t>(in.gcount()));
  }
  if (in.bad()) {
    error = "cannot read " + path;
    return false;
  }
  *this = FromText(text);
  return true;
}

bool TextPropertyBag::SaveFile(const std::string& path, std::string& error) const {
  const std::string temp = path + ".tmp-nxfv";
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    const std::string text = ToText();
    if (!out || !out.write(text.data(), static_cast<std::streamsize>(text.size())) || !out.flush()) {
      std::remove(temp.c_str());
      error = "cannot write " + temp;
      return false;
    }
  }
  if (std::rename(temp.c_str(), path.c_str()) != 0) {
    std::remove(temp.c_str());
    error = "cannot replace " + path;
    return false;
  }
  return true;
}

TextPropertyBag::Line* TextPropertyBag::FindEntry(const std::string& key) {
  for (Line& l : lines_)
    if (l.entry && l.key == key) return &l;
  return nullptr;
}

Variant TextPropertyBag::ReadProperty(const std::string& key, const Variant& defaultValue) {
  const Line* l = FindEntry(key);
  return l ? Variant(Unescape(l->text)) : defaultValue;
}

void TextPropertyBag::WriteProperty(const std::string& key, const Variant& value, const Variant& /*defaultValue*/) {
  std::string text = Escape(value.AsString());
  if (Line* l = FindEntry(key)) {
    l->text = std::move(text);
    return;
  }
  if (!finalNewline_ && !lines_.empty()) finalNewline_ = true;
  lines_.push_back(Line{true, key, std::move(text)});
}

}  // namespace nxfv
