// The running state of one file-operation request, shared by the copy, the
// delete and the trash code: the counters behind the progress calls, the
// host's answers and cancel, the failures and the result they add up to.
//
// Reporting: a failure goes to the host's Failed(path, reason) when a host
// is set, else to the message box as one box per item, titled "File
// operation": `Cannot copy "/path/x": No space left on device`. Paths are
// raw bytes inside the engine and shown escaped ("\xHH") everywhere.
//
// Questions without a host: nobody can be asked, and the caller chose to run
// the operation, so "do it?" (ConfirmOperation) and "create the folder?"
// (ConfirmMakeDir) count as yes; "replace?" counts as no, because nothing is
// ever overwritten without someone's permission. A host that throws answers
// no (and cancel, from Progress).
//
// Progress: Progress() is called when a file starts if 50 ms have passed
// since the last call (so 10,000 small files cost a few hundred calls, not
// 10,000), after every chunk of a large file (cancel is seen within one
// chunk), and once at the end. A false answer cancels: Cancelled() turns
// true and every loop stops at its next check.
#pragma once

#include <dirent.h>
#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "nxfv/platform/file_operation_service.h"
#include "nxfv/platform/services.h"

namespace nxfv {

// A file descriptor closed when the scope ends.
struct ScopedFd {
  int fd = -1;
  explicit ScopedFd(int f) : fd(f) {}
  ScopedFd(const ScopedFd&) = delete;
  ScopedFd& operator=(const ScopedFd&) = delete;
  ~ScopedFd();
  int release() {
    const int f = fd;
    fd = -1;
    return f;
  }
};

class FileOpContext {
 public:
  FileOpContext(FileOperationHost* host, MessageBoxService& box) : host_(host), box_(box) {}

  // --- progress ---
  void AddTotals(uint64_t bytes, uint64_t files) {
    progress_.bytesTotal += bytes;
    progress_.filesTotal += files;
  }
  // A file (or folder, link, item) starts; false once cancelled.
  bool FileStarted(const std::string& rawPath);
  // Bytes of the current file were written; reports unthrottled when
  // `report` (a chunk boundary); false once cancelled.
  bool BytesDone(uint64_t bytes, bool report);
  void FileDone() { ++progress_.filesDone; }
  // Takes back bytes counted for a file whose copy failed or was undone.
  void BytesUndone(uint64_t bytes) { progress_.bytesDone -= bytes < progress_.bytesDone ? bytes : progress_.bytesDone; }
  // The final call (bytesDone may fall short of the total after failures).
  void Finish();
  bool Cancelled() const { return cancelled_; }
  const FileOperationProgress& Progress() const { return progress_; }

  // --- questions ---
  // question: asked as the rules above say (the flags are the caller's part).
  bool Ask(FileOperationQuestion question, const std::string& text);
  bool HasHost() const { return host_ != nullptr; }

  // --- outcome ---
  // One failed item: remembers the first error, reports `Cannot VERB "PATH": strerror(err)`.
  void Fail(const char* verb, const std::string& rawPath, int err);
  // The same with a reason of our own (the folder inside itself, ...); code is the errno-style result.
  void Fail(const char* verb, const std::string& rawPath, const std::string& reason, int code);
  // An item left out because the user said no or cancelled.
  void Skipped() { aborted_ = true; }
  FileOperationResult Result() const { return {firstError_, aborted_ || cancelled_}; }

  // --- shared tools of the copy ---
  std::vector<char>& Buffer();
  // Copy strategies that failed for a pair of devices are not tried again.
  struct DevicePair {
    dev_t from = 0, to = 0;
    bool operator==(const DevicePair&) const = default;
  };
  DevicePair noClone{static_cast<dev_t>(-1), static_cast<dev_t>(-1)};
  DevicePair noCopyRange{static_cast<dev_t>(-1), static_cast<dev_t>(-1)};
  DevicePair noSendfile{static_cast<dev_t>(-1), static_cast<dev_t>(-1)};
  bool noReplaceUnsupported = false;  // renameat2(RENAME_NOREPLACE) answered EINVAL once

 private:
  bool Report(bool force);

  FileOperationHost* host_;
  MessageBoxService& box_;
  FileOperationProgress progress_;
  std::string currentRaw_;
  int64_t lastReportNs_ = -1;
  bool cancelled_ = false;
  bool aborted_ = false;
  int32_t firstError_ = 0;
  std::vector<char> buffer_;
};

// Walks the entries of an open folder, "." and ".." left out, and closes it.
// visit gets each entry and answers 0 or an error; the walk stops at once on
// ECANCELED. A failing read is reported (verb, rawPath) and ends the walk.
// Returns 0, ECANCELED, or the first failure; the others are reported by
// whoever met them.
int ForEachChild(DIR* dir, const char* verb, const std::string& rawPath, FileOpContext& ctx,
                 const std::function<int(const dirent& entry)>& visit);

}  // namespace nxfv
