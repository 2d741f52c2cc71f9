// The simulated platform's smaller services: time zone, locale, string
// tables and special folders, the classes-root registry, icons and the
// window services. All deterministic.
#pragma once

#include <map>
#include <unordered_map>
#include <string>
#include <vector>

#include "nxfv/platform/services.h"

namespace nxfv {

// A fixed time-zone offset (default +120 minutes, no daylight saving).
class SimTime : public TimeService {
 public:
  bool FileTimeToLocalFileTime(uint64_t utc, uint64_t& local) override;
  bool DosDateTimeToFileTime(uint16_t dosDate, uint16_t dosTime, uint64_t& fileTime) override;
  void SetOffsetMinutes(int32_t minutes) { offsetMinutes_ = minutes; }
  int32_t OffsetMinutes() const { return offsetMinutes_; }

 private:
  int32_t offsetMinutes_ = 120;
};

// en-US: M/d/yyyy, h:mm:ss AM/PM, "," grouping, "." decimal. Case mapping is
// Windows-1252's. Text measures a fixed 7 pixels per character.
class SimLocale : public LocaleService {
 public:
  const LocaleFormats& Formats() override { return formats_; }
  void SetFormats(LocaleFormats f) { formats_ = std::move(f); }
  std::string CharUpper(const std::string& text) override;
  std::string CharLower(const std::string& text) override;
  int32_t MeasureText(const std::string& text, int32_t hdc) override;
  static constexpr int32_t kCharWidth = 7;

 private:
  LocaleFormats formats_;
};

// String tables of "Shell32.Dll" and "Intl.Cpl" with the captions the column
// set asks for; special folders under C:\.
class SimResources : public ResourceService {
 public:
  SimResources();
  std::optional<std::string> LoadString(const std::string& library, int32_t id) override;
  bool SpecialFolderPath(int32_t csidl, std::string& path) override;
  void SetString(const std::string& library, int32_t id, std::string text);
  void SetSpecialFolder(int32_t csidl, std::string path) { folders_[csidl] = std::move(path); }
  void RemoveSpecialFolder(int32_t csidl) { folders_.erase(csidl); }

 private:
  std::map<std::string, std::map<int32_t, std::string>> tables_;  // library upper-cased
  std::map<int32_t, std::string> folders_;
};

// HKEY_CLASSES_ROOT default values; a few common types preset.
class SimRegistry : public TypeRegistryService {
 public:
  SimRegistry();
  bool ClassesRootDefault(const std::string& key, std::string& value) override;
  void Set(const std::string& key, std::string value);
  void Remove(const std::string& key);
  // Registers ".ext" -> progId -> typeName.
  void RegisterType(const std::string& ext, const std::string& progId, const std::string& typeName);
  int32_t Queries() const { return queries_; }

 private:
  std::map<std::string, std::string> values_;  // upper-cased key
  int32_t queries_ = 0;
};

// Deterministic icon indexes: folders 3 (by attributes, or by the file
// tree when the disk may be touched; a missing path fails with 0), the generic document ("*.bin") 1,
// other files 100 + a stable number per lower-cased extension, and files
// with per-file icons (exe, ico, lnk, pif, cur) 1000 + a stable number per
// full path. Every lookup is recorded.
class SimFileSystem;
class SimIcons : public IconService {
 public:
  explicit SimIcons(SimFileSystem* files) : files_(files) {}
  struct Lookup {
    std::string path;
    uint32_t attributes;
    uint32_t flags;
  };
  int32_t SysIconIndex(const std::string& path, uint32_t attributes, uint32_t flags) override;
  const std::vector<Lookup>& Lookups() const { return lookups_; }
  void ClearLookups() { lookups_.clear(); }
  static constexpr int32_t kFolderIcon = 3;
  static constexpr int32_t kGenericIcon = 1;

 private:
  SimFileSystem* files_;
  std::unordered_map<std::string, int32_t> extensionIcons_;
  std::unordered_map<std::string, int32_t> pathIcons_;
  std::vector<Lookup> lookups_;
};

class SimUi : public UiService {
 public:
  void LockWindowUpdate(bool lock) override { locked_ = lock; ++lockCalls_; }
  void SetMousePointer(int32_t pointer) override { pointer_ = pointer; }
  int32_t MousePointer() override { return pointer_; }
  bool Locked() const { return locked_; }
  int32_t LockCalls() const { return lockCalls_; }

 private:
  bool locked_ = false;
  int32_t lockCalls_ = 0;
  int32_t pointer_ = 0;
};

}  // namespace nxfv
