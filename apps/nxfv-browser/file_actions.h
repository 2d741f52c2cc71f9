// FileActions: the file commands of the Edit menu and the toolbar — copy,
// cut, paste, delete, rename, new folder — and refresh (F5).
//
// The commands are the control's (FileViewerWidget::runFileAction, which
// hands them to the control's NxFileoperation), so the window does exactly
// what the context menu and the keys do. Each action is enabled when the
// control would act on it; that is worked out once per turn of the event
// loop after the selection, the view or the clipboard changed.
#pragma once

#include <QObject>
#include <QTimer>

class QAction;
class QMenu;
class QToolBar;

namespace nxfv::qt {
class FileViewerWidget;
}

namespace nxfv::browser {

class FileActions : public QObject {
  Q_OBJECT

 public:
  FileActions(qt::FileViewerWidget& viewer, QObject* parent = nullptr);

  void addTo(QMenu* menu) const;
  void addTo(QToolBar* toolBar) const;
  // Enables each action for the current selection and location, now.
  void updateEnabled();

  QAction* copy() const { return copy_; }
  QAction* cut() const { return cut_; }
  QAction* paste() const { return paste_; }
  QAction* remove() const { return delete_; }
  QAction* rename() const { return rename_; }
  QAction* newFolder() const { return newFolder_; }
  QAction* refresh() const { return refresh_; }

 private:
  void Schedule();

  qt::FileViewerWidget& viewer_;
  QAction* copy_;
  QAction* cut_;
  QAction* paste_;
  QAction* delete_;
  QAction* rename_;
  QAction* newFolder_;
  QAction* refresh_;
  QTimer pending_;
};

}  // namespace nxfv::browser
