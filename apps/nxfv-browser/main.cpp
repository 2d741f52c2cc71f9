// nxfv-browser: a file browser window built on FileViewerWidget; see
// command_line.h for its options.
#include <QApplication>
#include <QDir>
#include <QSettings>
#include <clocale>
#include <cstdio>

#include "browser_window.h"
#include "capture.h"
#include "command_line.h"

int main(int argc, char** argv) {
  using namespace nxfv::browser;
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  BrowserOptions options;
  QString error;
  if (!ParseCommandLine(arguments, options, error)) {
    std::fprintf(stderr, "nxfv-browser: %s\n%s", qPrintable(error), qPrintable(UsageText()));
    return 2;
  }
  // The control takes absolute paths; the shell hands relative ones.
  if (!options.path.isEmpty() && QDir::isRelativePath(options.path))
    options.path = QDir::cleanPath(QDir::current().absoluteFilePath(options.path));
  if (options.help) {
    std::fputs(qPrintable(UsageText()), stdout);
    return 0;
  }
  // Unattended runs draw offscreen unless a platform was chosen: they must
  // work without a display and never flash a window on one.
  const bool unattended = !options.screenshot.isEmpty() || !options.benchFolder.isEmpty();
  if (unattended && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");

  QApplication app(argc, argv);
  QApplication::setOrganizationName(QStringLiteral("NxFileViewer"));
  QApplication::setApplicationName(QStringLiteral("nxfv-browser"));
  // Dates and numbers in the user's locale, as the control formats them.
  std::setlocale(LC_ALL, "");

  if (!options.screenshot.isEmpty()) return TakeScreenshot(options);
  if (!options.benchFolder.isEmpty()) return RunBench(options);

  QSettings settings;
  BrowserWindow window(&settings, true);
  window.resize(options.size);
  window.start(options.path, options.view);
  window.show();
  return QApplication::exec();
}
