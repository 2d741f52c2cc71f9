// The Linux platform as a Qt program runs it: the file clipboard is the
// system clipboard (QtFileClipboard), the control's busy pointer becomes
// Qt's wait cursor, and the platform's timers and change notifier are
// driven by the Qt event loop (LinuxEventPump), so timers fire and
// auto-refresh works while the window is up.
//
// Threading: the GUI thread only; create it after the QApplication.
#pragma once

#include <QObject>
#include <functional>

#include "nxfv/platform/linux/linux_platform.h"
#include "nxfv/qt/qt_file_clipboard.h"

class QSocketNotifier;

namespace nxfv::qt {

// The control's mouse pointer on Qt: 11 (busy) shows the wait cursor as
// an application override cursor until the pointer is set back; the
// window lock is handed to an optional handler.
class QtUiService : public UiService {
 public:
  ~QtUiService() override;
  void LockWindowUpdate(bool lock) override;
  void SetMousePointer(int32_t pointer) override;
  int32_t MousePointer() override { return pointer_; }
  void SetLockHandler(std::function<void(bool)> handler) { lockHandler_ = std::move(handler); }

 private:
  int32_t pointer_ = 0;
  bool overriding_ = false;
  std::function<void(bool)> lockHandler_;
};

class QtLinuxPlatform : public LinuxPlatform {
 public:
  FileClipboardService& Clipboard() override { return clipboard_; }
  UiService& Ui() override { return ui_; }
  QtUiService& QtUi() { return ui_; }

 private:
  QtFileClipboard clipboard_;
  QtUiService ui_;
};

// Watches the poll descriptors of a Linux platform's timer queue and change
// notifier with QSocketNotifier and calls their Dispatch() when one is
// readable. The platform must outlive the pump. Several pumps on one
// platform are harmless (a Dispatch with nothing due does nothing).
class LinuxEventPump : public QObject {
  Q_OBJECT

 public:
  explicit LinuxEventPump(LinuxPlatform& platform, QObject* parent = nullptr);

 private:
  QSocketNotifier* timers_ = nullptr;
  QSocketNotifier* changes_ = nullptr;
};

}  // namespace nxfv::qt
