// The file-operation service on Linux, for now a stub: it performs nothing
// and answers kNotAvailable, so a caller sees a plain failure rather than a
// success that did not happen. The real copy, move, delete and rename
// engine (with the trash for undo) replaces it when file operations land.
#pragma once

#include "nxfv/platform/file_operation_service.h"

namespace nxfv {

class LinuxFileOperations : public FileOperationService {
 public:
  // The return code of every request until the engine exists (ENOSYS's
  // value: "function not implemented").
  static constexpr int32_t kNotAvailable = 38;

  FileOperationResult Perform(const FileOperationRequest&) override { return {kNotAvailable, false}; }
};

}  // namespace nxfv
