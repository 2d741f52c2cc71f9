// The Linux platform's smaller services.
#pragma once

#include <functional>
#include <string>

#include "platform/services.h"

namespace nxfv {

// Local time from the process's time zone (TZ / /etc/localtime).
class LinuxTime : public TimeService {
 public:
  bool FileTimeToLocalFileTime(uint64_t utc, uint64_t& local) override;
  bool DosDateTimeToFileTime(uint16_t dosDate, uint16_t dosTime, uint64_t& fileTime) override;
};

// Formats of the process locale (LC_TIME, LC_NUMERIC), read once.
class LinuxLocale : public LocaleService {
 public:
  LinuxLocale();
  const LocaleFormats& Formats() override { return formats_; }
  std::string CharUpper(const std::string& text) override;
  std::string CharLower(const std::string& text) override;
  int32_t MeasureText(const std::string& text, int32_t hdc) override;

 private:
  LocaleFormats formats_;
};

// English captions for the string tables; XDG user directories.
class LinuxResources : public ResourceService {
 public:
  std::optional<std::string> LoadString(const std::string& library, int32_t id) override;
  bool SpecialFolderPath(int32_t csidl, std::string& path) override;
};

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
