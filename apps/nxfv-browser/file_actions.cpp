#include "file_actions.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QIcon>
#include <QItemSelectionModel>
#include <QMenu>
#include <QStyle>
#include <QToolBar>
#include <optional>

#include "nxfv/qt/file_viewer_widget.h"

namespace nxfv::browser {
namespace {

using FileAction = qt::FileViewerWidget::FileAction;

// The desktop's icon theme where there is one; else the style's icon when
// it has a fitting one, else none (a tool button then shows the text,
// which says more than an icon that means something else).
QAction* MakeAction(QObject* parent, const QString& text, const QString& themeIcon,
                    std::optional<QStyle::StandardPixmap> fallback, const QKeySequence& keys) {
  QIcon icon = QIcon::fromTheme(themeIcon);
  if (icon.isNull() && fallback) icon = QApplication::style()->standardIcon(*fallback);
  auto* action = new QAction(icon, text, parent);
  action->setShortcut(keys);
  return action;
}

}  // namespace

FileActions::FileActions(qt::FileViewerWidget& viewer, QObject* parent) : QObject(parent), viewer_(viewer) {
  copy_ = MakeAction(this, tr("&Copy"), QStringLiteral("edit-copy"), std::nullopt, QKeySequence::Copy);
  cut_ = MakeAction(this, tr("Cu&t"), QStringLiteral("edit-cut"), std::nullopt, QKeySequence::Cut);
  paste_ = MakeAction(this, tr("&Paste"), QStringLiteral("edit-paste"), std::nullopt, QKeySequence::Paste);
  delete_ = MakeAction(this, tr("&Delete"), QStringLiteral("edit-delete"), QStyle::SP_TrashIcon, QKeySequence::Delete);
  rename_ = MakeAction(this, tr("&Rename"), QStringLiteral("edit-rename"), std::nullopt,
                       QKeySequence(Qt::Key_F2));
  newFolder_ = MakeAction(this, tr("&New Folder"), QStringLiteral("folder-new"), QStyle::SP_FileDialogNewFolder,
                          QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N));
  refresh_ = MakeAction(this, tr("Re&fresh"), QStringLiteral("view-refresh"), QStyle::SP_BrowserReload,
                        QKeySequence(Qt::Key_F5));
  // The views take Delete, Ctrl+C, Ctrl+X, Ctrl+V and F2 themselves (the
  // control's key handling, which hosts may answer); the window's shortcuts
  // act only where the views do not, so that no key runs a command twice.
  for (QAction* a : {copy_, cut_, paste_, delete_, rename_}) a->setShortcutContext(Qt::WidgetShortcut);

  connect(copy_, &QAction::triggered, this, [this] { viewer_.runFileAction(FileAction::Copy); });
  connect(cut_, &QAction::triggered, this, [this] { viewer_.runFileAction(FileAction::Cut); });
  connect(paste_, &QAction::triggered, this, [this] { viewer_.runFileAction(FileAction::Paste); });
  connect(delete_, &QAction::triggered, this, [this] { viewer_.runFileAction(FileAction::Delete); });
  connect(rename_, &QAction::triggered, this, [this] { viewer_.runFileAction(FileAction::Rename); });
  connect(newFolder_, &QAction::triggered, this, [this] { viewer_.viewer().CreateNewFolder(); });
  connect(refresh_, &QAction::triggered, this, [this] {
    if (!viewer_.CurrentFolder().isEmpty()) viewer_.viewer().RefreshView(true);
  });

  pending_.setSingleShot(true);
  pending_.setInterval(0);
  connect(&pending_, &QTimer::timeout, this, &FileActions::updateEnabled);
  connect(&viewer_, &qt::FileViewerWidget::afterNewView, this, &FileActions::Schedule);
  connect(viewer_.selectionModel(), &QItemSelectionModel::selectionChanged, this, &FileActions::Schedule);
  connect(QApplication::clipboard(), &QClipboard::dataChanged, this, &FileActions::Schedule);
  updateEnabled();
}

void FileActions::addTo(QMenu* menu) const {
  menu->addActions({cut_, copy_, paste_});
  menu->addSeparator();
  menu->addActions({delete_, rename_, newFolder_});
  menu->addSeparator();
  menu->addAction(refresh_);
}

void FileActions::addTo(QToolBar* toolBar) const { toolBar->addActions({cut_, copy_, paste_, delete_, newFolder_, refresh_}); }

void FileActions::Schedule() {
  if (!pending_.isActive()) pending_.start();
}

void FileActions::updateEnabled() {
  pending_.stop();
  FileViewer& v = viewer_.viewer();
  const bool inFolder = !v.Currentfolder().empty() && !v.InsideArchive() && !v.VirtualFileList();
  copy_->setEnabled(viewer_.fileActionAvailable(FileAction::Copy));
  cut_->setEnabled(viewer_.fileActionAvailable(FileAction::Cut));
  paste_->setEnabled(viewer_.fileActionAvailable(FileAction::Paste));
  delete_->setEnabled(viewer_.fileActionAvailable(FileAction::Delete));
  rename_->setEnabled(viewer_.fileActionAvailable(FileAction::Rename));
  newFolder_->setEnabled(inFolder);
  refresh_->setEnabled(!v.Currentfolder().empty());
}

}  // namespace nxfv::browser
