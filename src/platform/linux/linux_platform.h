// The real Linux platform: "/" paths, the process locale, real files.
// A host loop polls PollableTimers().PollFd() and PollableNotifier().PollFd() and
// calls the matching Dispatch() when one is readable.
#pragma once

#include "nxfv/platform/host_folder_picker.h"
#include "nxfv/platform/in_process_clipboard.h"
#include "nxfv/platform/linux/linux_change_notifier.h"
#include "nxfv/platform/linux/linux_file_operations.h"
#include "nxfv/platform/linux/linux_file_system.h"
#include "nxfv/platform/linux/linux_launcher.h"
#include "nxfv/platform/linux/linux_locale_time.h"
#include "nxfv/platform/linux/linux_shell_services.h"
#include "nxfv/platform/linux/linux_timers.h"
#include "nxfv/platform/platform.h"

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
  TimerService& Timers() override { return timers_; }
  ChangeNotifierService& ChangeNotifier() override { return notifier_; }
  FileClipboardService& Clipboard() override { return clipboard_; }
  LauncherService& Launcher() override { return launcher_; }
  FolderPickerService& FolderPicker() override { return picker_; }
  FileOperationService& FileOperations() override { return fileOperations_; }

  LinuxMessageBox& MessageBoxHandler() { return messageBox_; }
  LinuxTimers& PollableTimers() { return timers_; }
  LinuxChangeNotifier& PollableNotifier() { return notifier_; }
  LinuxLauncher& LaunchCommands() { return launcher_; }
  HostFolderPicker& FolderPickerHandler() { return picker_; }

 private:
  LinuxFileSystem files_;
  LinuxTime time_;
  LinuxLocale locale_;
  LinuxResources resources_;
  LinuxMimeTypes types_;
  LinuxIcons icons_;
  LinuxMessageBox messageBox_;
  LinuxUi ui_;
  LinuxTimers timers_;
  LinuxChangeNotifier notifier_;
  InProcessFileClipboard clipboard_;
  LinuxLauncher launcher_;
  HostFolderPicker picker_;
  LinuxFileOperations fileOperations_{messageBox_};  // failures without a host go to the error box
};

}  // namespace nxfv
