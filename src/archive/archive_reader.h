// cArchive: lists the table of contents of a ZIP or CAB file without
// extracting anything. The caller sets ArchiveName and ArchiveExt and calls
// GetInfo(); every directory entry arrives, synchronously and in directory
// order, through the listener's FileFound before GetInfo returns.
//
// Contract:
// - Format choice by exact, case-sensitive extension: "zip"/".zip" and
//   "cab"/".cab". Anything else (also "ZIP") does nothing.
// - FileCount is the entry count the archive announces (a 16-bit field,
//   sign-extended, so at most 32767 and possibly negative). It keeps its
//   previous value when the file cannot be opened or is not recognised.
// - At most max(FileCount, 0) FileFound events per GetInfo; any byte
//   sequence ends in time and memory bounded by FileCount and the 16-bit
//   field lengths. Nothing throws to the caller.
// - Short reads are not detected: an entry field that lies past the end of
//   the file keeps the bytes the reader's record buffer held before (zero
//   at the start of each GetInfo), exactly as if the file went on with them.
// - A failing step (a negative length, a position that leaves the 32-bit
//   range) shows an OK box titled kArchiveBoxTitle with the text
//   "<description>\r\nin cArchive.GetZip component at line <step>" (GetCab
//   for cabinets) and the reader goes on with the next step.
// - Names and comments are UTF-8: bytes that already are valid UTF-8 stay
//   as they are, anything else is read as code page 437 (ZIP) or
//   Windows-1252 (CAB).
// - Reads go through platform.Files().OpenForRead(); the central directory
//   or file table is fetched with a few large reads, not field by field.
// - FileFound handlers must not call GetInfo on the same object.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "nxfv/platform/platform.h"

namespace nxfv {

// Caption of the reader's error boxes: the component's name.
inline constexpr const char* kArchiveBoxTitle = "NxFileViewer";

// The events of cArchive. Exactly one listener per reader.
class cArchiveEvents {
 public:
  virtual ~cArchiveEvents() = default;
  // One directory entry. Modified is a date value (days since 1899-12-30).
  // Sizes of 2 GiB and more arrive negative (32-bit fields).
  // The texts view the reader's own buffers: they are valid during the call
  // only, and a listener that keeps one copies it. Entries of a damaged
  // directory repeat by the thousand, so nothing is copied for a listener
  // that only looks.
  virtual void FileFound(int32_t Index, int32_t Total, std::string_view FileName, std::string_view ArchiveExt,
                         double Modified, int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr,
                         std::string_view Path, int32_t flags, int32_t CRC, std::string_view Comments) = 0;
  // Raised only by NotificationReceipt.
  virtual void noti(int32_t& wParam, int32_t& lParam) {
    (void)wParam;
    (void)lParam;
  }
};

class cArchive {
 public:
  // Reads through platform (the thread's active platform when null).
  explicit cArchive(PlatformRef platform = nullptr);
  // Reads through platform, which must outlive the reader.
  explicit cArchive(Platform& platform);

  std::string ArchiveName;  // full path of the archive file
  std::string ArchiveExt;   // chooses the format; passed back with every entry
  int32_t FileCount = 0;    // entries announced by the archive

  // The listener (not owned; null for none).
  void SetListener(cArchiveEvents* listener) { listener_ = listener; }

  // Lists the archive. Never throws.
  void GetInfo();

  // Inert callbacks in the shape of an unpacking library's hooks; nothing
  // calls them. The first two return 1; NotificationReceipt raises noti and
  // returns 0.
  int32_t ChangeVolProc(const std::string& sArcName, int32_t lMode);
  int32_t ProcessDataProc(int32_t lAddr, int32_t lSize);
  int32_t NotificationReceipt(int32_t wParam, int32_t lParam);

 private:
  void GetZip();
  void GetCab();

  PlatformRef platform_;
  cArchiveEvents* listener_ = nullptr;
};

}  // namespace nxfv
