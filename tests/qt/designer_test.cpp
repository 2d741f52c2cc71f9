// The widget as a form element: a .ui file's properties are the control's
// saved settings, and the Designer plugin makes design-mode widgets that
// list nothing but keep the values the form stores.
#include <QBuffer>
#include <QPluginLoader>
#include <QSettings>
#include <QTemporaryDir>
#include <QUiLoader>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtTest>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <fstream>

#include <QListView>

#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/qt/list_view_model.h"
#include "nxfv/qt/settings_property_bag.h"

using nxfv::qt::FileViewerWidget;

namespace {

// Makes the widget itself, as a host without the plugin installed would.
class Loader : public QUiLoader {
 public:
  QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
    if (className != QLatin1String("nxfv::qt::FileViewerWidget")) return QUiLoader::createWidget(className, parent, name);
    auto* w = new FileViewerWidget(parent);
    w->setObjectName(name);
    return w;
  }
};

QString Form(const QString& folder) {
  return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Form</class>
 <widget class="QWidget" name="Form">
  <layout class="QVBoxLayout" name="layout">
   <item>
    <widget class="nxfv::qt::FileViewerWidget" name="viewer">
     <property name="BackColor"><UInt>255</UInt></property>
     <property name="CurrentFolder"><string>%1</string></property>
     <property name="ShowGOUPFolder"><bool>false</bool></property>
     <property name="pattern"><string>*.txt</string></property>
     <property name="ViewStyle"><enum>nxfv::qt::FileViewerWidget::FvList</enum></property>
     <property name="AllowMulticolumnsort"><bool>false</bool></property>
     <property name="BorderStyle"><enum>nxfv::qt::FileViewerWidget::BorderFixedSingle</enum></property>
     <property name="ShowCheckBoxes"><bool>true</bool></property>
    </widget>
   </item>
  </layout>
 </widget>
 <customwidgets>
  <customwidget>
   <class>nxfv::qt::FileViewerWidget</class>
   <extends>QWidget</extends>
   <header>nxfv/qt/file_viewer_widget.h</header>
  </customwidget>
 </customwidgets>
</ui>
)")
      .arg(folder);
}

void Touch(const QString& path) { std::ofstream(path.toStdString()) << "x"; }

}  // namespace

class DesignerTest : public QObject {
  Q_OBJECT

 private slots:
  // First: a plugin is initialised once per process, and the next test
  // initialises it for a form editor.
  void pluginWidgetsListAtRunTime();
  void pluginMakesDesignModeWidgets();
  void uiFileIsThePropertyBag();
  void settingsRoundTripThroughQSettings();
};

void DesignerTest::pluginMakesDesignModeWidgets() {
  QPluginLoader loader(qEnvironmentVariable("NXFV_BUILD_DIR") + QStringLiteral("/plugins/designer/libnxfv_designer.so"));
  QVERIFY2(loader.load(), qPrintable(loader.errorString()));
  auto* plugin = qobject_cast<QDesignerCustomWidgetInterface*>(loader.instance());
  QVERIFY(plugin);
  QCOMPARE(plugin->name(), QStringLiteral("nxfv::qt::FileViewerWidget"));
  QVERIFY(plugin->domXml().contains(plugin->name()));
  QDesignerFormEditorInterface core;
  plugin->initialize(&core);

  QTemporaryDir dir;
  Touch(dir.filePath("a.txt"));
  std::unique_ptr<QWidget> w(plugin->createWidget(nullptr));
  // The plugin carries its own copy of the widget's code, so the test
  // speaks to it through Qt's meta-object only.
  QVERIFY(w);
  QCOMPARE(w->metaObject()->className(), "nxfv::qt::FileViewerWidget");
  QVERIFY(w->property("designMode").toBool());
  w->setProperty("CurrentFolder", dir.path());
  w->setProperty("ViewOptions", 3);  // the control ignores this at design time; the form keeps it
  w->show();
  bool applied = true;
  QVERIFY(QMetaObject::invokeMethod(w.get(), "applySettings", Q_RETURN_ARG(bool, applied)));
  QVERIFY(!applied);
  auto* model = w->findChild<QAbstractItemModel*>();
  QVERIFY(model);
  QCOMPARE(model->rowCount(), 0);
  QCOMPARE(w->property("CurrentFolder").toString(), dir.path());
  QCOMPARE(w->property("ViewOptions").toInt(), 3);
}

void DesignerTest::uiFileIsThePropertyBag() {
  QTemporaryDir dir;
  Touch(dir.filePath("keep.txt"));
  Touch(dir.filePath("skip.doc"));
  QDir(dir.path()).mkdir(QStringLiteral("folder"));
  QByteArray xml = Form(dir.path()).toUtf8();
  QBuffer buffer(&xml);
  Loader loader;
  std::unique_ptr<QWidget> form(loader.load(&buffer));
  QVERIFY2(form, qPrintable(loader.errorString()));
  auto* w = form->findChild<FileViewerWidget*>(QStringLiteral("viewer"));
  QVERIFY(w);
  QCOMPARE(w->viewer().ItemCount(), 0);  // nothing is listed before the form shows
  form->show();
  QVERIFY(w->settingsApplied());

  nxfv::FileViewer& v = w->viewer();
  QCOMPARE(QString::fromStdString(v.Currentfolder()), dir.path());
  QCOMPARE(v.FilePattern(), std::string("*.txt"));
  QCOMPARE(v.ViewStyle(), nxfv::FvList);
  QCOMPARE(w->activeView(), static_cast<QWidget*>(w->itemsView()));
  QVERIFY(!v.AllowMultiColumnSort());
  QVERIFY(!v.ShowGOUPFolder());
  QVERIFY(v.ShowCheckBoxes());
  QCOMPARE(v.BackColor(), 255u);
  QCOMPARE(v.Borderstyle(), int16_t{1});
  // The filters were in force for the one listing the form made.
  QVERIFY(w->model()->RowOf("keep.txt") >= 0);
  QVERIFY(w->model()->RowOf("folder") >= 0);
  QCOMPARE(w->model()->RowOf("skip.doc"), -1);
  QCOMPARE(v.ItemCount(), 2);
  // From now on a property acts at once.
  w->setPattern(QStringLiteral("*.doc"));
  QVERIFY(w->model()->RowOf("skip.doc") >= 0);
}

// A host that loads its form at run time gets the widget from the plugin,
// out of design mode: it lists.
void DesignerTest::pluginWidgetsListAtRunTime() {
  QTemporaryDir dir;
  Touch(dir.filePath("keep.txt"));
  QByteArray xml = Form(dir.path()).toUtf8();
  QBuffer buffer(&xml);
  QUiLoader loader;
  loader.clearPluginPaths();
  loader.addPluginPath(qEnvironmentVariable("NXFV_BUILD_DIR") + QStringLiteral("/plugins/designer"));
  QVERIFY(loader.availableWidgets().contains(QStringLiteral("nxfv::qt::FileViewerWidget")));
  std::unique_ptr<QWidget> form(loader.load(&buffer));
  QVERIFY2(form, qPrintable(loader.errorString()));
  QWidget* w = form->findChild<QWidget*>(QStringLiteral("viewer"));
  QVERIFY(w);
  QCOMPARE(w->metaObject()->className(), "nxfv::qt::FileViewerWidget");
  form->show();
  QVERIFY(!w->property("designMode").toBool());
  QCOMPARE(w->property("pattern").toString(), QStringLiteral("*.txt"));
  auto* model = w->findChild<QAbstractItemModel*>();
  QVERIFY(model);
  QCOMPARE(model->rowCount(), 1);  // keep.txt; the form hides the go-up row
}

void DesignerTest::settingsRoundTripThroughQSettings() {
  QTemporaryDir dir;
  QSettings store(dir.filePath("viewer.ini"), QSettings::IniFormat);
  {
    FileViewerWidget w;
    w.setDesignMode(true);  // no listing needed to write settings
    w.setShowHiddenItems(false);
    w.setPattern(QStringLiteral("*.c;*.h"));
    w.setForeColor(0x00112233);
    w.setViewStyle(FileViewerWidget::FvSmallIcon);
    nxfv::qt::SettingsPropertyBag bag(store);
    w.writeSettings(bag);
  }
  store.sync();
  QSettings reread(dir.filePath("viewer.ini"), QSettings::IniFormat);  // values come back as text
  FileViewerWidget w;
  w.setDesignMode(true);
  nxfv::qt::SettingsPropertyBag bag(reread);
  w.readSettings(bag);
  QVERIFY(!w.ShowHiddenItems());
  QVERIFY(w.ShowFiles());
  QCOMPARE(w.pattern(), QStringLiteral("*.c;*.h"));
  QCOMPARE(w.ForeColor(), 0x00112233u);
  QCOMPARE(w.viewStyle(), FileViewerWidget::FvSmallIcon);
}

QTEST_MAIN(DesignerTest)
#include "designer_test.moc"
