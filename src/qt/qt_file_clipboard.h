// QtFileClipboard: the platform's file clipboard backed by the system
// clipboard (QClipboard), so copied and cut files reach other programs and
// come back from them.
//
// Formats written: text/uri-list, x-special/gnome-copied-files (with the
// copy/cut mark) and text/plain (the paths, one a line). Read: the
// gnome-copied-files list when present (it carries the mark), else
// text/uri-list as a copy. Paths are the library's text on the Linux
// platform: names with bytes that are not UTF-8 are escaped ("\xHH") there
// and become raw bytes on the clipboard, and the other way round.
//
// Threading: the GUI thread only (QClipboard's rule). Needs a
// QGuiApplication while it is used.
#pragma once

#include "nxfv/platform/file_clipboard.h"

namespace nxfv::qt {

class QtFileClipboard : public FileClipboardService {
 public:
  void SetFiles(const std::vector<std::string>& paths, bool cut) override;
  bool GetFiles(std::vector<std::string>& paths, bool& cut) const override;
  void Clear() override;
  bool HasFiles() const override;

  static constexpr const char* kGnomeCopiedFiles = "x-special/gnome-copied-files";
};

}  // namespace nxfv::qt
