// PlacesPanel: the side panel with the places a user starts from: the
// drives view, the user's own folders (home, desktop, documents, music,
// pictures, videos, templates; those that exist), and the mounted volumes.
// Clicking one shows it in the control; the entry matching the location on
// view is highlighted.
#pragma once

#include <QListWidget>

namespace nxfv::qt {
class FileViewerWidget;
}

namespace nxfv::browser {

class PlacesPanel : public QListWidget {
  Q_OBJECT

 public:
  // The item's data role holding the folder path ("" for the drives view).
  static constexpr int kPathRole = Qt::UserRole + 1;

  PlacesPanel(qt::FileViewerWidget& viewer, QWidget* parent = nullptr);
  // Reads the special folders and volumes again (they may have changed).
  void reload();
  // Shows the place of row in the control.
  void open(int row);

  QSize sizeHint() const override;

 private:
  void Highlight(const QString& location);

  qt::FileViewerWidget& viewer_;
};

}  // namespace nxfv::browser
