// The saved settings as the widget's properties: one table of the 32 bag
// keys with the control's getter and let for each, the collecting of values
// before they are applied, and the bag round trips.
#include <QVariant>

#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/qt/file_viewer_widget_p.h"

namespace nxfv::qt {
namespace {

QString Utf8(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }
std::string ToUtf8(const QString& text) { return text.toUtf8().toStdString(); }

struct Setting {
  const char* key;
  QVariant (*get)(const FileViewer&);
  void (*set)(FileViewer&, const QVariant&);
};

// In the control's reading order. Properties hold the stored form of each
// value: colours as OLE colour numbers, the enumerations as their numbers.
const Setting kSettings[] = {
    {"BackColor", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(uint(v.BackColor())); },
     [](FileViewer& v, const QVariant& x) { v.setBackColor(x.toUInt()); }},
    {"ForeColor", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(uint(v.TextColor())); },
     [](FileViewer& v, const QVariant& x) { v.setTextColor(x.toUInt()); }},
    {"CurrentFolder", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(Utf8(v.Currentfolder())); },
     [](FileViewer& v, const QVariant& x) { v.setCurrentfolder(ToUtf8(x.toString())); }},
    {"ViewOptions", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(int(v.ViewOptions())); },
     [](FileViewer& v, const QVariant& x) { v.setViewOptions(x.toInt()); }},
    {"ShowFolders", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.ShowFolders()); },
     [](FileViewer& v, const QVariant& x) { v.setShowFolders(x.toBool()); }},
    {"ShowFiles", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.ShowFiles()); },
     [](FileViewer& v, const QVariant& x) { v.setShowFiles(x.toBool()); }},
    {"ShowHiddenItems", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.ShowHiddenItems()); },
     [](FileViewer& v, const QVariant& x) { v.setShowHiddenItems(x.toBool()); }},
    {"ShowSysItems", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.ShowSysItems()); },
     [](FileViewer& v, const QVariant& x) { v.setShowSysItems(x.toBool()); }},
    {"ShowGOUPFolder", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.ShowGOUPFolder()); },
     [](FileViewer& v, const QVariant& x) { v.setShowGOUPFolder(x.toBool()); }},
    {"GoUpTopFolder", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(Utf8(v.GoUpTopFolder())); },
     [](FileViewer& v, const QVariant& x) { v.setGoUpTopFolder(ToUtf8(x.toString())); }},
    {"pattern", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(Utf8(v.FilePattern())); },
     [](FileViewer& v, const QVariant& x) { v.setFilePattern(ToUtf8(x.toString())); }},
    {"ViewStyle", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(int(v.ViewStyle())); },
     [](FileViewer& v, const QVariant& x) { v.setViewStyle(static_cast<ViewStyles>(x.toInt() & 3)); }},
    {"VirtualFileList", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.VirtualFileList()); },
     [](FileViewer& v, const QVariant& x) { v.setVirtualFileList(x.toBool()); }},
    {"StartingFolder", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(Utf8(v.StartingFolder())); },
     [](FileViewer& v, const QVariant& x) { v.setStartingFolder(ToUtf8(x.toString())); }},
    {"AllowDiveIntoFolders", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.AllowDiveIntoFolders()); },
     [](FileViewer& v, const QVariant& x) { v.setAllowDiveIntoFolders(x.toBool()); }},
    {"AllowDiveIntoArchives", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.AllowDiveIntoArchives()); },
     [](FileViewer& v, const QVariant& x) { v.setAllowDiveIntoArchives(x.toBool()); }},
    {"AllowitemRenaming", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.AllowitemRenaming()); },
     [](FileViewer& v, const QVariant& x) { v.setAllowitemRenaming(x.toBool()); }},
    {"AllowMulticolumnsort", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.AllowMultiColumnSort()); },
     [](FileViewer& v, const QVariant& x) { v.setAllowMultiColumnSort(x.toBool()); }},
    {"AllowFileExecution", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.AllowFileExecution()); },
     [](FileViewer& v, const QVariant& x) { v.setAllowFileExecution(x.toBool()); }},
    {"AllowMultipleSelection", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.AllowMultipleSelection()); },
     [](FileViewer& v, const QVariant& x) { v.setAllowMultipleSelection(x.toBool()); }},
    {"AutoUpdate", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.AutoUpdate()); },
     [](FileViewer& v, const QVariant& x) { v.setAutoUpdate(x.toBool()); }},
    {"DefaultKeyHandling", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.DefaultKeyHandling()); },
     [](FileViewer& v, const QVariant& x) { v.setDefaultKeyHandling(x.toBool()); }},
    {"BorderStyle", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(int(v.Borderstyle())); },
     [](FileViewer& v, const QVariant& x) { v.setBorderstyle(static_cast<int16_t>(x.toInt())); }},
    {"Appearance", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(int(v.Appearance())); },
     [](FileViewer& v, const QVariant& x) { v.setAppearance(static_cast<int16_t>(x.toInt())); }},
    {"Enabled", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.Enabled()); },
     [](FileViewer& v, const QVariant& x) { v.setEnabled(x.toBool()); }},
    {"HideColumnHeaders", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.HideColumnHeaders()); },
     [](FileViewer& v, const QVariant& x) { v.setHideColumnHeaders(x.toBool()); }},
    {"HideSelection", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.HideSelection()); },
     [](FileViewer& v, const QVariant& x) { v.setHideSelection(x.toBool()); }},
    {"TrackSelection", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.TrackSelection()); },
     [](FileViewer& v, const QVariant& x) { v.setTrackSelection(x.toBool()); }},
    {"AllowMoveColumns", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.AllowMoveColumns()); },
     [](FileViewer& v, const QVariant& x) { v.setAllowMoveColumns(x.toBool()); }},
    {"FullRowSelection", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.FullRowSelection()); },
     [](FileViewer& v, const QVariant& x) { v.setFullRowSelection(x.toBool()); }},
    {"ShowGridLines", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.ShowGridLines()); },
     [](FileViewer& v, const QVariant& x) { v.setShowGridLines(x.toBool()); }},
    {"ShowCheckBoxes", [](const FileViewer& v) -> QVariant { return QVariant::fromValue(v.ShowCheckBoxes()); },
     [](FileViewer& v, const QVariant& x) { v.setShowCheckBoxes(x.toBool()); }},
};

const Setting* Find(const char* key) {
  for (const Setting& s : kSettings)
    if (qstrcmp(s.key, key) == 0) return &s;
  return nullptr;
}

// A property value in the bag's terms.
Variant ToVariant(const QVariant& v) {
  switch (v.typeId()) {
    case QMetaType::Bool: return Variant(v.toBool());
    case QMetaType::UInt: return Variant(static_cast<int32_t>(v.toUInt()));  // OLE colours keep their bits
    case QMetaType::Int: return Variant(static_cast<int32_t>(v.toInt()));
    default: return Variant(ToUtf8(v.toString()));
  }
}

// The control's values with the collected ones over them, in the bag's order.
void MergedSettings(FileViewer& viewer, const QVariantMap& pending, PropertyBag& out) {
  MemoryPropertyBag current;
  viewer.WriteProperties(current);
  for (const auto& [key, value] : current.Values()) {
    const QString name = QString::fromStdString(key);
    out.WriteProperty(key, pending.contains(name) ? ToVariant(pending.value(name)) : value, value);
  }
}

}  // namespace

QStringList FileViewerWidget::settingNames() {
  QStringList names;
  for (const Setting& s : kSettings) names << QString::fromLatin1(s.key);
  return names;
}

QVariant FileViewerWidget::setting(const char* key) const {
  const Setting* s = Find(key);
  if (!s) return {};
  if (!d_->applied) {
    auto found = d_->pending.constFind(QString::fromLatin1(key));
    if (found != d_->pending.constEnd()) return *found;
  }
  return s->get(*d_->viewer);
}

void FileViewerWidget::setSetting(const char* key, const QVariant& value) {
  const Setting* s = Find(key);
  if (!s) return;
  if (!d_->applied) {
    d_->pending.insert(QString::fromLatin1(key), value);
    // Everything but the location takes effect at once, so that a form in
    // Designer shows its look; the listing waits for applySettings.
    if (qstrcmp(key, "CurrentFolder") != 0) s->set(*d_->viewer, value);
  } else {
    s->set(*d_->viewer, value);
  }
  if (qstrcmp(key, "ViewStyle") == 0) d_->ApplyViewStyle();
}

void FileViewerWidgetPrivate::PropertyChanged(const std::string& key) {
  if (key == "ViewStyle") ApplyViewStyle();
  emit q.settingChanged(QString::fromStdString(key));
}

void FileViewerWidget::setDesignMode(bool design) {
  d_->designMode = design;
  d_->viewer->SetUserMode(!design);
}

bool FileViewerWidget::isDesignMode() const { return d_->designMode; }
bool FileViewerWidget::settingsApplied() const { return d_->applied; }

bool FileViewerWidget::applySettings() {
  if (d_->designMode) return false;
  if (d_->applied) return true;
  MemoryPropertyBag merged;
  MergedSettings(*d_->viewer, d_->pending, merged);
  readSettings(merged);
  return true;
}

void FileViewerWidget::readSettings(PropertyBag& bag) {
  if (d_->designMode) {
    for (const Setting& s : kSettings) {
      const Variant fallback = ToVariant(setting(s.key));
      Variant value;
      try {
        value = bag.ReadProperty(s.key, fallback);
      } catch (...) {
        value = fallback;  // a bag that fails keeps the value, as the control does
      }
      const QVariant current = setting(s.key);
      QVariant v;
      switch (current.typeId()) {
        case QMetaType::Bool: v = value.AsBool(); break;
        case QMetaType::UInt: v = static_cast<uint>(value.AsLong()); break;
        case QMetaType::Int: v = value.AsLong(); break;
        default: v = Utf8(value.AsString()); break;
      }
      setSetting(s.key, v);
    }
    return;
  }
  d_->applied = true;
  d_->pending.clear();
  d_->viewer->ReadProperties(bag);
  d_->ApplyViewStyle();
  d_->ApplyLook();
}

void FileViewerWidget::writeSettings(PropertyBag& bag) {
  if (d_->applied)
    d_->viewer->WriteProperties(bag);
  else
    MergedSettings(*d_->viewer, d_->pending, bag);
}

uint FileViewerWidget::BackColor() const { return setting("BackColor").toUInt(); }
void FileViewerWidget::setBackColor(uint v) { setSetting("BackColor", v); }
uint FileViewerWidget::ForeColor() const { return setting("ForeColor").toUInt(); }
void FileViewerWidget::setForeColor(uint v) { setSetting("ForeColor", v); }
QString FileViewerWidget::CurrentFolder() const { return setting("CurrentFolder").toString(); }
void FileViewerWidget::setCurrentFolder(const QString& v) { setSetting("CurrentFolder", v); }
int FileViewerWidget::ViewOptions() const { return setting("ViewOptions").toInt(); }
void FileViewerWidget::setViewOptions(int v) { setSetting("ViewOptions", v); }
bool FileViewerWidget::ShowFolders() const { return setting("ShowFolders").toBool(); }
void FileViewerWidget::setShowFolders(bool v) { setSetting("ShowFolders", v); }
bool FileViewerWidget::ShowFiles() const { return setting("ShowFiles").toBool(); }
void FileViewerWidget::setShowFiles(bool v) { setSetting("ShowFiles", v); }
bool FileViewerWidget::ShowHiddenItems() const { return setting("ShowHiddenItems").toBool(); }
void FileViewerWidget::setShowHiddenItems(bool v) { setSetting("ShowHiddenItems", v); }
bool FileViewerWidget::ShowSysItems() const { return setting("ShowSysItems").toBool(); }
void FileViewerWidget::setShowSysItems(bool v) { setSetting("ShowSysItems", v); }
bool FileViewerWidget::ShowGOUPFolder() const { return setting("ShowGOUPFolder").toBool(); }
void FileViewerWidget::setShowGOUPFolder(bool v) { setSetting("ShowGOUPFolder", v); }
QString FileViewerWidget::GoUpTopFolder() const { return setting("GoUpTopFolder").toString(); }
void FileViewerWidget::setGoUpTopFolder(const QString& v) { setSetting("GoUpTopFolder", v); }
QString FileViewerWidget::pattern() const { return setting("pattern").toString(); }
void FileViewerWidget::setPattern(const QString& v) { setSetting("pattern", v); }
FileViewerWidget::ViewStyle FileViewerWidget::viewStyle() const { return static_cast<ViewStyle>(setting("ViewStyle").toInt()); }
void FileViewerWidget::setViewStyle(ViewStyle v) { setSetting("ViewStyle", int(v)); }
bool FileViewerWidget::VirtualFileList() const { return setting("VirtualFileList").toBool(); }
void FileViewerWidget::setVirtualFileList(bool v) { setSetting("VirtualFileList", v); }
QString FileViewerWidget::StartingFolder() const { return setting("StartingFolder").toString(); }
void FileViewerWidget::setStartingFolder(const QString& v) { setSetting("StartingFolder", v); }
bool FileViewerWidget::AllowDiveIntoFolders() const { return setting("AllowDiveIntoFolders").toBool(); }
void FileViewerWidget::setAllowDiveIntoFolders(bool v) { setSetting("AllowDiveIntoFolders", v); }
bool FileViewerWidget::AllowDiveIntoArchives() const { return setting("AllowDiveIntoArchives").toBool(); }
void FileViewerWidget::setAllowDiveIntoArchives(bool v) { setSetting("AllowDiveIntoArchives", v); }
bool FileViewerWidget::AllowitemRenaming() const { return setting("AllowitemRenaming").toBool(); }
void FileViewerWidget::setAllowitemRenaming(bool v) { setSetting("AllowitemRenaming", v); }
bool FileViewerWidget::AllowMulticolumnsort() const { return setting("AllowMulticolumnsort").toBool(); }
void FileViewerWidget::setAllowMulticolumnsort(bool v) { setSetting("AllowMulticolumnsort", v); }
bool FileViewerWidget::AllowFileExecution() const { return setting("AllowFileExecution").toBool(); }
void FileViewerWidget::setAllowFileExecution(bool v) { setSetting("AllowFileExecution", v); }
bool FileViewerWidget::AllowMultipleSelection() const { return setting("AllowMultipleSelection").toBool(); }
void FileViewerWidget::setAllowMultipleSelection(bool v) { setSetting("AllowMultipleSelection", v); }
bool FileViewerWidget::AutoUpdate() const { return setting("AutoUpdate").toBool(); }
void FileViewerWidget::setAutoUpdate(bool v) { setSetting("AutoUpdate", v); }
bool FileViewerWidget::DefaultKeyHandling() const { return setting("DefaultKeyHandling").toBool(); }
void FileViewerWidget::setDefaultKeyHandling(bool v) { setSetting("DefaultKeyHandling", v); }
FileViewerWidget::BorderStyle FileViewerWidget::borderStyle() const { return static_cast<BorderStyle>(setting("BorderStyle").toInt()); }
void FileViewerWidget::setBorderStyle(BorderStyle v) { setSetting("BorderStyle", int(v)); }
FileViewerWidget::Appearance FileViewerWidget::appearance() const { return static_cast<Appearance>(setting("Appearance").toInt()); }
void FileViewerWidget::setAppearance(Appearance v) { setSetting("Appearance", int(v)); }
bool FileViewerWidget::controlEnabled() const { return setting("Enabled").toBool(); }
void FileViewerWidget::setControlEnabled(bool v) { setSetting("Enabled", v); }
bool FileViewerWidget::HideColumnHeaders() const { return setting("HideColumnHeaders").toBool(); }
void FileViewerWidget::setHideColumnHeaders(bool v) { setSetting("HideColumnHeaders", v); }
bool FileViewerWidget::HideSelection() const { return setting("HideSelection").toBool(); }
void FileViewerWidget::setHideSelection(bool v) { setSetting("HideSelection", v); }
bool FileViewerWidget::TrackSelection() const { return setting("TrackSelection").toBool(); }
void FileViewerWidget::setTrackSelection(bool v) { setSetting("TrackSelection", v); }
bool FileViewerWidget::AllowMoveColumns() const { return setting("AllowMoveColumns").toBool(); }
void FileViewerWidget::setAllowMoveColumns(bool v) { setSetting("AllowMoveColumns", v); }
bool FileViewerWidget::FullRowSelection() const { return setting("FullRowSelection").toBool(); }
void FileViewerWidget::setFullRowSelection(bool v) { setSetting("FullRowSelection", v); }
bool FileViewerWidget::ShowGridLines() const { return setting("ShowGridLines").toBool(); }
void FileViewerWidget::setShowGridLines(bool v) { setSetting("ShowGridLines", v); }
bool FileViewerWidget::ShowCheckBoxes() const { return setting("ShowCheckBoxes").toBool(); }
void FileViewerWidget::setShowCheckBoxes(bool v) { setSetting("ShowCheckBoxes", v); }

}  // namespace nxfv::qt
