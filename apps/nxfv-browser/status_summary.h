// StatusSummary: the status bar's counts — items on view, selected,
// checked, and whether the view is inside an archive.
//
// The counts come from the control (ItemCount, SelectedCount,
// CheckedCount), which reads its list view: each is a pass over the rows.
// A rubber-band selection over a million rows changes the selection a
// million times, so the counts are taken once per turn of the event loop,
// however many changes came in it.
#pragma once

#include <QLabel>
#include <QTimer>

namespace nxfv::qt {
class FileViewerWidget;
}

namespace nxfv::browser {

class StatusSummary : public QLabel {
  Q_OBJECT

 public:
  StatusSummary(qt::FileViewerWidget& viewer, QWidget* parent = nullptr);

  // Counts now (the timer would do it on the next turn).
  void update();
  // The summary for these counts, e.g. "12 items, 2 selected, inside an archive".
  static QString describe(int items, int selected, int checked, bool insideArchive);

 signals:
  void updated();

 private:
  void Schedule();

  qt::FileViewerWidget& viewer_;
  QTimer pending_;
  bool insideArchive_ = false;
};

}  // namespace nxfv::browser
