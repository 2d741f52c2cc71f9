// The control in a window: shows the folder given (or the current one) in
// the report view. With --count it prints the number of rows and exits,
// which is how the package check runs it without a display.
#include <QApplication>
#include <QDir>
#include <cstdio>

#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/qt/list_view_model.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QStringList args = app.arguments().mid(1);
  const bool count = args.removeAll(QStringLiteral("--count")) > 0;
  nxfv::qt::FileViewerWidget viewer;
  viewer.resize(800, 500);
  viewer.setCurrentFolder(args.isEmpty() ? QDir::currentPath() : args.first());
  if (count) {
    viewer.applySettings();  // a shown widget does this itself
    std::printf("%d rows\n", viewer.model()->rowCount());
    return 0;
  }
  viewer.show();
  return app.exec();
}
