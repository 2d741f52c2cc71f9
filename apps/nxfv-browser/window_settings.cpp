#include "window_settings.h"

#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QSettings>
#include <map>

#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/qt/settings_property_bag.h"

namespace nxfv::browser {
namespace {

// The stored settings with the browser's own on top: `forced` values win,
// `defaults` stand in for what the store does not hold.
class OverlayBag : public PropertyBag {
 public:
  explicit OverlayBag(PropertyBag& base) : base_(base) {}
  std::map<std::string, Variant> forced, defaults;

  Variant ReadProperty(const std::string& key, const Variant& defaultValue) override {
    if (auto f = forced.find(key); f != forced.end()) return f->second;
    auto d = defaults.find(key);
    return base_.ReadProperty(key, d != defaults.end() ? d->second : defaultValue);
  }
  void WriteProperty(const std::string& key, const Variant& value, const Variant& defaultValue) override {
    base_.WriteProperty(key, value, defaultValue);
  }

 private:
  PropertyBag& base_;
};

std::string Utf8(const QString& s) { return s.toUtf8().toStdString(); }

}  // namespace

std::vector<std::pair<std::string, Variant>> BrowserDefaults() {
  // A file browser: archives open like folders, and several files can be
  // selected for one command.
  return {{"AllowDiveIntoArchives", Variant(true)}, {"AllowMultipleSelection", Variant(true)}};
}

void RestoreWindow(QMainWindow& window, qt::FileViewerWidget& viewer, QSettings& settings, const QString& path) {
  window.restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
  window.restoreState(settings.value(QStringLiteral("windowState")).toByteArray());

  settings.beginGroup(QStringLiteral("viewer"));
  qt::SettingsPropertyBag stored(settings);
  OverlayBag bag(stored);
  for (const auto& [key, value] : BrowserDefaults()) bag.defaults[key] = value;
  const QString saved = settings.value(QStringLiteral("CurrentFolder")).toString();
  if (!path.isEmpty())
    bag.forced["CurrentFolder"] = Variant(Utf8(path));
  else if (saved.isEmpty() || !QFileInfo::exists(saved))
    bag.forced["CurrentFolder"] = Variant(Utf8(QDir::homePath()));
  viewer.readSettings(bag);
  settings.endGroup();

  viewer.restoreState(settings.value(QStringLiteral("columns")).toByteArray());
}

void SaveWindow(const QMainWindow& window, qt::FileViewerWidget& viewer, QSettings& settings) {
  settings.setValue(QStringLiteral("geometry"), window.saveGeometry());
  settings.setValue(QStringLiteral("windowState"), window.saveState());
  settings.beginGroup(QStringLiteral("viewer"));
  qt::SettingsPropertyBag stored(settings);
  viewer.writeSettings(stored);
  settings.endGroup();
  settings.setValue(QStringLiteral("columns"), viewer.saveState());
}

}  // namespace nxfv::browser
