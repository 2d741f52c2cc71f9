// The simulated Windows-like platform: everything in memory, exact and
// deterministic. Tests (ours and hosts') reach each simulated service
// through the typed accessors to set up files or read what was shown.
#pragma once

#include "nxfv/platform/in_process_clipboard.h"
#include "nxfv/platform/platform.h"
#include "nxfv/platform/sim/sim_change_notifier.h"
#include "nxfv/platform/sim/sim_file_operations.h"
#include "nxfv/platform/sim/sim_file_system.h"
#include "nxfv/platform/sim/sim_folder_picker.h"
#include "nxfv/platform/sim/sim_launcher.h"
#include "nxfv/platform/sim/sim_message_box.h"
#include "nxfv/platform/sim/sim_services.h"
#include "nxfv/platform/sim/sim_timers.h"

namespace nxfv {

class SimulatedPlatform : public Platform {
 public:
  SimulatedPlatform();

  char Separator() const override { return '\\'; }
  std::string RootOf(const std::string& path) const override;
  std::vector<std::string> Drives() override { return drives_; }
  std::string DefaultStartFolder() override { return "c:\\"; }
  bool PathsIgnoreCase() const override { return true; }

  FileSystemService& Files() override { return files_; }
  TimeService& Time() override { return time_; }
  LocaleService& Locale() override { return locale_; }
  ResourceService& Resources() override { return resources_; }
  TypeRegistryService& Registry() override { return registry_; }
  IconService& Icons() override { return icons_; }
  MessageBoxService& MessageBox() override { return messageBox_; }
  UiService& Ui() override { return ui_; }
  TimerService& Timers() override { return timers_; }
  ChangeNotifierService& ChangeNotifier() override { return notifier_; }
  FileClipboardService& Clipboard() override { return clipboard_; }
  LauncherService& Launcher() override { return launcher_; }
  FolderPickerService& FolderPicker() override { return picker_; }
  FileOperationService& FileOperations() override { return fileOperations_; }

  SimFileSystem& SimFiles() { return files_; }
  SimTime& SimClock() { return time_; }
  SimLocale& SimLocaleService() { return locale_; }
  SimResources& SimStrings() { return resources_; }
  SimRegistry& SimTypes() { return registry_; }
  SimIcons& SimIconList() { return icons_; }
  SimMessageBox& SimBoxes() { return messageBox_; }
  SimUi& SimWindow() { return ui_; }
  SimTimers& SimTimerQueue() { return timers_; }
  SimChangeNotifier& SimNotifier() { return notifier_; }
  SimLauncher& SimLaunches() { return launcher_; }
  SimFolderPicker& SimPicker() { return picker_; }
  SimFileOperations& SimFileOps() { return fileOperations_; }
  void SetDrives(std::vector<std::string> drives) { drives_ = std::move(drives); }

 private:
  SimFileSystem files_;
  SimTime time_;
  SimLocale locale_;
  SimResources resources_;
  SimRegistry registry_;
  SimIcons icons_{&files_};
  SimMessageBox messageBox_;
  SimUi ui_;
  SimTimers timers_;
  SimChangeNotifier notifier_{&files_};
  InProcessFileClipboard clipboard_;
  SimLauncher launcher_;
  SimFolderPicker picker_;
  SimFileOperations fileOperations_;
  std::vector<std::string> drives_{"C:\\"};
};

}  // namespace nxfv
