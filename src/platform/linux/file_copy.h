// Copying one file, link, special file or whole folder tree so that a
// failure or a cancel never leaves a partial file under a final name.
//
// A regular file is written to a temporary in the target folder
// (".NAME.nxfv-XXXXXX", created exclusively with mode 0600), filled by a
// reflink (FICLONE) where the file system shares blocks, else by
// copy_file_range, else sendfile, else read/write; it then gets the source's mode,
// owner (when running as root; EPERM ignored) and atime/mtime to the
// nanosecond, and only then is renamed to its name: without replacing
// (renameat2 RENAME_NOREPLACE, or link+unlink where a file system lacks it)
// unless replacing was allowed. Any failure removes the temporary. There is
// no fsync per file (the same as cp): a move calls syncfs on the target
// before it deletes its source instead, which is what makes the order
// "copy complete, then delete" hold across a crash.
//
// Links are copied as links (never followed), FIFOs, sockets and device
// nodes are made again with mknod (a device needs root: otherwise the item
// fails with the system's reason). Folders are made with mode 0700 while
// they fill and get their mode and times at the end. Sources are opened
// non-blocking and relative to their folder's descriptor with O_NOFOLLOW.
// Names are raw bytes.
//
// Progress counts every entry as one file (folders and links included) and
// the bytes of regular files.
#pragma once

#include <string>

namespace nxfv {

class CopiedEntries;
class FileOpContext;

// What CopyEntry returns, unreported, when the target exists and may not be
// touched: the caller picks another name or reports.
inline constexpr int kTargetExists = -1;

enum class Existing {
  Refuse,   // the target must not exist (kTargetExists at the top)
  Replace,  // an existing file or link is replaced, an existing folder merged into
};

struct CopyJob {
  FileOpContext& ctx;
  CopiedEntries* copied = nullptr;  // a move: records each source entry copied, and checks it did not change
  bool topFolderCreated = false;    // out: the copy made the top folder (so undoing it may remove it)
};

// Copies the entry srcName of folder srcDir to dstName in folder dstDir; the
// raw paths name them in reports. Returns 0; kTargetExists when the target
// exists and existing is Refuse; ECANCELED (unreported) when the host
// cancelled; otherwise the errno of the first failure, already reported.
// A folder copy goes on after a failed entry and returns the first error.
int CopyEntry(int srcDir, const std::string& srcName, const std::string& srcRaw, int dstDir,
              const std::string& dstName, const std::string& dstRaw, Existing existing, CopyJob& job);

// Adds the entries and bytes below rawPath (links not followed) to the
// progress totals.
void AddTreeTotals(const std::string& rawPath, FileOpContext& ctx);

}  // namespace nxfv
