// FileViewerPlugin: FileViewerWidget for Qt Designer and for QUiLoader.
//
// Design mode comes from who loads the plugin: Designer initialises it with
// its form editor, and every widget made then is in design mode (the
// control's UserMode False: it lists nothing and only keeps the property
// values the form stores). QUiLoader at run time initialises it without a
// form editor, so the same plugin makes run-mode widgets that list their
// folder when shown.
#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace nxfv::qt {

class FileViewerPlugin : public QObject, public QDesignerCustomWidgetInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetInterface")
  Q_INTERFACES(QDesignerCustomWidgetInterface)

 public:
  explicit FileViewerPlugin(QObject* parent = nullptr);

  QString name() const override;
  QString group() const override;
  QString toolTip() const override;
  QString whatsThis() const override;
  QString includeFile() const override;
  QIcon icon() const override;
  bool isContainer() const override { return false; }
  QWidget* createWidget(QWidget* parent) override;
  bool isInitialized() const override { return initialized_; }
  void initialize(QDesignerFormEditorInterface* core) override;
  QString domXml() const override;

 private:
  bool initialized_ = false;
  bool designer_ = false;  // initialised by Designer's form editor
};

}  // namespace nxfv::qt
