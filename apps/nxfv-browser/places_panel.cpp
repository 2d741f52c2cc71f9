#include "places_panel.h"

#include <QFileInfo>
#include <QSignalBlocker>
#include <QStyle>

#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/shell/shell_folders.h"

namespace nxfv::browser {
namespace {

struct Place {
  const char* name;
  SHFolders folder;
  QStyle::StandardPixmap icon;
};
// Home first: it is where most browsing starts.
constexpr Place kPlaces[] = {
    {QT_TRANSLATE_NOOP("PlacesPanel", "Home"), CSIDL_PROFILE, QStyle::SP_DirHomeIcon},
    {QT_TRANSLATE_NOOP("PlacesPanel", "Desktop"), CSIDL_DESKTOPDIRECTORY, QStyle::SP_DesktopIcon},
    {QT_TRANSLATE_NOOP("PlacesPanel", "Documents"), CSIDL_PERSONAL, QStyle::SP_DirIcon},
    {QT_TRANSLATE_NOOP("PlacesPanel", "Music"), CSIDL_MYMUSIC, QStyle::SP_DirIcon},
    {QT_TRANSLATE_NOOP("PlacesPanel", "Pictures"), CSIDL_MYPICTURES, QStyle::SP_DirIcon},
    {QT_TRANSLATE_NOOP("PlacesPanel", "Videos"), CSIDL_MYVIDEO, QStyle::SP_DirIcon},
    {QT_TRANSLATE_NOOP("PlacesPanel", "Templates"), CSIDL_TEMPLATES, QStyle::SP_DirIcon},
};

}  // namespace

PlacesPanel::PlacesPanel(qt::FileViewerWidget& viewer, QWidget* parent) : QListWidget(parent), viewer_(viewer) {
  setObjectName(QStringLiteral("places"));
  setSelectionMode(QAbstractItemView::SingleSelection);
  setUniformItemSizes(true);
  reload();
  // itemClicked, not currentRowChanged: clicking the highlighted place again
  // goes back there after browsing below it.
  connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { open(row(item)); });
  connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) { open(row(item)); });
  connect(&viewer_, &qt::FileViewerWidget::afterNewView, this,
          [this](const QString& path, bool, bool, bool) { Highlight(path); });
}

void PlacesPanel::reload() {
  clear();
  auto* drives = new QListWidgetItem(style()->standardIcon(QStyle::SP_ComputerIcon), tr("Drives"), this);
  drives->setData(kPathRole, QString());
  QStringList seen;
  Platform& platform = viewer_.platform();
  for (const Place& p : kPlaces) {
    const QString path = QString::fromStdString(SpecialFolderPath(platform, p.folder));
    // An XDG folder that was never created points at home or nowhere.
    if (path.isEmpty() || seen.contains(path) || !QFileInfo(path).isDir()) continue;
    seen << path;
    auto* item = new QListWidgetItem(style()->standardIcon(p.icon), tr(p.name), this);
    item->setData(kPathRole, path);
    item->setToolTip(path);
  }
  for (const std::string& drive : platform.Drives()) {
    const QString path = QString::fromStdString(drive);
    if (seen.contains(path)) continue;
    seen << path;
    auto* item = new QListWidgetItem(style()->standardIcon(QStyle::SP_DriveHDIcon), path, this);
    item->setData(kPathRole, path);
    item->setToolTip(path);
  }
}

void PlacesPanel::open(int row) {
  QListWidgetItem* place = item(row);
  if (!place) return;
  if (!viewer_.settingsApplied()) viewer_.applySettings();
  const QString path = place->data(kPathRole).toString();
  if (path.isEmpty())
    viewer_.viewer().SetToSpecialFolder(CSIDL_DRIVES);
  else
    viewer_.setCurrentFolder(path);
}

QSize PlacesPanel::sizeHint() const { return {sizeHintForColumn(0) + 2 * frameWidth() + 8, 200}; }

void PlacesPanel::Highlight(const QString& location) {
  const QSignalBlocker quiet(this);
  for (int i = 0; i < count(); ++i) {
    if (item(i)->data(kPathRole).toString() == location) {
      setCurrentRow(i);
      return;
    }
  }
  clearSelection();
  setCurrentRow(-1);
}

}  // namespace nxfv::browser
