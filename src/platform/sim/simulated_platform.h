// The simulated Windows-like platform: everything in memory, exact and
// deterministic. Tests (ours and hosts') reach each simulated service
// through the typed accessors to set up files or read what was shown.
#pragma once

#include "platform/platform.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_message_box.h"
#include "platform/sim/sim_services.h"

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

  SimFileSystem& SimFiles() { return files_; }
  SimTime& SimClock() { return time_; }
  SimLocale& SimLocaleService() { return locale_; }
  SimResources& SimStrings() { return resources_; }
  SimRegistry& SimTypes() { return registry_; }
  SimIcons& SimIconList() { return icons_; }
  SimMessageBox& SimBoxes() { return messageBox_; }
  SimUi& SimWindow() { return ui_; }
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
  std::vector<std::string> drives_{"C:\\"};
};

}  // namespace nxfv
