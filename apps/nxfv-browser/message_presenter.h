// MessagePresenter: where the control's message boxes go in the browser.
//
// The control reports failures (a path that does not exist, a damaged
// archive, a refused rename) through the platform's message box. In an
// interactive window they become modal dialogs; in unattended runs
// (--screenshot, --bench, tests) nobody could press a button, so the box is
// answered the way an unattended box is and only shown in the status bar.
// Either way the last box is kept and announced, so the window and its tests
// can tell what went wrong.
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>

class QStatusBar;
class QWidget;

namespace nxfv {
class LinuxMessageBox;
}

namespace nxfv::browser {

class MessagePresenter : public QObject {
  Q_OBJECT

 public:
  // Takes over box's handler; box must outlive the presenter, and the
  // presenter must be destroyed first (it clears the handler).
  MessagePresenter(LinuxMessageBox& box, QWidget* window, QStatusBar* statusBar, bool interactive);
  ~MessagePresenter() override;

  QString lastTitle() const { return lastTitle_; }
  QString lastText() const { return lastText_; }
  int boxCount() const { return count_; }

 signals:
  void messageShown(const QString& title, const QString& text);

 private:
  int32_t Show(const QString& text, int32_t style, const QString& title);

  LinuxMessageBox& box_;
  QWidget* window_;
  QStatusBar* statusBar_;
  bool interactive_;
  QString lastTitle_, lastText_;
  int count_ = 0;
};

}  // namespace nxfv::browser
