// Saved settings: the host's property bag and the change listener.
//
// A host saves a control with its form by handing it a bag to write into
// (FileViewer::WriteProperties) and restores it by handing the bag back
// (FileViewer::ReadProperties). The keys are fixed names that are part of
// the saved format (see saved_settings.h). Every property let tells the
// PropertyChangeListener the key it changed, so the host knows the form is
// dirty.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "nxfv/export.h"
#include "nxfv/platform/variant.h"

namespace nxfv {

class NXFV_EXPORT PropertyBag {
 public:
  virtual ~PropertyBag() = default;
  // The value stored under key, or defaultValue when the bag has none. A
  // bag may return its own kind of value (text); the control converts it
  // to the kind of defaultValue and may throw VbError 13 when it cannot.
  virtual Variant ReadProperty(const std::string& key, const Variant& defaultValue) = 0;
  // Stores value under key. defaultValue is what a later read would assume
  // without it; a bag may leave such values out (these bags keep them).
  virtual void WriteProperty(const std::string& key, const Variant& value, const Variant& defaultValue) = 0;
};

class NXFV_EXPORT PropertyChangeListener {
 public:
  virtual ~PropertyChangeListener() = default;
  // key: the bag key of the property a let changed ("ViewOptions", "pattern").
  virtual void PropertyChanged(const std::string& key) = 0;
};

// A bag in memory: values as written, in the order first written.
class NXFV_EXPORT MemoryPropertyBag : public PropertyBag {
 public:
  Variant ReadProperty(const std::string& key, const Variant& defaultValue) override;
  void WriteProperty(const std::string& key, const Variant& value, const Variant& defaultValue) override;
  const std::vector<std::pair<std::string, Variant>>& Values() const { return values_; }
  bool Has(const std::string& key) const;
  void Clear() { values_.clear(); }

 private:
  std::vector<std::pair<std::string, Variant>> values_;
};

}  // namespace nxfv
