// ColumnMenu: chooses the report view's columns. One checkable action per
// column of the control's column set, captioned as the header shows it;
// checking one sets its bit in the control's ViewOptions mask. The archive
// columns (compressed size, ratio, method, ...) only show while an archive
// is on view and say so. The name column cannot be switched off: without
// it no row could be told apart.
#pragma once

#include <QMenu>

namespace nxfv::qt {
class FileViewerWidget;
}

namespace nxfv::browser {

class ColumnMenu : public QMenu {
  Q_OBJECT

 public:
  ColumnMenu(qt::FileViewerWidget& viewer, QWidget* parent = nullptr);
  // Captions and check marks from the control (done before every showing).
  void refresh();

 private:
  qt::FileViewerWidget& viewer_;
};

}  // namespace nxfv::browser
