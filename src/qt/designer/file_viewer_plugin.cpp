#include "file_viewer_plugin.h"

#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/qt/icon_source.h"

namespace nxfv::qt {

FileViewerPlugin::FileViewerPlugin(QObject* parent) : QObject(parent) {}

QString FileViewerPlugin::name() const { return QStringLiteral("nxfv::qt::FileViewerWidget"); }
QString FileViewerPlugin::group() const { return QStringLiteral("NxFileViewer"); }
QString FileViewerPlugin::toolTip() const { return QStringLiteral("File and folder browser"); }
QString FileViewerPlugin::whatsThis() const {
  return QStringLiteral("Shows a folder, the drives or the entries of a ZIP or CAB archive; its saved settings are "
                        "the properties from BackColor to ShowCheckBoxes.");
}
QString FileViewerPlugin::includeFile() const { return QStringLiteral("nxfv/qt/file_viewer_widget.h"); }
QIcon FileViewerPlugin::icon() const { return IconSource::Drawn(QStringLiteral("folder")); }

void FileViewerPlugin::initialize(QDesignerFormEditorInterface* core) {
  if (initialized_) return;
  initialized_ = true;
  designer_ = core != nullptr;
}

QWidget* FileViewerPlugin::createWidget(QWidget* parent) {
  auto* widget = new FileViewerWidget(parent);
  widget->setDesignMode(designer_);
  return widget;
}

QString FileViewerPlugin::domXml() const {
  return QStringLiteral(
      "<ui language=\"c++\">\n"
      " <widget class=\"nxfv::qt::FileViewerWidget\" name=\"fileViewer\">\n"
      "  <property name=\"geometry\">\n"
      "   <rect><x>0</x><y>0</y><width>480</width><height>320</height></rect>\n"
      "  </property>\n"
      " </widget>\n"
      "</ui>\n");
}

}  // namespace nxfv::qt
