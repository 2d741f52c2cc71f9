// The operating-system services the control uses, one interface per
// service. The control never calls the OS directly: everything goes through
// a Platform (platform.h), which bundles one implementation of each.
//
// Error policy: services never throw for OS failures; they answer false, 0
// or "" exactly as the contract of each member says.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace nxfv {

// File attribute bits as the enumeration reports them.
inline constexpr uint32_t kAttrReadOnly = 1;
inline constexpr uint32_t kAttrHidden = 2;
inline constexpr uint32_t kAttrSystem = 4;
inline constexpr uint32_t kAttrVolume = 8;
inline constexpr uint32_t kAttrDirectory = 16;
inline constexpr uint32_t kAttrArchive = 32;
inline constexpr uint32_t kAttrDevice = 64;
inline constexpr uint32_t kAttrNormal = 128;
inline constexpr uint32_t kAttrTemporary = 256;
inline constexpr uint32_t kAttrSparse = 512;
inline constexpr uint32_t kAttrReparsePoint = 1024;
inline constexpr uint32_t kAttrCompressed = 2048;

// One directory entry: the find-data record.
struct FindData {
  uint32_t attributes = 0;
  uint64_t creationTime = 0;    // file times, 100-ns ticks since 1601, UTC
  uint64_t lastAccessTime = 0;
  uint64_t lastWriteTime = 0;
  uint32_t sizeHigh = 0;
  uint32_t sizeLow = 0;
  std::string name;       // UTF-8; may contain anything but '/' (and NUL on Linux)
  std::string shortName;  // 8.3 name; empty when the name already is one
};

// A file opened for positioned reads (archives).
class RandomAccessFile {
 public:
  virtual ~RandomAccessFile() = default;
  virtual uint64_t Size() = 0;
  // Reads up to n bytes at offset; returns the count read (0 at or past the
  // end, or on a read error).
  virtual size_t ReadAt(uint64_t offset, void* buffer, size_t n) = 0;
};

class FileSystemService {
 public:
  virtual ~FileSystemService() = default;
  // Calls visit for every entry of the folder, in the order the file system
  // gives them (on the simulated platform "." and ".." come first, as
  // Windows reports them for a non-root folder). visit returns false to
  // stop. Returns false when the folder cannot be enumerated at all.
  using Visitor = std::function<bool(const FindData&)>;
  virtual bool Enumerate(const std::string& folder, const Visitor& visit) = 0;
  // For a refresh that only asks which entries are there: like Enumerate,
  // but only name and the DIRECTORY, HIDDEN, SYSTEM and REPARSE_POINT bits
  // are sure to be filled (a platform may skip the per-entry details).
  virtual bool EnumerateNames(const std::string& folder, const Visitor& visit) { return Enumerate(folder, visit); }
  // The full records of the named entries of folder (names as Enumerate
  // gives them), for a refresh that found a few new ones: visits each that
  // is still there, in no particular order; visit returns false to stop.
  // The default takes one more enumeration; a platform that can look an
  // entry up by name does better.
  virtual void FindEntries(const std::string& folder, const std::vector<std::string>& names, const Visitor& visit) {
    if (names.empty()) return;
    const std::unordered_set<std::string> wanted(names.begin(), names.end());
    Enumerate(folder, [&](const FindData& e) { return wanted.count(e.name) == 0 || visit(e); });
  }
  // Attributes of a file or folder; false when it does not exist.
  virtual bool GetAttributes(const std::string& path, uint32_t& attributes) = 0;
  // Why path cannot be listed as a folder (asFolder) or opened for reading
  // as a file, in the system's words: "permission denied", "not a folder",
  // "is a folder", "too many levels of symbolic links", "path too long",
  // "no such file or folder"; "" when nothing stands in the way. The default
  // knows only whether the path exists and whether it is a folder.
  virtual std::string WhyNotReadable(const std::string& path, bool asFolder) {
    uint32_t attributes = 0;
    if (!GetAttributes(path, attributes)) return "no such file or folder";
    const bool folder = (attributes & kAttrDirectory) != 0;
    if (asFolder != folder) return asFolder ? "not a folder" : "is a folder";
    return "";
  }
  // File-system name of the volume holding root ("NTFS", "FAT32", "ext4").
  virtual bool VolumeFileSystemName(const std::string& root, std::string& name) = 0;
  // The drives view's figures of the volume mounted at root: its label ("" when
  // it has none), file-system name and space in bytes (free = what the user
  // may still write). False when the platform cannot tell.
  struct VolumeDetails {
    std::string label;
    std::string fileSystem;
    uint64_t freeBytes = 0;
    uint64_t totalBytes = 0;
  };
  virtual bool VolumeInformation(const std::string& root, VolumeDetails& details) {
    (void)root;
    (void)details;
    return false;
  }
  // The temporary folder, with a trailing separator.
  virtual std::string TempPath() = 0;
  // Opens an existing regular file for reading (shared read/write); null on
  // failure and for anything else (a folder, a FIFO, a device: never blocks).
  virtual std::unique_ptr<RandomAccessFile> OpenForRead(const std::string& path) = 0;
  // Writes the whole file, replacing it; false on failure.
  virtual bool WriteWholeFile(const std::string& path, const std::string& bytes) = 0;
  // Reads the whole regular file; nullopt on failure or for anything else.
  virtual std::optional<std::string> ReadWholeFile(const std::string& path) = 0;
  // Creates one folder; its parent must exist. False when anything by that
  // name exists already or the creation is refused (never replaces).
  virtual bool CreateFolder(const std::string& path) = 0;
  // Creates a symbolic link at linkPath that points at target (stored as
  // given). False when anything by that name exists already or the
  // creation is refused (never replaces).
  virtual bool CreateLink(const std::string& target, const std::string& linkPath) = 0;
};

class TimeService {
 public:
  virtual ~TimeService() = default;
  // UTC file time -> local file time. False on failure (local left 0).
  virtual bool FileTimeToLocalFileTime(uint64_t utc, uint64_t& local) = 0;
  // DOS date and time words -> file time. Fails and leaves 0 for a month
  // outside 1-12, day 0 or past the month's end, hour > 23, minute or
  // second > 59.
  virtual bool DosDateTimeToFileTime(uint16_t dosDate, uint16_t dosTime, uint64_t& fileTime) = 0;
};

// Patterns use the Windows picture letters: d dd M MM yyyy yy for dates,
// h hh H HH m mm s ss tt for times; anything else is literal.
struct LocaleFormats {
  std::string shortDatePattern = "M/d/yyyy";
  std::string longTimePattern = "h:mm:ss tt";
  std::string amDesignator = "AM";
  std::string pmDesignator = "PM";
  std::string thousandsSeparator = ",";
  std::string decimalSeparator = ".";
  int groupingSize = 3;  // digits per group; 0 = no grouping
};

class LocaleService {
 public:
  virtual ~LocaleService() = default;
  virtual const LocaleFormats& Formats() = 0;
  // The system's ANSI case mapping (CharUpperA / CharLowerA).
  virtual std::string CharUpper(const std::string& text) = 0;
  virtual std::string CharLower(const std::string& text) = 0;
  // Width of text in pixels as drawn on the device context hdc.
  virtual int32_t MeasureText(const std::string& text, int32_t hdc) = 0;
};

class ResourceService {
 public:
  virtual ~ResourceService() = default;
  // String number id of the named library's string table. nullopt when the
  // library cannot be loaded; "" when it has no such string.
  virtual std::optional<std::string> LoadString(const std::string& library, int32_t id) = 0;
  // File-system path of a special folder (CSIDL value); false when the
  // folder has none.
  virtual bool SpecialFolderPath(int32_t csidl, std::string& path) = 0;
};

class TypeRegistryService {
 public:
  virtual ~TypeRegistryService() = default;
  // Default value of HKEY_CLASSES_ROOT\key ("." + ext -> program id,
  // program id -> type name). False when the key or value is missing.
  virtual bool ClassesRootDefault(const std::string& key, std::string& value) = 0;
};

inline constexpr uint32_t kShgfiSysIconIndex = 0x4000;
inline constexpr uint32_t kShgfiSmallIcon = 0x1;
inline constexpr uint32_t kShgfiUseFileAttributes = 0x10;

class IconService {
 public:
  virtual ~IconService() = default;
  // Index in the system small-icon list of path (SHGetFileInfo). With
  // kShgfiUseFileAttributes the disk is not touched and attributes decide.
  // 0 when the lookup fails.
  virtual int32_t SysIconIndex(const std::string& path, uint32_t attributes, uint32_t flags) = 0;
};

// Message box styles and answers, as the host runtime numbers them.
inline constexpr int32_t kMbOkOnly = 0;
inline constexpr int32_t kMbOkCancel = 1;
inline constexpr int32_t kMbAbortRetryIgnore = 2;
inline constexpr int32_t kMbYesNoCancel = 3;
inline constexpr int32_t kMbYesNo = 4;
inline constexpr int32_t kMbRetryCancel = 5;
inline constexpr int32_t kMbCritical = 16;
inline constexpr int32_t kMbQuestion = 32;
inline constexpr int32_t kMbExclamation = 48;
inline constexpr int32_t kMbInformation = 64;
inline constexpr int32_t kAnswerOk = 1;
inline constexpr int32_t kAnswerCancel = 2;
inline constexpr int32_t kAnswerAbort = 3;
inline constexpr int32_t kAnswerRetry = 4;
inline constexpr int32_t kAnswerIgnore = 5;
inline constexpr int32_t kAnswerYes = 6;
inline constexpr int32_t kAnswerNo = 7;

class MessageBoxService {
 public:
  virtual ~MessageBoxService() = default;
  // Shows a modal box and returns the button pressed.
  virtual int32_t Show(const std::string& text, int32_t style, const std::string& title) = 0;

  // The host's call that the boxes belong to. Every box shown while one call
  // of the control runs (setting a location, a key, a file command) carries
  // the same id, nested procedures included, so that a window can offer
  // "ignore further errors of this operation" (a damaged archive can ask
  // for thousands of boxes). Id 0 and no label outside any call.
  struct Operation {
    uint64_t id = 0;
    std::string label;  // the outermost procedure's label, e.g. ".Currentfolder"
  };
  const Operation& CurrentOperation() const { return operation_; }
  // Starts an operation unless one runs already; true when it started one
  // (and so must end it).
  bool BeginOperation(const std::string& label) {
    if (operation_.id != 0) return false;
    operation_ = {++lastOperationId_, label};
    return true;
  }
  void EndOperation() { operation_ = {}; }

 private:
  Operation operation_;
  uint64_t lastOperationId_ = 0;
};

// Window-related services; no-ops where there is no window.
class UiService {
 public:
  virtual ~UiService() = default;
  virtual void LockWindowUpdate(bool lock) = 0;
  virtual void SetMousePointer(int32_t pointer) = 0;
  virtual int32_t MousePointer() = 0;
};

}  // namespace nxfv
