#include "command_line.h"

namespace nxfv::browser {
namespace {

using ViewStyle = qt::FileViewerWidget::ViewStyle;

std::optional<ViewStyle> ParseView(const QString& name) {
  if (name == u"report") return ViewStyle::FvReport;
  if (name == u"icon") return ViewStyle::FvIcon;
  if (name == u"smallicon") return ViewStyle::FvSmallIcon;
  if (name == u"list") return ViewStyle::FvList;
  return std::nullopt;
}

bool ParseSize(const QString& text, QSize& size) {
  const QStringList parts = text.split(u'x');
  if (parts.size() != 2) return false;
  bool okW = false, okH = false;
  const int w = parts[0].toInt(&okW), h = parts[1].toInt(&okH);
  // Beyond this a grab would need gigabytes.
  if (!okW || !okH || w < 200 || h < 150 || w > 8000 || h > 8000) return false;
  size = QSize(w, h);
  return true;
}

}  // namespace

QString UsageText() {
  return QStringLiteral(
      "usage: nxfv-browser [PATH] [--view report|icon|smallicon|list]\n"
      "       nxfv-browser --screenshot FILE.png [PATH] [--view STYLE] [--size WxH]\n"
      "       nxfv-browser --bench FOLDER\n"
      "Opens a file browser window on PATH (a folder, or a .zip/.cab archive), else on\n"
      "the folder of the last run, else on your home folder.\n"
      "  --screenshot FILE  renders the window offscreen to a PNG file and exits\n"
      "  --size WxH         the window size for --screenshot (default 960x600)\n"
      "  --bench FOLDER     times listing FOLDER up to the first painted frame and\n"
      "                     scrolling to its end, prints the figures and exits\n");
}

bool ParseCommandLine(const QStringList& arguments, BrowserOptions& options, QString& error) {
  bool optionsEnded = false;
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString& arg = arguments[i];
    if (optionsEnded || !arg.startsWith(u"--")) {
      if (!options.path.isEmpty()) {
        error = QStringLiteral("more than one PATH: '%1' and '%2'").arg(options.path, arg);
        return false;
      }
      options.path = arg;
      continue;
    }
    if (arg == u"--") {
      optionsEnded = true;
      continue;
    }
    if (arg == u"--help") {
      options.help = true;
      continue;
    }
    QString name = arg, value;
    const qsizetype eq = arg.indexOf(u'=');
    if (eq > 0) {
      name = arg.left(eq);
      value = arg.mid(eq + 1);
    }
    if (name != u"--screenshot" && name != u"--view" && name != u"--bench" && name != u"--size") {
      error = QStringLiteral("unknown option '%1'").arg(name);
      return false;
    }
    if (eq < 0) {
      if (i + 1 >= arguments.size()) {
        error = QStringLiteral("%1 needs a value").arg(name);
        return false;
      }
      value = arguments[++i];
    }
    if (value.isEmpty()) {
      error = QStringLiteral("%1 needs a value").arg(name);
      return false;
    }
    if (name == u"--screenshot") {
      options.screenshot = value;
    } else if (name == u"--bench") {
      options.benchFolder = value;
    } else if (name == u"--size") {
      if (!ParseSize(value, options.size)) {
        error = QStringLiteral("--size needs WIDTHxHEIGHT (200x150 to 8000x8000), not '%1'").arg(value);
        return false;
      }
    } else {
      options.view = ParseView(value);
      if (!options.view) {
        error = QStringLiteral("--view takes report, icon, smallicon or list, not '%1'").arg(value);
        return false;
      }
    }
  }
  if (!options.screenshot.isEmpty() && !options.benchFolder.isEmpty()) {
    error = QStringLiteral("--screenshot and --bench exclude each other");
    return false;
  }
  return true;
}

}  // namespace nxfv::browser
