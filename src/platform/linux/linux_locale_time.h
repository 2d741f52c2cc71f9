// The Linux platform's time, locale and string-table services.
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


}  // namespace nxfv
