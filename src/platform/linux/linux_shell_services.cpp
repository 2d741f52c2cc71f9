#include "nxfv/platform/linux/linux_shell_services.h"

#include <sys/stat.h>

#include <cstdio>
#include <string_view>

#include "nxfv/platform/linux/file_name_escape.h"
#include "nxfv/platform/linux/icon_table.h"
#include "nxfv/platform/linux/mime_database.h"

namespace nxfv {
namespace {

// Extension of the last path component: the text after its last ".",
// when that dot is neither missing nor the last character.
std::string_view ExtensionOf(std::string_view path) {
  const size_t slash = path.rfind('/');
  const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
  const size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot + 1 >= name.size()) return {};
  return name.substr(dot + 1);
}

}  // namespace

bool LinuxMimeTypes::ClassesRootDefault(const std::string& key, std::string& value) {
  MimeDatabase& db = database_ != nullptr ? *database_ : MimeDatabase::Shared();
  std::string found;
  if (key.size() > 1 && key[0] == '.') found = db.TypeForExtension(std::string_view(key).substr(1));
  else if (key.find('/') != std::string::npos) found = db.Comment(key);
  if (found.empty()) return false;
  value = std::move(found);
  return true;
}

int32_t LinuxIcons::SysIconIndex(const std::string& path, uint32_t attributes, uint32_t flags) {
  MimeDatabase& db = database_ != nullptr ? *database_ : MimeDatabase::Shared();
  IconTable& table = table_ != nullptr ? *table_ : IconTable::Shared();

  bool folder = (attributes & kAttrDirectory) != 0;
  bool executable = false;
  if ((flags & kShgfiUseFileAttributes) == 0) {
    struct stat st {};
    const std::string raw = UnescapeFileName(path);
    if (raw.empty() || stat(raw.c_str(), &st) != 0) return 0;
    folder = S_ISDIR(st.st_mode);
    executable = S_ISREG(st.st_mode) && (st.st_mode & S_IXUSR) != 0;
  }
  if (folder) return table.IndexOf(kIconFolder);

  const std::string type = db.TypeForExtension(ExtensionOf(path));
  if (!type.empty()) return table.IndexOf(db.GenericIcon(type));
  return table.IndexOf(executable ? kIconExecutable : kIconGenericFile);
}

std::string LinuxMessageBox::FormatLine(const std::string& text, const std::string& title) const {
  std::string line = prefix_.empty() ? std::string() : prefix_ + ": ";
  line += "[" + title + "] ";
  for (char c : text) {
    if (c == '\n') line += "\\n";
    else if (c != '\r') line += c;
  }
  return line;
}

int32_t LinuxMessageBox::UnattendedAnswer(int32_t style) {
  switch (style & 7) {
    case kMbOkCancel:
    case kMbYesNoCancel:
    case kMbRetryCancel:
      return kAnswerCancel;
    case kMbYesNo:
      return kAnswerNo;
    case kMbAbortRetryIgnore:
      return kAnswerAbort;
    default:
      return kAnswerOk;
  }
}

LinuxMessageBox::~LinuxMessageBox() { FlushRepeats(); }

void LinuxMessageBox::FlushRepeats() {
  if (repeats_ == 0 || handler_) return;
  const std::string line = "(repeated " + std::to_string(repeats_) + " times)\n";
  repeats_ = 0;
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
}

int32_t LinuxMessageBox::Show(const std::string& text, int32_t style, const std::string& title) {
  std::string line = FormatLine(text, title) + "\n";
  const bool repeated = style == lastStyle_ && line == lastLine_;
  if (repeated) {
    ++repeats_;
  } else {
    FlushRepeats();
    repeats_ = 0;
    lastLine_ = std::move(line);
    lastStyle_ = style;
  }
  if (handler_) return handler_(text, style, title);
  if (!repeated) {
    std::fwrite(lastLine_.data(), 1, lastLine_.size(), stderr);
    std::fflush(stderr);
  }
  return UnattendedAnswer(style);
}

}  // namespace nxfv
