#include "capture.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QPixmap>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTreeView>
#include <cstdio>

#include "browser_window.h"
#include "message_presenter.h"
#include "navigation_bar.h"
#include "nxfv/qt/list_view_model.h"

namespace nxfv::browser {
namespace {

// Notes that a widget was painted.
class PaintProbe : public QObject {
 public:
  explicit PaintProbe(QWidget* target) : target_(target) { target_->installEventFilter(this); }
  ~PaintProbe() override { target_->removeEventFilter(this); }
  bool painted = false;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == target_ && event->type() == QEvent::Paint) painted = true;
    return false;
  }

 private:
  QWidget* target_;
};

// Runs the event loop until probe saw a paint; the paint has finished
// when processEvents returns. False when none came (a hidden view).
bool WaitForPaint(PaintProbe& probe) {
  for (int turn = 0; turn < 1000 && !probe.painted; ++turn)
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
  return probe.painted;
}

double Milliseconds(const QElapsedTimer& timer) { return static_cast<double>(timer.nsecsElapsed()) / 1e6; }

}  // namespace

void Settle(BrowserWindow&) {
  // Posted events beget posted events (a listing schedules the status bar,
  // the layout schedules paints); a handful of rounds drains them.
  for (int round = 0; round < 8; ++round) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
}

int TakeScreenshot(const BrowserOptions& options) {
  BrowserWindow window(nullptr, false);
  window.resize(options.size);
  window.show();
  window.start(options.path, options.view);
  Settle(window);
  const QPixmap image = window.grab();
  int status = 0;
  // A path the control refused leaves another location (or none) on view.
  if (!options.path.isEmpty() && window.messages().boxCount() > 0 && window.navigation().location() != options.path) {
    std::fprintf(stderr, "nxfv-browser: %s\n", qPrintable(window.messages().lastText()));
    status = 1;
  }
  if (!image.save(options.screenshot, "PNG")) {
    std::fprintf(stderr, "nxfv-browser: cannot write %s\n", qPrintable(options.screenshot));
    return 1;
  }
  return status;
}

int RunBench(const BrowserOptions& options) {
  QTemporaryDir empty;
  if (!empty.isValid()) {
    std::fprintf(stderr, "nxfv-browser: no temporary folder\n");
    return 1;
  }
  BrowserWindow window(nullptr, false);
  window.resize(options.size);
  window.show();
  window.start(empty.path(), qt::FileViewerWidget::FvReport);
  Settle(window);

  qt::FileViewerWidget& viewer = window.viewer();
  QTreeView* report = viewer.reportView();
  QElapsedTimer timer;
  double listed = 0, firstPaint = 0, scrolled = 0;
  {
    PaintProbe probe(report->viewport());
    timer.start();
    viewer.setCurrentFolder(options.benchFolder);
    listed = Milliseconds(timer);
    if (!WaitForPaint(probe)) {
      std::fprintf(stderr, "nxfv-browser: the listing was never painted\n");
      return 1;
    }
    firstPaint = Milliseconds(timer);
  }
  if (window.navigation().location().isEmpty() || window.messages().boxCount() > 0) {
    std::fprintf(stderr, "nxfv-browser: %s\n", qPrintable(window.messages().lastText()));
    return 1;
  }
  Settle(window);
  {
    PaintProbe probe(report->viewport());
    timer.restart();
    QScrollBar* bar = report->verticalScrollBar();
    const bool scrolls = bar->value() < bar->maximum();  // a short listing shows its end already
    report->scrollToBottom();
    if (scrolls && !WaitForPaint(probe)) {
      std::fprintf(stderr, "nxfv-browser: the scrolled view was never painted\n");
      return 1;
    }
    scrolled = Milliseconds(timer);
  }
  std::printf("rows=%d listed_ms=%.1f first_paint_ms=%.1f scroll_end_ms=%.1f\n", viewer.model()->rowCount(), listed,
              firstPaint, scrolled);
  return 0;
}

}  // namespace nxfv::browser
