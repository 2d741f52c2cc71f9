// The browser's saved state between runs, in one QSettings store: the
// window's geometry and tool bars, the control's 32 saved settings (through
// the widget's SettingsPropertyBag, group "viewer"; the current folder is
// one of them) and the report view's column layout.
//
// A first run (nothing saved) opens the home folder with archives browsable;
// a folder named on the command line wins over the saved one, and a saved
// folder that has gone since is replaced by home, so that the window never
// opens on an error box.
#pragma once

#include <QString>
#include <string>
#include <utility>
#include <vector>

#include "nxfv/platform/variant.h"

class QMainWindow;
class QSettings;

namespace nxfv::qt {
class FileViewerWidget;
}

namespace nxfv::browser {

// The control settings the browser starts with where nothing is saved
// (bag keys and values).
std::vector<std::pair<std::string, Variant>> BrowserDefaults();

// Applies the saved state and lists the folder (path when not empty).
void RestoreWindow(QMainWindow& window, qt::FileViewerWidget& viewer, QSettings& settings, const QString& path);
void SaveWindow(const QMainWindow& window, qt::FileViewerWidget& viewer, QSettings& settings);

}  // namespace nxfv::browser
