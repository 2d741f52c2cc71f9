#include "nxfv/qt/qt_file_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "nxfv/platform/file_uri_list.h"
#include "nxfv/platform/linux/file_name_escape.h"

namespace nxfv::qt {
namespace {

QClipboard* SystemClipboard() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) ? QGuiApplication::clipboard() : nullptr; }

QByteArray Bytes(const std::string& s) { return QByteArray(s.data(), static_cast<qsizetype>(s.size())); }

}  // namespace

void QtFileClipboard::SetFiles(const std::vector<std::string>& paths, bool cut) {
  QClipboard* clipboard = SystemClipboard();
  if (!clipboard) return;
  std::vector<std::string> raw;
  raw.reserve(paths.size());
  for (const std::string& p : paths)
    if (!p.empty() && p.front() == '/') raw.push_back(UnescapeFileName(p));
  if (raw.empty()) {
    clipboard->clear();
    return;
  }
  auto* mime = new QMimeData;
  mime->setData(QStringLiteral("text/uri-list"), Bytes(EncodeUriList(raw)));
  mime->setData(QString::fromLatin1(kGnomeCopiedFiles), Bytes(EncodeGnomeCopiedFiles(raw, cut)));
  QString text;
  for (const std::string& p : paths) text += QString::fromUtf8(p.data(), static_cast<qsizetype>(p.size())) + QLatin1Char('\n');
  mime->setText(text);
  clipboard->setMimeData(mime);  // the clipboard owns it from here
}

bool QtFileClipboard::GetFiles(std::vector<std::string>& paths, bool& cut) const {
  paths.clear();
  cut = false;
  QClipboard* clipboard = SystemClipboard();
  const QMimeData* mime = clipboard ? clipboard->mimeData() : nullptr;
  if (!mime) return false;
  std::vector<std::string> raw;
  const QByteArray gnome = mime->data(QString::fromLatin1(kGnomeCopiedFiles));
  if (gnome.isEmpty() || !DecodeGnomeCopiedFiles(gnome.toStdString(), raw, cut)) {
    cut = false;
    raw = DecodeUriList(mime->data(QStringLiteral("text/uri-list")).toStdString());
  }
  for (const std::string& p : raw) paths.push_back(EscapeFileName(p));
  return !paths.empty();
}

void QtFileClipboard::Clear() {
  if (QClipboard* clipboard = SystemClipboard()) clipboard->clear();
}

bool QtFileClipboard::HasFiles() const {
  std::vector<std::string> paths;
  bool cut = false;
  return GetFiles(paths, cut);
}

}  // namespace nxfv::qt
