// The real Linux platform: "/" paths, the process locale, real files.
#pragma once

#include "platform/linux/linux_file_system.h"
#include "platform/linux/linux_locale_time.h"
#include "platform/linux/linux_shell_services.h"
#include "platform/platform.h"

namespace nxfv {

class LinuxPlatform : public Platform {
 public:
  LinuxPlatform();

  char Separator() const override { return '/'; }
  std::string RootOf(const std::string&) const override { return "/"; }
  std::vector<std::string> Drives() override;
  std::string DefaultStartFolder() override;
  bool PathsIgnoreCase() const override { return false; }

  FileSystemService& Files() override { return files_; }
  TimeService& Time() override { return time_; }
  LocaleService& Locale() override { return locale_; }
  ResourceService& Resources() override { return resources_; }
  TypeRegistryService& Registry() override { return types_; }
  IconService& Icons() override { return icons_; }
  MessageBoxService& MessageBox() override { return messageBox_; }
  UiService& Ui() override { return ui_; }

  LinuxMessageBox& MessageBoxHandler() { return messageBox_; }

 private:
  LinuxFileSystem files_;
  LinuxTime time_;
  LinuxLocale locale_;
  LinuxResources resources_;
  LinuxMimeTypes types_;
  LinuxIcons icons_;
  LinuxMessageBox messageBox_;
  LinuxUi ui_;
};

}  // namespace nxfv
