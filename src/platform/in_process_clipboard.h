// The file clipboard kept in the process: what both platforms use when no
// window system clipboard backs it.
#pragma once

#include "nxfv/platform/file_clipboard.h"

namespace nxfv {

class InProcessFileClipboard : public FileClipboardService {
 public:
  void SetFiles(const std::vector<std::string>& paths, bool cut) override;
  bool GetFiles(std::vector<std::string>& paths, bool& cut) const override;
  void Clear() override;
  bool HasFiles() const override { return !paths_.empty(); }

 private:
  std::vector<std::string> paths_;
  bool cut_ = false;
};

}  // namespace nxfv
