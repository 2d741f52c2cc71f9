// The browser's command line:
//   nxfv-browser [PATH] [--view report|icon|smallicon|list]
//   nxfv-browser --screenshot FILE [PATH] [--view STYLE] [--size WxH]
//   nxfv-browser --bench PATH
// Options may stand before or after PATH, as "--opt VALUE" or "--opt=VALUE".
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <optional>

#include "nxfv/qt/file_viewer_widget.h"

namespace nxfv::browser {

struct BrowserOptions {
  QString path;          // "" = the saved folder, else the home folder
  QString screenshot;    // write the window to this PNG and exit
  QString benchFolder;   // time listing and scrolling this folder and exit
  std::optional<qt::FileViewerWidget::ViewStyle> view;
  QSize size{960, 600};  // the window's size for --screenshot and --bench
  bool help = false;
};

// Fills options from arguments (without the program name); on a usage error
// returns false with error set to one line for standard error.
bool ParseCommandLine(const QStringList& arguments, BrowserOptions& options, QString& error);
QString UsageText();

}  // namespace nxfv::browser
