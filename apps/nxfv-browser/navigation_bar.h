// NavigationBar: back, forward and up, and the address bar.
//
// The buttons follow the control, not guesses of our own: each new view
// (afterNewView) says whether there is history either way, and up is
// possible from any location but the drives view, which is the top (from a
// root folder the control goes up to the drives). The address bar shows the
// location on view; Enter asks the control to go to the typed path. A path
// the control refuses (it shows its error box) stays in the bar, marked, so
// that the user can correct it.
#pragma once

#include <QString>
#include <QToolBar>

class QAction;
class QLineEdit;

namespace nxfv::qt {
class FileViewerWidget;
}

namespace nxfv::browser {

class NavigationBar : public QToolBar {
  Q_OBJECT

 public:
  NavigationBar(qt::FileViewerWidget& viewer, QWidget* parent = nullptr);

  QAction* backAction() const { return back_; }
  QAction* forwardAction() const { return forward_; }
  QAction* upAction() const { return up_; }
  QLineEdit* addressBar() const { return address_; }
  // The location the last new view showed ("" for the drives view).
  QString location() const { return location_; }

  // Goes to text (a leading "~" is the home folder); false when the
  // control refused it.
  bool navigate(const QString& text);

 private:
  void OnNewView(const QString& path, bool canGoPrevious, bool canGoNext, bool insideArchive);
  void ShowError(bool error);

  qt::FileViewerWidget& viewer_;
  QAction* back_;
  QAction* forward_;
  QAction* up_;
  QLineEdit* address_;
  QString location_;
  int views_ = 0;  // new views so far: tells whether a navigation moved
};

}  // namespace nxfv::browser
