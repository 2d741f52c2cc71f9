// The Linux platform as a Qt program runs it: the file clipboard is the
// system clipboard (QtFileClipboard), the control's busy pointer becomes
// Qt's wait cursor, and the platform's timers and change notifier are
// driven by the Qt event loop (LinuxEventPump), so timers fire and
// auto-refresh works while the window is up.
//
// Threading: the GUI thread only; create it after the QApplication.
#pragma once

#include <QObject>
#include <QPointer>
#include <QProgressDialog>
#include <functional>
#include <memory>

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

// The file operations' questions, progress and failures as Qt dialogs over
// a parent window: a yes/no box per question, a progress dialog with Cancel
// for long operations, a warning per failed item.
class QtFileOperationDialogs : public FileOperationHost {
 public:
  explicit QtFileOperationDialogs(QWidget* parent) : parent_(parent) {}
  ~QtFileOperationDialogs() override;
  bool Ask(FileOperationQuestion question, const std::string& text) override;
  bool Progress(const FileOperationProgress& progress) override;
  void Failed(const std::string& path, const std::string& reason) override;

 private:
  QPointer<QWidget> parent_;
  QPointer<QProgressDialog> progress_;
};

class QtLinuxPlatform : public LinuxPlatform {
 public:
  ~QtLinuxPlatform() override;
  FileClipboardService& Clipboard() override { return clipboard_; }
  UiService& Ui() override { return ui_; }
  QtUiService& QtUi() { return ui_; }

  // Shows the control's message boxes and the file operations' questions,
  // progress and failures in modal dialogs over parent. Off by default: a
  // program without a user at the screen (a test) keeps the platform's
  // behaviour, where boxes go to standard error and every question is
  // answered "no". parent may go away first; dialogs then have no parent.
  void UseDialogs(QWidget* parent);

 private:
  QtFileClipboard clipboard_;
  QtUiService ui_;
  std::unique_ptr<QtFileOperationDialogs> dialogs_;
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
