#include "browser_window.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QTreeView>
#include <QListView>
#include <QFontMetrics>
#include <QHeaderView>
#include <algorithm>
#include <cstdlib>

#include "column_menu.h"
#include "file_actions.h"
#include "message_presenter.h"
#include "navigation_bar.h"
#include "nxfv/qt/qt_linux_platform.h"
#include "places_panel.h"
#include "status_summary.h"
#include "window_settings.h"

namespace nxfv::browser {
namespace {

using ViewStyle = qt::FileViewerWidget::ViewStyle;

struct StyleEntry {
  const char* text;
  ViewStyle style;
  const char* key;  // Ctrl+1..4
};
constexpr StyleEntry kStyles[] = {
    {QT_TRANSLATE_NOOP("BrowserWindow", "&Details"), ViewStyle::FvReport, "Ctrl+1"},
    {QT_TRANSLATE_NOOP("BrowserWindow", "&Icons"), ViewStyle::FvIcon, "Ctrl+2"},
    {QT_TRANSLATE_NOOP("BrowserWindow", "&Small Icons"), ViewStyle::FvSmallIcon, "Ctrl+3"},
    {QT_TRANSLATE_NOOP("BrowserWindow", "&List"), ViewStyle::FvList, "Ctrl+4"},
};

}  // namespace

BrowserWindow::BrowserWindow(QSettings* settings, bool interactive, QWidget* parent)
    : QMainWindow(parent), platform_(std::make_shared<qt::QtLinuxPlatform>()), settings_(settings) {
  setObjectName(QStringLiteral("browser"));
  setWindowTitle(QStringLiteral("nxfv-browser"));
  platform_->MessageBoxHandler().SetPrefix("nxfv-browser");

  auto* splitter = new QSplitter(this);
  viewer_ = new qt::FileViewerWidget(platform_, splitter);
  places_ = new PlacesPanel(*viewer_, splitter);
  splitter->addWidget(places_);
  splitter->addWidget(viewer_);
  splitter->setStretchFactor(0, 0);
  splitter->setStretchFactor(1, 1);
  splitter->setCollapsible(1, false);
  setCentralWidget(splitter);

  navigation_ = new NavigationBar(*viewer_, this);
  addToolBar(navigation_);
  fileActions_ = new FileActions(*viewer_, this);
  columnMenu_ = new ColumnMenu(*viewer_, this);
  summary_ = new StatusSummary(*viewer_, this);
  statusBar()->addPermanentWidget(summary_, 1);
  messages_ = new MessagePresenter(platform_->MessageBoxHandler(), this, statusBar(), interactive);

  BuildMenus();
  BuildToolBar();

  connect(viewer_, &qt::FileViewerWidget::afterNewView, this, [this](const QString& path, bool, bool, bool) {
    const QString shown = path.isEmpty() ? tr("Drives") : QDir(path).dirName().isEmpty() ? path : QDir(path).dirName();
    setWindowTitle(tr("%1 — nxfv-browser").arg(shown));
  });
  connect(viewer_, &qt::FileViewerWidget::settingChanged, this, [this] { SyncControls(); });
  // After the widget has laid out the new view's columns.
  connect(viewer_, &qt::FileViewerWidget::afterNewView, this, [this] {
    QMetaObject::invokeMethod(this, &BrowserWindow::FitNewColumns, Qt::QueuedConnection);
  });
  viewer_->setFocus();
}

BrowserWindow::~BrowserWindow() {
  // The presenter answers the platform's message box: it goes first, while
  // the widget still holds the platform.
  delete messages_;
}

void BrowserWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  file->addAction(fileActions_->newFolder());
  file->addSeparator();
  QAction* quit = file->addAction(tr("&Quit"), this, &QWidget::close);
  quit->setShortcut(QKeySequence::Quit);

  fileActions_->addTo(menuBar()->addMenu(tr("&Edit")));

  QMenu* view = menuBar()->addMenu(tr("&View"));
  viewStyles_ = new QActionGroup(this);
  for (const StyleEntry& entry : kStyles) {
    QAction* action = view->addAction(tr(entry.text));
    action->setCheckable(true);
    action->setData(int(entry.style));
    action->setShortcut(QKeySequence(QString::fromLatin1(entry.key)));
    viewStyles_->addAction(action);
  }
  connect(viewStyles_, &QActionGroup::triggered, this,
          [this](QAction* action) { viewer_->setViewStyle(static_cast<ViewStyle>(action->data().toInt())); });
  view->addSeparator();
  showHidden_ = view->addAction(tr("Show &Hidden Files"));
  showHidden_->setCheckable(true);
  showHidden_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
  connect(showHidden_, &QAction::triggered, this, [this](bool on) {
    viewer_->setShowHiddenItems(on);
    // The Show settings do not list again by themselves.
    if (viewer_->settingsApplied() && !viewer_->CurrentFolder().isEmpty()) viewer_->viewer().RefreshView(true);
  });
  view->addMenu(columnMenu_);

  QMenu* go = menuBar()->addMenu(tr("&Go"));
  go->addActions({navigation_->backAction(), navigation_->forwardAction(), navigation_->upAction()});
  go->addSeparator();
  QAction* drives = go->addAction(style()->standardIcon(QStyle::SP_ComputerIcon), tr("&Drives"));
  connect(drives, &QAction::triggered, this, [this] { places_->open(0); });
  QAction* home = go->addAction(style()->standardIcon(QStyle::SP_DirHomeIcon), tr("&Home"));
  home->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Home));
  connect(home, &QAction::triggered, this, [this] { navigation_->navigate(QDir::homePath()); });
  QAction* address = go->addAction(tr("&Location..."));
  address->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
  connect(address, &QAction::triggered, this, [this] {
    navigation_->addressBar()->setFocus();
    navigation_->addressBar()->selectAll();
  });
}

void BrowserWindow::BuildToolBar() {
  addToolBarBreak();
  QToolBar* tools = addToolBar(tr("Tools"));
  tools->setObjectName(QStringLiteral("tools"));
  tools->setMovable(false);
  tools->setToolButtonStyle(Qt::ToolButtonIconOnly);
  fileActions_->addTo(tools);
  tools->addSeparator();
  tools->addActions(viewStyles_->actions());
  tools->addAction(showHidden_);
  tools->addSeparator();
  tools->addWidget(new QLabel(tr("Filter: "), tools));
  pattern_ = new QLineEdit(tools);
  pattern_->setObjectName(QStringLiteral("pattern"));
  pattern_->setPlaceholderText(QStringLiteral("*.*"));
  pattern_->setToolTip(tr("File name patterns, separated by ';' (e.g. *.txt;*.md)"));
  pattern_->setMaximumWidth(220);
  tools->addWidget(pattern_);
  connect(pattern_, &QLineEdit::returnPressed, this, &BrowserWindow::ApplyPattern);
}

void BrowserWindow::ApplyPattern() {
  QString text = pattern_->text().trimmed();
  if (text.isEmpty()) text = QStringLiteral("*.*");
  // The control lists again on every pattern let, the same one included:
  // Enter in an unchanged box is how the user asks for that.
  viewer_->setPattern(text);
}

void BrowserWindow::SyncControls() {
  const int style = int(viewer_->viewStyle());
  for (QAction* action : viewStyles_->actions()) action->setChecked(action->data().toInt() == style);
  showHidden_->setChecked(viewer_->ShowHiddenItems());
  const QString pattern = viewer_->pattern();
  if (!pattern_->hasFocus()) pattern_->setText(pattern == u"*.*" ? QString() : pattern);
}

void BrowserWindow::FitNewColumns() {
  // The control's default widths are made for short dates and names;
  // "Modified" and "Type" would mostly show "...". A column is widened to
  // its contents once, the first time it shows, and only while it still has
  // the control's width: a width the user chose (or saved) stays.
  QTreeView* report = viewer_->reportView();
  const ListView& view = viewer_->viewer().ListView1();
  const int count = std::min<int>(view.ColumnCount(), report->header()->count());
  for (int c = 0; c < count; ++c) {
    const ListColumn& column = view.Column(c);
    const QString key = QString::fromStdString(column.key);
    if (column.width <= 0 || report->isColumnHidden(c) || fitted_.contains(key)) continue;
    fitted_.insert(key);
    const int controlWidth = column.width * report->logicalDpiX() / 1440;
    if (std::abs(report->columnWidth(c) - controlWidth) > 1) continue;
    // Measures a bounded number of rows (the header's resize precision),
    // so this stays cheap in huge folders.
    const int before = report->columnWidth(c);
    report->resizeColumnToContents(c);
    report->setColumnWidth(c, std::clamp(report->columnWidth(c), before, std::max(before, 360)));
  }
}

void BrowserWindow::start(const QString& path, std::optional<ViewStyle> view) {
  if (view) viewer_->setViewStyle(*view);
  if (settings_) {
    RestoreWindow(*this, *viewer_, *settings_, path);
    if (view) viewer_->setViewStyle(*view);
  } else {
    for (const auto& [key, value] : BrowserDefaults()) viewer_->setSetting(key.c_str(), value.AsBool());
    viewer_->setCurrentFolder(path.isEmpty() ? QDir::homePath() : path);
    viewer_->applySettings();
  }
  SyncControls();
}

void BrowserWindow::saveSettings() {
  if (settings_) SaveWindow(*this, *viewer_, *settings_);
}

void BrowserWindow::closeEvent(QCloseEvent* event) {
  saveSettings();
  QMainWindow::closeEvent(event);
}

}  // namespace nxfv::browser
