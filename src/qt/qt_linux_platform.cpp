#include "nxfv/qt/qt_linux_platform.h"

#include <QCursor>
#include <QGuiApplication>
#include <QSocketNotifier>

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
