#include "nxfv/qt/settings_property_bag.h"

#include <QSettings>

namespace nxfv::qt {

Variant SettingsPropertyBag::ReadProperty(const std::string& key, const Variant& defaultValue) {
  const QString name = QString::fromStdString(key);
  if (!settings_.contains(name)) return defaultValue;
  const QVariant v = settings_.value(name);
  switch (v.typeId()) {
    case QMetaType::Bool: return Variant(v.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong: return Variant(v.toDouble());
    case QMetaType::Double: return Variant(v.toDouble());
    default: {
      const QByteArray text = v.toString().toUtf8();
      return Variant(std::string(text.constData(), static_cast<size_t>(text.size())));
    }
  }
}

void SettingsPropertyBag::WriteProperty(const std::string& key, const Variant& value, const Variant&) {
  const QString name = QString::fromStdString(key);
  switch (value.kind()) {
    case Variant::Kind::Boolean: settings_.setValue(name, value.AsBool() ? -1 : 0); break;
    case Variant::Kind::Long: settings_.setValue(name, value.AsLong()); break;
    case Variant::Kind::Double:
    case Variant::Kind::Date: settings_.setValue(name, value.AsDouble()); break;
    case Variant::Kind::String: {
      const std::string_view text = value.TextView();
      settings_.setValue(name, QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
      break;
    }
    default: settings_.remove(name); break;
  }
}

}  // namespace nxfv::qt
