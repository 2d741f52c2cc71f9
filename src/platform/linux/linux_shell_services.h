// The Linux platform's type names, icons, message box and window services.
#pragma once

#include <functional>
#include <string>

#include "platform/services.h"

namespace nxfv {

// Type names from the shared-mime-info database.
class LinuxMimeTypes : public TypeRegistryService {
 public:
  bool ClassesRootDefault(const std::string& key, std::string& value) override;
};

// A process-wide table: each distinct icon name gets a stable index.
class LinuxIcons : public IconService {
 public:
  int32_t SysIconIndex(const std::string& path, uint32_t attributes, uint32_t flags) override;
};

// Hands every box to a host-supplied handler; by default prints
// "nxfv: [TITLE] TEXT" on standard error and answers as a box without a
// user would (Cancel where there is one, OK otherwise).
class LinuxMessageBox : public MessageBoxService {
 public:
  using Handler = std::function<int32_t(const std::string& text, int32_t style, const std::string& title)>;
  int32_t Show(const std::string& text, int32_t style, const std::string& title) override;
  void SetHandler(Handler h) { handler_ = std::move(h); }

 private:
  Handler handler_;
};

class LinuxUi : public UiService {
 public:
  void LockWindowUpdate(bool) override {}
  void SetMousePointer(int32_t pointer) override { pointer_ = pointer; }
  int32_t MousePointer() override { return pointer_; }

 private:
  int32_t pointer_ = 0;
};


}  // namespace nxfv
