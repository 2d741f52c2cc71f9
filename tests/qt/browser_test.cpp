// The demo browser's window on real temporary folders: the navigation
// buttons, the address bar, the status bar counts and --screenshot.
#include <QAction>
#include <QFile>
#include <QImage>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include "browser_window.h"
#include "capture.h"
#include "column_menu.h"
#include "command_line.h"
#include "file_actions.h"
#include "message_presenter.h"
#include "navigation_bar.h"
#include "nxfv/qt/list_view_model.h"
#include "places_panel.h"
#include "status_summary.h"

using namespace nxfv::browser;

namespace {

void Touch(const QString& path, const QByteArray& bytes = "x") {
  QFile f(path);
  QVERIFY(f.open(QIODevice::WriteOnly));
  f.write(bytes);
}

// Selects the named rows the way a user's clicks reach the control.
void Select(BrowserWindow& w, const QStringList& names) {
  auto* model = w.viewer().model();
  for (int row = 0; row < model->rowCount(); ++row)
    if (names.contains(model->index(row, 0).data().toString()))
      w.viewer().selectionModel()->select(model->index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

}  // namespace

class BrowserTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    QVERIFY(dir_.isValid());
    root_ = dir_.path();
    QVERIFY(QDir(root_).mkpath(QStringLiteral("a/b")));
    for (const char* name : {"one.txt", "two.md", "three.png"}) Touch(root_ + u'/' + QLatin1String(name));
  }

  // Back and forward follow the control's history; up is off only in the
  // drives view, the top.
  void buttonsFollowNavigation() {
    BrowserWindow w(nullptr, false);
    w.start(root_);
    NavigationBar& nav = w.navigation();
    auto state = [&] {
      return QString("%1%2%3").arg(nav.backAction()->isEnabled()).arg(nav.forwardAction()->isEnabled()).arg(
          nav.upAction()->isEnabled());
    };
    QCOMPARE(nav.location(), root_);
    QCOMPARE(state(), "001");
    QVERIFY(nav.navigate(root_ + "/a"));
    QCOMPARE(state(), "101");
    QVERIFY(nav.navigate(root_ + "/a/b"));
    nav.backAction()->trigger();
    QCOMPARE(nav.location(), root_ + "/a");
    QCOMPARE(state(), "111");
    nav.backAction()->trigger();
    QCOMPARE(state(), "011");
    nav.forwardAction()->trigger();
    nav.upAction()->trigger();  // a new location drops the forward history
    QCOMPARE(nav.location(), root_);
    QCOMPARE(state(), "101");
    w.places().open(0);  // the drives view
    QCOMPARE(nav.location(), QString());
    QVERIFY(!nav.upAction()->isEnabled());
    QVERIFY(nav.backAction()->isEnabled());
  }

  // A path that does not exist is refused with the control's box and leaves
  // the view where it was; the typed text stays, marked, for correcting.
  void addressBarRefusesMissingPath() {
    BrowserWindow w(nullptr, false);
    w.start(root_);
    NavigationBar& nav = w.navigation();
    const QString missing = root_ + "/no/such/folder";
    nav.addressBar()->setText(missing);
    QTest::keyClick(nav.addressBar(), Qt::Key_Return);
    QCOMPARE(nav.location(), root_);
    QCOMPARE(w.viewer().CurrentFolder(), root_);
    QCOMPARE(w.messages().boxCount(), 1);
    QCOMPARE(nav.addressBar()->text(), missing);
    QVERIFY(nav.addressBar()->property("error").toBool());
    QVERIFY(!nav.navigate(QString()));  // blank: nothing happens, no box
    QCOMPARE(w.messages().boxCount(), 1);
    QVERIFY(nav.navigate(root_ + "/a"));
    QVERIFY(!nav.addressBar()->property("error").toBool());
    QCOMPARE(nav.addressBar()->text(), root_ + "/a");
  }

  void statusBarCounts() {
    BrowserWindow w(nullptr, false);
    w.start(root_);
    StatusSummary& summary = w.summary();
    summary.update();
    QCOMPARE(summary.text(), "4 items");
    Select(w, {"one.txt", "two.md"});
    QTRY_COMPARE(summary.text(), "4 items, 2 selected");
    QVERIFY(w.navigation().navigate(root_ + "/a"));
    QTRY_COMPARE(summary.text(), "1 item");

    const struct Case {
      int items, selected, checked;
      bool archive;
      const char* expected;
    } cases[] = {
        {0, 0, 0, false, "0 items"},
        {2, 0, 1, false, "2 items, 1 checked"},
        {3, 1, 2, true, "3 items, 1 selected, 2 checked, inside an archive"},
    };
    for (const Case& c : cases)
      QVERIFY2(StatusSummary::describe(c.items, c.selected, c.checked, c.archive) == QLatin1String(c.expected), c.expected);
  }

  void commandLine() {
    const struct Case {
      QStringList args;
      bool ok;
      const char* path;
      const char* screenshot;
      int width;
    } cases[] = {
        {{"/x"}, true, "/x", "", 960},
        {{"--screenshot", "a.png", "/x", "--size=640x480"}, true, "/x", "a.png", 640},
        {{"--view=list", "--", "--odd"}, true, "--odd", "", 960},
        {{"/x", "/y"}, false, "", "", 0},                      // two paths
        {{"--view", "tiles"}, false, "", "", 0},               // unknown style
        {{"--size", "10x10"}, false, "", "", 0},               // too small to draw
        {{"--screenshot"}, false, "", "", 0},                  // value missing
        {{"--screenshot=a.png", "--bench=/x"}, false, "", "", 0},
        {{"--frobnicate"}, false, "", "", 0},
    };
    for (const Case& c : cases) {
      BrowserOptions o;
      QString error;
      const QString name = c.args.join(' ');
      QVERIFY2(ParseCommandLine(c.args, o, error) == c.ok, qPrintable(name + ": " + error));
      if (!c.ok) {
        QVERIFY2(!error.isEmpty(), qPrintable(name));
        continue;
      }
      QCOMPARE(o.path, QString(c.path));
      QCOMPARE(o.screenshot, QString(c.screenshot));
      QCOMPARE(o.size.width(), c.width);
    }
  }

  // The filter, the hidden-files toggle and the column chooser act on the
  // control's settings and list again.
  void viewSettings() {
    // Hidden on Linux: the names a folder's .hidden file lists.
    Touch(root_ + "/.hidden", "two.md\n");
    BrowserWindow w(nullptr, false);
    w.start(root_);
    auto rows = [&] { w.summary().update(); return w.summary().text(); };
    if (w.showHiddenAction()->isChecked()) w.showHiddenAction()->trigger();
    QVERIFY(!w.viewer().ShowHiddenItems());
    QCOMPARE(rows(), "3 items");
    w.showHiddenAction()->trigger();
    QVERIFY(w.viewer().ShowHiddenItems());
    QCOMPARE(rows(), "4 items");
    w.patternBox()->setText("*.md; *.png");
    QTest::keyClick(w.patternBox(), Qt::Key_Return);
    QCOMPARE(w.viewer().pattern(), "*.md; *.png");
    QCOMPARE(rows(), "3 items");  // the folder a/ and the two matches
    w.patternBox()->clear();
    QTest::keyClick(w.patternBox(), Qt::Key_Return);
    QCOMPARE(rows(), "4 items");
    QFile::remove(root_ + "/.hidden");

    ColumnMenu& columns = w.columnMenu();
    columns.refresh();
    QAction* name = nullptr;
    QAction* created = nullptr;
    for (QAction* a : columns.actions()) {
      if (a->data().toInt() == 1) name = a;
      if (a->data().toInt() == 64) created = a;
    }
    QVERIFY(name && created);
    QVERIFY(name->isChecked() && !name->isEnabled());
    QVERIFY(!created->isChecked());
    created->trigger();
    QCOMPARE(w.viewer().ViewOptions() & 64, 64);
    created->trigger();
    QCOMPARE(w.viewer().ViewOptions() & 64, 0);
  }

  // Copy needs a selection; paste needs files on the clipboard and a folder.
  void fileActionsFollowSelection() {
    BrowserWindow w(nullptr, false);
    w.start(root_);
    FileActions& actions = w.fileActions();
    actions.updateEnabled();
    QVERIFY(!actions.copy()->isEnabled());
    QVERIFY(actions.newFolder()->isEnabled());
    Select(w, {"one.txt"});
    actions.updateEnabled();
    QVERIFY(actions.copy()->isEnabled());
    actions.copy()->trigger();
    QVERIFY(w.navigation().navigate(root_ + "/a"));
    actions.updateEnabled();
    QVERIFY(!actions.copy()->isEnabled());
    QVERIFY(actions.paste()->isEnabled());
    actions.paste()->trigger();
    QTRY_VERIFY(QFileInfo::exists(root_ + "/a/one.txt"));
    QFile::remove(root_ + "/a/one.txt");
  }

  // What one run saves, the next one opens: folder, view style, window.
  void settingsSurviveRestart() {
    const QString ini = root_ + "/../browser-settings.ini";
    {
      QSettings settings(ini, QSettings::IniFormat);
      BrowserWindow w(&settings, false);
      w.start(root_ + "/a");
      w.viewer().setViewStyle(nxfv::qt::FileViewerWidget::FvList);
      w.saveSettings();
    }
    QSettings settings(ini, QSettings::IniFormat);
    BrowserWindow w(&settings, false);
    w.start(QString());
    QCOMPARE(w.navigation().location(), root_ + "/a");
    QCOMPARE(w.viewer().viewStyle(), nxfv::qt::FileViewerWidget::FvList);
    QVERIFY(w.viewer().AllowDiveIntoArchives());
    BrowserWindow named(&settings, false);
    named.start(root_);  // a folder named on the command line wins
    QCOMPARE(named.navigation().location(), root_);
    QFile::remove(ini);
  }

  // The program itself: the PNG has the window's size; a missing path
  // still draws the window (with the error) but fails the run.
  void screenshotWritesPng() {
    const QString png = root_ + "/shot.png";
    QProcess run;
    run.start(QStringLiteral(NXFV_BROWSER_BINARY), {"--screenshot", png, root_, "--view", "list", "--size", "640x480"});
    QVERIFY(run.waitForFinished(60000));
    QCOMPARE(run.exitCode(), 0);
    const QImage image(png);
    QVERIFY(!image.isNull());
    QCOMPARE(image.size(), QSize(640, 480));
    QVERIFY(QFileInfo(png).size() > 1000);

    run.start(QStringLiteral(NXFV_BROWSER_BINARY), {"--screenshot", png, root_ + "/missing"});
    QVERIFY(run.waitForFinished(60000));
    QCOMPARE(run.exitCode(), 1);
    QVERIFY(!QImage(png).isNull());
  }

 private:
  QTemporaryDir dir_;
  QString root_;
};

QTEST_MAIN(BrowserTest)
#include "browser_test.moc"
