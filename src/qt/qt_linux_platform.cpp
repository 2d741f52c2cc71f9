#include "nxfv/qt/qt_linux_platform.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMessageBox>
#include <QSocketNotifier>
#include <algorithm>
#include <vector>

namespace nxfv::qt {
namespace {
constexpr int32_t kBusyPointer = 11;  // the host runtime's hourglass
}

QtUiService::~QtUiService() {
  if (overriding_ && qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
    QGuiApplication::restoreOverrideCursor();
}

void QtUiService::LockWindowUpdate(bool lock) {
  if (lockHandler_) lockHandler_(lock);
}

void QtUiService::SetMousePointer(int32_t pointer) {
  pointer_ = pointer;
  const bool busy = pointer == kBusyPointer;
  if (busy == overriding_ || !qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return;
  if (busy)
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
  else
    QGuiApplication::restoreOverrideCursor();
  overriding_ = busy;
}

namespace {

QString Utf8(const std::string& text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

// A message box of the host runtime's styles: buttons in the low bits,
// the icon in 16..64; the answer is the runtime's button number.
int32_t ShowBox(QWidget* parent, const std::string& text, int32_t style, const std::string& title) {
  struct Button {
    QMessageBox::StandardButton qt;
    int32_t answer;
  };
  static const std::vector<Button> kSets[] = {
      {{QMessageBox::Ok, kAnswerOk}},
      {{QMessageBox::Ok, kAnswerOk}, {QMessageBox::Cancel, kAnswerCancel}},
      {{QMessageBox::Abort, kAnswerAbort}, {QMessageBox::Retry, kAnswerRetry}, {QMessageBox::Ignore, kAnswerIgnore}},
      {{QMessageBox::Yes, kAnswerYes}, {QMessageBox::No, kAnswerNo}, {QMessageBox::Cancel, kAnswerCancel}},
      {{QMessageBox::Yes, kAnswerYes}, {QMessageBox::No, kAnswerNo}},
      {{QMessageBox::Retry, kAnswerRetry}, {QMessageBox::Cancel, kAnswerCancel}},
  };
  const auto& buttons = kSets[std::clamp(style & 7, 0, 5)];
  QMessageBox box(parent);
  box.setWindowTitle(Utf8(title));
  box.setText(Utf8(text));
  switch (style & 0x70) {
    case kMbCritical: box.setIcon(QMessageBox::Critical); break;
    case kMbQuestion: box.setIcon(QMessageBox::Question); break;
    case kMbExclamation: box.setIcon(QMessageBox::Warning); break;
    case kMbInformation: box.setIcon(QMessageBox::Information); break;
    default: break;
  }
  QMessageBox::StandardButtons set;
  for (const Button& b : buttons) set |= b.qt;
  box.setStandardButtons(set);
  const int pressed = box.exec();
  for (const Button& b : buttons)
    if (pressed == b.qt) return b.answer;
  // Closed without a button: the one that goes on least.
  return LinuxMessageBox::UnattendedAnswer(style);
}

}  // namespace

QtFileOperationDialogs::~QtFileOperationDialogs() { delete progress_; }

bool QtFileOperationDialogs::Ask(FileOperationQuestion, const std::string& text) {
  return QMessageBox::question(parent_, QObject::tr("File operation"), Utf8(text)) == QMessageBox::Yes;
}

bool QtFileOperationDialogs::Progress(const FileOperationProgress& p) {
  if (!progress_) {
    progress_ = new QProgressDialog(parent_);
    progress_->setWindowModality(Qt::WindowModal);
    progress_->setMinimumDuration(500);  // quick operations show nothing
    progress_->setAutoClose(true);
  }
  // Bytes when known, else files; scaled to the dialog's int range.
  const uint64_t total = p.bytesTotal ? p.bytesTotal : p.filesTotal;
  const uint64_t done = p.bytesTotal ? p.bytesDone : p.filesDone;
  progress_->setMaximum(1000);
  progress_->setLabelText(Utf8(p.currentName));
  progress_->setValue(total ? static_cast<int>(std::min<uint64_t>(done * 1000 / total, 1000)) : 0);
  const bool go = !progress_->wasCanceled();
  if (total && done >= total) progress_->reset();
  return go;
}

void QtFileOperationDialogs::Failed(const std::string& path, const std::string& reason) {
  QMessageBox::warning(parent_, QObject::tr("File operation"), Utf8(path) + QStringLiteral("\n") + Utf8(reason));
}

QtLinuxPlatform::~QtLinuxPlatform() { FileOperations().SetHost(nullptr); }

void QtLinuxPlatform::UseDialogs(QWidget* parent) {
  QPointer<QWidget> owner(parent);
  MessageBoxHandler().SetHandler([owner](const std::string& text, int32_t style, const std::string& title) {
    return ShowBox(owner, text, style, title);
  });
  dialogs_ = std::make_unique<QtFileOperationDialogs>(parent);
  FileOperations().SetHost(dialogs_.get());
}

LinuxEventPump::LinuxEventPump(LinuxPlatform& platform, QObject* parent) : QObject(parent) {
  LinuxTimers& timers = platform.PollableTimers();
  if (timers.PollFd() >= 0) {
    timers_ = new QSocketNotifier(timers.PollFd(), QSocketNotifier::Read, this);
    connect(timers_, &QSocketNotifier::activated, this, [&timers] { timers.Dispatch(); });
  }
  LinuxChangeNotifier& notifier = platform.PollableNotifier();
  if (notifier.PollFd() >= 0) {
    changes_ = new QSocketNotifier(notifier.PollFd(), QSocketNotifier::Read, this);
    connect(changes_, &QSocketNotifier::activated, this, [&notifier] { notifier.Dispatch(); });
  }
}

}  // namespace nxfv::qt
