#include "message_presenter.h"

#include <QMessageBox>
#include <QStatusBar>

#include "nxfv/platform/linux/linux_shell_services.h"

namespace nxfv::browser {
namespace {

// The control's box styles and answers (the classic message box numbers):
// the low nibble picks the buttons, the next one the icon.
enum : int32_t { kOkOnly = 0, kOkCancel = 1, kAbortRetryIgnore = 2, kYesNoCancel = 3, kYesNo = 4, kRetryCancel = 5 };
enum : int32_t { kIconCritical = 16, kIconQuestion = 32, kIconExclamation = 48, kIconInformation = 64 };
enum : int32_t { kAnsOk = 1, kAnsCancel = 2, kAnsAbort = 3, kAnsRetry = 4, kAnsIgnore = 5, kAnsYes = 6, kAnsNo = 7 };

struct ButtonAnswer {
  QMessageBox::StandardButton button;
  int32_t answer;
};

QList<ButtonAnswer> ButtonsOf(int32_t style) {
  switch (style & 0x0F) {
    case kOkCancel: return {{QMessageBox::Ok, kAnsOk}, {QMessageBox::Cancel, kAnsCancel}};
    case kAbortRetryIgnore:
      return {{QMessageBox::Abort, kAnsAbort}, {QMessageBox::Retry, kAnsRetry}, {QMessageBox::Ignore, kAnsIgnore}};
    case kYesNoCancel:
      return {{QMessageBox::Yes, kAnsYes}, {QMessageBox::No, kAnsNo}, {QMessageBox::Cancel, kAnsCancel}};
    case kYesNo: return {{QMessageBox::Yes, kAnsYes}, {QMessageBox::No, kAnsNo}};
    case kRetryCancel: return {{QMessageBox::Retry, kAnsRetry}, {QMessageBox::Cancel, kAnsCancel}};
    default: return {{QMessageBox::Ok, kAnsOk}};
  }
}

QMessageBox::Icon IconOf(int32_t style) {
  switch (style & 0xF0) {
    case kIconCritical: return QMessageBox::Critical;
    case kIconQuestion: return QMessageBox::Question;
    case kIconExclamation: return QMessageBox::Warning;
    case kIconInformation: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
  }
}

}  // namespace

MessagePresenter::MessagePresenter(LinuxMessageBox& box, QWidget* window, QStatusBar* statusBar, bool interactive)
    : QObject(window), box_(box), window_(window), statusBar_(statusBar), interactive_(interactive) {
  box_.SetHandler([this](const std::string& text, int32_t style, const std::string& title) {
    return Show(QString::fromStdString(text), style, QString::fromStdString(title));
  });
}

MessagePresenter::~MessagePresenter() { box_.SetHandler(nullptr); }

int32_t MessagePresenter::Show(const QString& text, int32_t style, const QString& title) {
  lastTitle_ = title;
  lastText_ = text;
  ++count_;
  if (statusBar_) statusBar_->showMessage(QString(text).replace(u'\n', u' '), 10000);
  emit messageShown(title, text);
  // A damaged archive can raise the same box thousands of times; after
  // the first the status bar says it and nobody has to click them away.
  if (!interactive_ || box_.RepeatCount() > 0) return LinuxMessageBox::UnattendedAnswer(style);
  QMessageBox dialog(IconOf(style), title, text, QMessageBox::NoButton, window_);
  const QList<ButtonAnswer> buttons = ButtonsOf(style);
  for (const ButtonAnswer& b : buttons) dialog.addButton(b.button);
  dialog.exec();
  const auto clicked = dialog.standardButton(dialog.clickedButton());
  for (const ButtonAnswer& b : buttons)
    if (b.button == clicked) return b.answer;
  // Closed with Escape or the window's close button.
  return LinuxMessageBox::UnattendedAnswer(style);
}

}  // namespace nxfv::browser
