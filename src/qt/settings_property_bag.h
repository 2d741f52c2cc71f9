// SettingsPropertyBag: the control's saved settings in a QSettings store, for
// hosts that keep them at run time (an INI file, the desktop's settings).
//
// Values are written under their bag keys, inside the group the QSettings
// object has open: Booleans as -1/0, numbers as numbers, text as text.
// Reading gives back whatever the store holds (INI files give text); the
// control converts it to the setting's type and reports a value it cannot
// read. Nothing here throws.
#pragma once

#include "nxfv/control/property_bag.h"

class QSettings;

namespace nxfv::qt {

class SettingsPropertyBag : public PropertyBag {
 public:
  // settings must outlive the bag.
  explicit SettingsPropertyBag(QSettings& settings) : settings_(settings) {}
  Variant ReadProperty(const std::string& key, const Variant& defaultValue) override;
  void WriteProperty(const std::string& key, const Variant& value, const Variant& defaultValue) override;

 private:
  QSettings& settings_;
};

}  // namespace nxfv::qt
