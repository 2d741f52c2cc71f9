// FileViewerWidget driven like a user drives it: mouse on the header and the
// rows, keys, the label editor, check boxes, view styles; on the simulated
// platform where no real files are needed, in real temporary folders for
// diving, auto-refresh and the screenshots.
#include <QClipboard>
#include <QFile>
#include <QMimeData>
#include <QStyleHints>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeView>
#include <QtTest>
#include <fstream>

#include "archive/archive_writer.h"
#include "nxfv/platform/sim/simulated_platform.h"
#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/qt/list_view_model.h"
#include "nxfv/qt/qt_file_clipboard.h"

using nxfv::qt::FileViewerWidget;

namespace {

// A widget on a simulated C:\data with three files and a folder, listed.
struct SimWidget {
  std::shared_ptr<nxfv::SimulatedPlatform> platform = std::make_shared<nxfv::SimulatedPlatform>();
  std::unique_ptr<FileViewerWidget> w;
  SimWidget() {
    auto& files = platform->SimFiles();
    files.AddFolder("C:\\data");
    files.AddFile("C:\\data\\b.txt", 3000);
    files.AddFile("C:\\data\\a.doc", 100);
    files.AddFile("C:\\data\\c.txt", 100);
    files.AddFolder("C:\\data\\sub");
    w = std::make_unique<FileViewerWidget>(platform);
    w->resize(640, 360);
    w->applySettings();
    w->viewer().setCurrentfolder("C:\\data");
  }
  nxfv::ListView& rows() { return w->viewer().ListView1(); }
  int rowOf(const char* key) { return w->model()->RowOf(key); }
  QPoint rowCenter(QAbstractItemView* view, int row) { return view->visualRect(w->model()->index(row, 0)).center(); }
  void click(QAbstractItemView* view, const char* key, Qt::KeyboardModifiers mods = {}) {
    QTest::mouseClick(view->viewport(), Qt::LeftButton, mods, rowCenter(view, rowOf(key)));
  }
  QString caption(const char* key) {
    const int column = rows().FindColumn(key);
    return w->model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  }
  void clickHeader(const char* key, Qt::KeyboardModifiers mods = {}) {
    QHeaderView* header = w->reportView()->header();
    const int section = rows().FindColumn(key);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, mods,
                      QPoint(header->sectionViewportPosition(section) + 4, header->height() / 2));
  }
  std::vector<std::string> texts() {
    std::vector<std::string> out;
    for (size_t i = 0; i < rows().RowCount(); ++i) out.emplace_back(rows().Row(i).Text());
    return out;
  }
};

void WriteFile(const QString& path, const std::string& bytes) {
  std::ofstream(path.toStdString(), std::ios::binary) << bytes;
}

}  // namespace

class WidgetTest : public QObject {
  Q_OBJECT

 private slots:
  void headerClicksSortAndShowPriorities();
  void doubleClickDivesIntoFolderAndArchive();
  void keysGoUpRefreshAndDelete();
  void renameThroughTheEditor();
  void checkBoxesAreIndependentOfSelection();
  void selectionIsSharedAcrossViewStyles();
  void hostVetoKeepsTheViewsSelection();
  void refreshInPlaceKeepsTheSelection();
  void columnsFollowTheControl();
  void saveStateRoundTripAndDamage();
  void autoRefreshRunsFromTheEventLoop();
  void clipboardCarriesTheMarkAndRawNames();
  void copyAndPasteThroughTheSystemClipboard();
  void dropsMoveOrLinkFiles();
};

void WidgetTest::headerClicksSortAndShowPriorities() {
  SimWidget s;
  s.w->show();
  s.clickHeader("siz");
  QCOMPARE(s.w->viewer().SortColumns(), (std::vector<nxfv::SortState>{{"siz", false}}));
  QCOMPARE(s.caption("siz").right(1), QStringLiteral("\u25B2"));
  QVERIFY(!s.caption("siz").contains(QLatin1Char('1')));  // one sort column: no priority
  QVERIFY(!s.caption("nam").contains(QStringLiteral("\u25B2")));

  s.clickHeader("nam", Qt::ControlModifier);
  QCOMPARE(s.w->viewer().SortColumns(), (std::vector<nxfv::SortState>{{"siz", false}, {"nam", false}}));
  QVERIFY(s.caption("siz").endsWith(QStringLiteral(" 1 \u25B2")));
  QVERIFY(s.caption("nam").endsWith(QStringLiteral(" 2 \u25B2")));
  // Files by size text, then by name: a.doc and c.txt (1 KB) before b.txt (3 KB).
  const auto order = s.texts();
  QVERIFY(std::find(order.begin(), order.end(), "a.doc") < std::find(order.begin(), order.end(), "c.txt"));
  QVERIFY(std::find(order.begin(), order.end(), "c.txt") < std::find(order.begin(), order.end(), "b.txt"));

  s.clickHeader("siz");  // without Ctrl: the only sort column again
  QCOMPARE(s.w->viewer().SortColumns(), (std::vector<nxfv::SortState>{{"siz", false}}));
  s.clickHeader("siz");  // and once more: reversed
  QCOMPARE(s.w->viewer().SortColumns(), (std::vector<nxfv::SortState>{{"siz", true}}));
  QCOMPARE(s.caption("siz").right(1), QStringLiteral("\u25BC"));
  QVERIFY(!s.caption("nam").contains(QStringLiteral("\u25B2")));
}

void WidgetTest::doubleClickDivesIntoFolderAndArchive() {
  QTemporaryDir dir;
  QVERIFY(dir.isValid());
  QDir(dir.path()).mkpath("sub/inner");
  using namespace nxfv::testing_archive;
  WriteFile(dir.filePath("sub/pack.zip"), BuildZip({ZipEntry("inside.txt"), ZipEntry("more.txt")}));
  FileViewerWidget w;
  w.resize(640, 360);
  w.setCurrentFolder(dir.path());
  w.show();
  QCOMPARE(QString::fromStdString(w.viewer().Currentfolder()), dir.path());

  QSignalSpy views(&w, &FileViewerWidget::afterNewView);
  auto dive = [&](const char* key) {
    const int row = w.model()->RowOf(key);
    QVERIFY2(row >= 0, key);
    QTest::mouseDClick(w.reportView()->viewport(), Qt::LeftButton, {},
                       w.reportView()->visualRect(w.model()->index(row, 0)).center());
  };
  dive("sub");
  QCOMPARE(QString::fromStdString(w.viewer().Currentfolder()), dir.filePath("sub"));
  dive("pack.zip");
  QVERIFY(w.viewer().InsideArchive());
  QVERIFY(w.model()->RowOf("inside.txt") >= 0);
  QCOMPARE(views.count(), 2);
  QVERIFY(views.last().at(3).toBool());  // insideArchive
}

void WidgetTest::keysGoUpRefreshAndDelete() {
  SimWidget s;
  s.w->show();
  QTest::keyClick(s.w->reportView(), Qt::Key_Backspace);
  QCOMPARE(s.w->viewer().Currentfolder(), std::string("C:\\"));

  s.w->viewer().setCurrentfolder("C:\\data");
  s.platform->SimFiles().AddFile("C:\\data\\new.txt", 1);
  QCOMPARE(s.rowOf("new.txt"), -1);
  QTest::keyClick(s.w->reportView(), Qt::Key_F5);
  QVERIFY(s.rowOf("new.txt") >= 0);

  // Delete (without the trash, unconfirmed) goes to the file commands.
  s.w->viewer().FileCommand()->setConfirmOperation(false);
  s.click(s.w->reportView(), "b.txt");
  QTest::keyClick(s.w->reportView(), Qt::Key_Delete, Qt::ShiftModifier);
  const auto& requests = s.platform->SimFileOps().Requests();
  QCOMPARE(requests.size(), size_t{1});
  QCOMPARE(requests[0].operation, nxfv::FO_DELETE);
  QCOMPARE(requests[0].sources, std::vector<std::string>{"C:\\data\\b.txt"});
}

void WidgetTest::renameThroughTheEditor() {
  SimWidget s;
  s.w->show();
  QSignalSpy renames(s.w.get(), &FileViewerWidget::itemRenaming);
  s.click(s.w->reportView(), "c.txt");
  QTest::keyClick(s.w->reportView(), Qt::Key_F2);
  auto* editor = s.w->reportView()->viewport()->findChild<QLineEdit*>();
  QVERIFY(editor);
  QCOMPARE(editor->text(), QStringLiteral("c.txt"));
  editor->setText(QStringLiteral("renamed.txt"));
  QTest::keyClick(editor, Qt::Key_Return);  // the delegate commits from the event loop
  QTRY_COMPARE(renames.count(), 1);
  QVERIFY(s.rowOf("renamed.txt") >= 0);
  QCOMPARE(s.rowOf("c.txt"), -1);
  const auto& requests = s.platform->SimFileOps().Requests();
  QVERIFY(!requests.empty() && requests.back().operation == nxfv::FO_RENAME);

  // Escape abandons the edit: nothing is renamed.
  s.click(s.w->reportView(), "renamed.txt");
  QTest::keyClick(s.w->reportView(), Qt::Key_F2);
  editor = s.w->reportView()->viewport()->findChild<QLineEdit*>();
  QVERIFY(editor);
  editor->setText(QStringLiteral("other.txt"));
  QTest::keyClick(editor, Qt::Key_Escape);
  QCoreApplication::processEvents();
  QCOMPARE(renames.count(), 1);
  QVERIFY(s.rowOf("renamed.txt") >= 0);
}

void WidgetTest::checkBoxesAreIndependentOfSelection() {
  SimWidget s;
  s.w->setShowCheckBoxes(true);
  s.w->show();
  QTreeView* view = s.w->reportView();
  const int row = s.rowOf("a.doc");
  const QModelIndex index = s.w->model()->index(row, 0);
  QCOMPARE(s.w->model()->data(index, Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
  // The check box sits at the left edge of the first cell. Probing clicks
  // must not pair up into double-clicks.
  QGuiApplication::styleHints()->setMouseDoubleClickInterval(0);
  const QRect cell = view->visualRect(index);
  QPoint box;
  for (int x = cell.left(); x < cell.left() + 40 && box.isNull(); ++x) {
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(x, cell.center().y()));
    if (s.rows().Row(static_cast<size_t>(row)).Checked()) box = QPoint(x, cell.center().y());
  }
  QVERIFY2(!box.isNull(), "no click checked the row");
  // Probing may have selected the row; start over with the box found.
  s.w->viewer().UnSelectAll();
  s.w->viewer().UnCheckAll();
  QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, box);
  QCOMPARE(s.w->viewer().CheckedCount(), 1);
  QCOMPARE(s.w->model()->data(index, Qt::CheckStateRole).toInt(), int(Qt::Checked));
  QVERIFY(!s.rows().Row(static_cast<size_t>(row)).Selected());
  QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, box);
  QCOMPARE(s.w->viewer().CheckedCount(), 0);
  // The control's own check marks reach the view.
  s.w->viewer().CheckAll();
  QCOMPARE(s.w->model()->data(index, Qt::CheckStateRole).toInt(), int(Qt::Checked));
}

void WidgetTest::selectionIsSharedAcrossViewStyles() {
  SimWidget s;
  s.w->show();
  QTreeView* report = s.w->reportView();
  s.click(report, "a.doc");
  s.click(report, "c.txt", Qt::ControlModifier);
  QCOMPARE(s.w->viewer().SelectedCount(), 2);

  for (auto style : {FileViewerWidget::FvIcon, FileViewerWidget::FvSmallIcon, FileViewerWidget::FvList,
                     FileViewerWidget::FvReport}) {
    s.w->setViewStyle(style);
    QCOMPARE(s.w->viewer().ViewStyle(), static_cast<nxfv::ViewStyles>(style));
    auto* view = static_cast<QAbstractItemView*>(s.w->activeView());
    QCOMPARE(view->selectionModel(), s.w->selectionModel());
    QCOMPARE(view->currentIndex().row(), s.rowOf("c.txt"));
    QCOMPARE(s.w->selectionModel()->selectedRows().size(), 2);
    QVERIFY(!s.w->grab().isNull());  // each style paints its rows
  }
  // A click in the icon view reaches the control like one in the report.
  s.w->setViewStyle(FileViewerWidget::FvIcon);
  s.click(s.w->itemsView(), "b.txt");
  QCOMPARE(s.w->viewer().SelectedCount(), 1);
  QVERIFY(s.rows().Row(static_cast<size_t>(s.rowOf("b.txt"))).Selected());
  // And the control's own selection comes back to the views.
  s.w->viewer().SelectAll();
  QCOMPARE(s.w->selectionModel()->selectedRows().size(), int(s.rows().RowCount()));
}

void WidgetTest::hostVetoKeepsTheViewsSelection() {
  SimWidget s;
  s.w->show();
  QObject::connect(s.w.get(), &FileViewerWidget::selectionChanging,
                   [](FileViewerWidget::ItemPtr item, bool*, bool* cancel) { *cancel = item->FileName() == "b.txt"; });
  s.click(s.w->reportView(), "b.txt");
  QVERIFY(!s.w->selectionModel()->isRowSelected(s.rowOf("b.txt")));
  QCOMPARE(s.w->viewer().SelectedCount(), 0);
}

void WidgetTest::refreshInPlaceKeepsTheSelection() {
  SimWidget s;
  s.w->show();
  s.click(s.w->reportView(), "c.txt");
  // Rows above the selected one go and come: the views follow by row, the
  // selection stays on its file.
  s.platform->SimFiles().Remove("C:\\data\\a.doc");
  s.platform->SimFiles().AddFile("C:\\data\\0.txt", 1);
  s.w->viewer().RefreshView(false);
  QCOMPARE(s.w->model()->rowCount(), int(s.rows().RowCount()));
  QCOMPARE(s.w->selectionModel()->selectedRows().size(), 1);
  QCOMPARE(s.w->selectionModel()->selectedRows().value(0).row(), s.rowOf("c.txt"));
  QCOMPARE(s.w->model()->data(s.w->model()->index(s.rowOf("0.txt"), 0)).toString(), QStringLiteral("0.txt"));
}

void WidgetTest::columnsFollowTheControl() {
  SimWidget s;
  s.w->show();
  QHeaderView* header = s.w->reportView()->header();
  const nxfv::ListColumn& name = s.rows().Column(s.rows().FindColumn("nam"));
  // Twips at the screen's resolution: 1440 to the inch.
  QCOMPARE(header->sectionSize(0), name.width * s.w->logicalDpiX() / 1440);
  s.w->setViewOptions(1);  // the name column only: the others get width 0
  for (int i = 0; i < s.rows().ColumnCount(); ++i)
    QCOMPARE(header->isSectionHidden(i), s.rows().Column(i).width == 0);
  QVERIFY(header->isSectionHidden(s.rows().FindColumn("siz")));
  s.w->setHideColumnHeaders(true);
  QVERIFY(s.w->reportView()->isHeaderHidden());
  // A disabled control takes no clicks.
  s.w->setControlEnabled(false);
  s.click(s.w->reportView(), "a.doc");
  QCOMPARE(s.w->viewer().SelectedCount(), 0);
}

void WidgetTest::saveStateRoundTripAndDamage() {
  SimWidget s;
  s.w->show();
  QHeaderView* header = s.w->reportView()->header();
  const int size = s.rows().FindColumn("siz");
  header->resizeSection(size, 211);
  header->moveSection(header->visualIndex(size), 0);
  s.w->viewer().SetSortColumns({{"ext", true}});
  const QByteArray state = s.w->saveState();

  SimWidget other;
  other.w->show();
  QHeaderView* otherHeader = other.w->reportView()->header();
  struct Case {
    const char* name;
    QByteArray bytes;
  };
  const Case damaged[] = {
      {"empty", QByteArray()},
      {"wrong magic", QByteArray(state).replace(0, 1, "X")},
      {"other version", QByteArray(state).replace(5, 1, "\x02")},
      {"truncated", state.left(state.size() - 3)},
      {"trailing bytes", state + "junk"},
      {"huge count", state.left(6) + QByteArray("\xff\xff\xff\xff", 4)},
  };
  for (const Case& c : damaged) {
    QVERIFY2(!other.w->restoreState(c.bytes), c.name);
    QVERIFY2(otherHeader->visualIndex(size) != 0, c.name);
  }
  QVERIFY(other.w->restoreState(state));
  QCOMPARE(otherHeader->visualIndex(size), 0);
  QVERIFY(std::abs(otherHeader->sectionSize(size) - 211) <= 1);  // twips round to a pixel
  QCOMPARE(other.w->viewer().SortColumns(), (std::vector<nxfv::SortState>{{"ext", true}}));
  // The layout survives the next listing.
  other.w->viewer().setCurrentfolder("C:\\data\\sub");
  QCOMPARE(otherHeader->visualIndex(size), 0);
}

void WidgetTest::autoRefreshRunsFromTheEventLoop() {
  QTemporaryDir dir;
  QVERIFY(dir.isValid());
  FileViewerWidget w;
  w.setCurrentFolder(dir.path());
  w.show();
  QVERIFY(w.AutoUpdate());
  QCOMPARE(w.model()->RowOf("late.txt"), -1);
  QSignalSpy inserted(w.model(), &QAbstractItemModel::rowsInserted);
  QSignalSpy reset(w.model(), &QAbstractItemModel::modelReset);
  WriteFile(dir.filePath("late.txt"), "x");
  // Only the notifier and the timers, pumped by the event loop, can bring it.
  for (int i = 0; i < 50 && w.model()->RowOf("late.txt") < 0; ++i)
    (inserted.wait(100) || reset.count() > 0);
  QVERIFY(w.model()->RowOf("late.txt") >= 0);
}

void WidgetTest::clipboardCarriesTheMarkAndRawNames() {
  nxfv::qt::QtFileClipboard clip;
  for (const bool cut : {false, true}) {
    // A blank and a byte that is not UTF-8, as other programs read them.
    const std::vector<std::string> paths{"/tmp/a b.txt", "/tmp/caf\\xE9"};
    clip.SetFiles(paths, cut);
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    QVERIFY(mime);
    QCOMPARE(mime->urls().value(0).toEncoded(), QByteArray("file:///tmp/a%20b.txt"));
    QCOMPARE(mime->urls().value(1).toEncoded(), QByteArray("file:///tmp/caf%E9"));
    QVERIFY(mime->data("x-special/gnome-copied-files").startsWith(cut ? "cut\n" : "copy\n"));
    std::vector<std::string> back;
    bool backCut = !cut;
    QVERIFY(clip.GetFiles(back, backCut));
    QVERIFY(back == paths && backCut == cut);
  }
  // Another program's plain list of files reads as a copy.
  auto* mime = new QMimeData;
  mime->setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/other file"))});
  QGuiApplication::clipboard()->setMimeData(mime);
  std::vector<std::string> back;
  bool cut = true;
  QVERIFY(clip.GetFiles(back, cut));
  QCOMPARE(back, std::vector<std::string>{"/tmp/other file"});
  QVERIFY(!cut);
  clip.Clear();
  QVERIFY(!clip.HasFiles());
}

void WidgetTest::copyAndPasteThroughTheSystemClipboard() {
  QTemporaryDir dir;
  QVERIFY(dir.isValid());
  QDir(dir.path()).mkdir(QStringLiteral("target"));
  WriteFile(dir.filePath("copy me.txt"), "data");
  FileViewerWidget w;
  w.setCurrentFolder(dir.path());
  w.show();
  QTreeView* report = w.reportView();
  const int row = w.model()->RowOf("copy me.txt");
  QTest::mouseClick(report->viewport(), Qt::LeftButton, {}, report->visualRect(w.model()->index(row, 0)).center());
  QVERIFY(w.runFileAction(FileViewerWidget::FileAction::Copy));
  const QList<QUrl> urls = QGuiApplication::clipboard()->mimeData()->urls();
  QCOMPARE(urls, QList<QUrl>{QUrl::fromLocalFile(dir.filePath("copy me.txt"))});

  w.viewer().setCurrentfolder(dir.filePath("target").toStdString());
  QVERIFY(w.fileActionAvailable(FileViewerWidget::FileAction::Paste));
  QVERIFY(w.runFileAction(FileViewerWidget::FileAction::Paste));
  QVERIFY(QFile::exists(dir.filePath("target/copy me.txt")));
  QVERIFY(QFile::exists(dir.filePath("copy me.txt")));  // a copy, not a move
}

void WidgetTest::dropsMoveOrLinkFiles() {
  QTemporaryDir dir;
  QVERIFY(dir.isValid());
  QDir(dir.path()).mkpath(QStringLiteral("to/inner"));
  for (const char* name : {"moved.txt", "linked.txt", "copied.txt"}) WriteFile(dir.filePath(name), "x");
  FileViewerWidget w;
  w.setCurrentFolder(dir.filePath("to"));
  w.resize(640, 360);
  w.show();
  QTreeView* report = w.reportView();
  // The user picks the action with the keys held while dropping; below the
  // rows is the folder on view.
  auto drop = [&](const char* name, Qt::DropAction action, Qt::KeyboardModifiers keys,
                  QPoint at = QPoint(10, 330)) {
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(dir.filePath(QString::fromLatin1(name)))});
    const Qt::DropActions all = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
    QDragEnterEvent enter(at, all, &mime, Qt::LeftButton, keys);  // a drop follows the drag's entry
    QCoreApplication::sendEvent(report->viewport(), &enter);
    QDropEvent e(at, all, &mime, Qt::LeftButton, keys);
    QCoreApplication::sendEvent(report->viewport(), &e);
    return e.isAccepted() && e.dropAction() == action;
  };
  QVERIFY(drop("moved.txt", Qt::MoveAction, Qt::ShiftModifier));
  QVERIFY(!QFile::exists(dir.filePath("moved.txt")));
  QVERIFY(QFile::exists(dir.filePath("to/moved.txt")));
  QVERIFY(drop("linked.txt", Qt::LinkAction, Qt::ControlModifier | Qt::ShiftModifier));
  QCOMPARE(QFile::symLinkTarget(dir.filePath("to/linked.txt")), dir.filePath("linked.txt"));
  QVERIFY(QFile::exists(dir.filePath("linked.txt")));
  QVERIFY(w.model()->RowOf("linked.txt") >= 0);
  // On a folder's row: into that folder.
  const QPoint inner = report->visualRect(w.model()->index(w.model()->RowOf("inner"), 0)).center();
  QVERIFY(drop("copied.txt", Qt::CopyAction, {}, inner));
  QVERIFY(QFile::exists(dir.filePath("to/inner/copied.txt")));
  QVERIFY(QFile::exists(dir.filePath("copied.txt")));
}

QTEST_MAIN(WidgetTest)
#include "widget_test.moc"
