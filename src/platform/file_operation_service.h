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

// What a service asks while it works: a yes/no question for each
// confirmation the flags leave on.
enum class FileOperationQuestion {
  ConfirmOperation,  // "delete these?", asked once per operation unless FOF_NOCONFIRMATION
  ConfirmMakeDir,    // "create the missing folder?", unless FOF_NOCONFIRMMKDIR or FOF_NOCONFIRMATION
  ConfirmReplace,    // "replace the existing target?", unless FOF_RENAMEONCOLLISION; FOF_NOCONFIRMATION answers yes
};

struct FileOperationProgress {
  uint64_t bytesDone = 0;
  uint64_t bytesTotal = 0;
  uint64_t filesDone = 0;
  uint64_t filesTotal = 0;
  std::string currentName;  // full path of the item being worked on
};

// The host's side of a running operation. Called on the thread that called
// Perform. A host that throws is treated as answering "no" / "cancel".
class FileOperationHost {
 public:
  virtual ~FileOperationHost() = default;
  // text is ready to show; the answer is yes (true) or no.
  virtual bool Ask(FileOperationQuestion question, const std::string& text) = 0;
  // Returns false to cancel the operation (the result then says aborted).
  virtual bool Progress(const FileOperationProgress& progress) = 0;
  // One failed item: its path and the system's reason, ready to show.
  virtual void Failed(const std::string& path, const std::string& reason) = 0;
};

class FileOperationService {
 public:
  virtual ~FileOperationService() = default;
  virtual FileOperationResult Perform(const FileOperationRequest& request) = 0;
  // The host that answers questions and hears progress and failures; null
  // (the default) means no one asks: questions are answered "no", failures
  // go to the common error box. The host must outlive its registration.
  void SetHost(FileOperationHost* host) { host_ = host; }
  FileOperationHost* Host() const { return host_; }

 private:
  FileOperationHost* host_ = nullptr;
};

}  // namespace nxfv
