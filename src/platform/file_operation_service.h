// The shell's file-operation service: one call copies, moves, deletes or
// renames a list of files.
//
// Contract: called on the host's thread; it returns when the operation is
// over (any dialogs are modal to parentWindow). Sources and destinations
// are full paths in the platform's path text. The result's returnCode is 0
// on success, anything else is a failure code of the implementation;
// anyOperationsAborted tells that the user stopped some of it. The call as
// a whole succeeded only when both say so. Nothing throws.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace nxfv {

// Operation codes.
inline constexpr uint32_t FO_MOVE = 1;
inline constexpr uint32_t FO_COPY = 2;
inline constexpr uint32_t FO_DELETE = 3;
inline constexpr uint32_t FO_RENAME = 4;

// Flag bits of the 16-bit flag word.
inline constexpr uint16_t FOF_MULTIDESTFILES = 0x1;      // one destination per source
inline constexpr uint16_t FOF_SILENT = 0x4;              // no progress window
inline constexpr uint16_t FOF_RENAMEONCOLLISION = 0x8;   // new name when the target exists
inline constexpr uint16_t FOF_NOCONFIRMATION = 0x10;     // answer "yes to all"
inline constexpr uint16_t FOF_ALLOWUNDO = 0x40;          // keep undo information (trash)
inline constexpr uint16_t FOF_FILESONLY = 0x80;          // wildcards match files only
inline constexpr uint16_t FOF_SIMPLEPROGRESS = 0x100;    // progress without file names
inline constexpr uint16_t FOF_NOCONFIRMMKDIR = 0x200;    // create folders without asking

struct FileOperationRequest {
  int32_t parentWindow = 0;
  uint32_t operation = 0;  // FO_*
  std::vector<std::string> sources;
  std::vector<std::string> destinations;
  uint16_t flags = 0;  // FOF_*
  std::string progressTitle;
  bool operator==(const FileOperationRequest&) const = default;
};

struct FileOperationResult {
  int32_t returnCode = 0;
  bool anyOperationsAborted = false;
  bool Succeeded() const { return returnCode == 0 && !anyOperationsAborted; }
  bool operator==(const FileOperationResult&) const = default;
};

class FileOperationService {
 public:
  virtual ~FileOperationService() = default;
  virtual FileOperationResult Perform(const FileOperationRequest& request) = 0;
};

}  // namespace nxfv
