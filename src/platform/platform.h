// Platform: one object bundling every OS service the control uses, plus the
// path syntax of the platform. Two implementations: SimulatedPlatform (in
// memory, Windows rules, for tests) and LinuxPlatform (the real one).
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "nxfv/platform/change_notifier.h"
#include "nxfv/platform/file_clipboard.h"
#include "nxfv/platform/file_operation_service.h"
#include "nxfv/platform/folder_picker.h"
#include "nxfv/platform/launcher.h"
#include "nxfv/platform/services.h"
#include "nxfv/platform/timer_service.h"

namespace nxfv {

class Platform {
 public:
  virtual ~Platform() = default;

  // Path syntax.
  virtual char Separator() const = 0;
  // The root of a path: "C:\" for "C:\x\y" on Windows rules, "/" on Linux.
  virtual std::string RootOf(const std::string& path) const = 0;
  virtual std::vector<std::string> Drives() = 0;
  virtual std::string DefaultStartFolder() = 0;
  // Whether path names compare without regard to case.
  virtual bool PathsIgnoreCase() const = 0;

  virtual FileSystemService& Files() = 0;
  virtual TimeService& Time() = 0;
  virtual LocaleService& Locale() = 0;
  virtual ResourceService& Resources() = 0;
  virtual TypeRegistryService& Registry() = 0;
  virtual IconService& Icons() = 0;
  virtual MessageBoxService& MessageBox() = 0;
  virtual UiService& Ui() = 0;
  virtual TimerService& Timers() = 0;
  virtual ChangeNotifierService& ChangeNotifier() = 0;
  virtual FileClipboardService& Clipboard() = 0;
  virtual LauncherService& Launcher() = 0;
  virtual FolderPickerService& FolderPicker() = 0;
  virtual FileOperationService& FileOperations() = 0;
};

using PlatformRef = std::shared_ptr<Platform>;

// The platform that objects created without one use (collections made by a
// host, helper routines). Per thread; by default a fresh SimulatedPlatform.
Platform& ActivePlatform();
PlatformRef ActivePlatformRef();
void SetActivePlatform(PlatformRef platform);

// Makes platform the active one for the lifetime of the guard.
class ScopedActivePlatform {
 public:
  explicit ScopedActivePlatform(PlatformRef platform);
  ~ScopedActivePlatform();
  ScopedActivePlatform(const ScopedActivePlatform&) = delete;
  ScopedActivePlatform& operator=(const ScopedActivePlatform&) = delete;

 private:
  PlatformRef previous_;
};

}  // namespace nxfv
