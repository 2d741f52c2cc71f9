// Deleting a file or a whole folder tree without ever following a symbolic
// link.
//
// The walk holds a file descriptor for every folder on the way down and
// names entries relative to it (openat/unlinkat with O_NOFOLLOW), so a
// folder that someone swaps for a link while the walk runs cannot send it
// out of the tree: the link itself is what gets removed. A link inside the
// tree is removed as a link; its target is never touched. The walk does not
// enter another file system mounted inside the tree (that entry is reported
// and kept). Depth is limited by the open-file limit (one descriptor per
// level); a deeper tree reports EMFILE and keeps what could not be reached.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <functional>
#include <string>
#include <unordered_map>

namespace nxfv {

class FileOpContext;

// The source entries a copy completed, for a move that deletes its source
// afterwards: only an entry listed here with the same size and change
// time is deleted, so a file that appeared or changed while the copy ran
// stays (and its folders with it) instead of being lost.
class CopiedEntries {
 public:
  void Add(dev_t dev, ino_t ino, int64_t size, timespec mtime);
  bool Contains(dev_t dev, ino_t ino, int64_t size, timespec mtime) const;
  bool Contains(dev_t dev, ino_t ino) const { return entries_.count({dev, ino}) != 0; }
  bool empty() const { return entries_.empty(); }

 private:
  struct Key {
    dev_t dev;
    ino_t ino;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    size_t operator()(const Key& k) const { return std::hash<uint64_t>()(static_cast<uint64_t>(k.ino) * 31 + k.dev); }
  };
  struct Stamp {
    int64_t size;
    timespec mtime;
  };
  std::unordered_map<Key, Stamp, KeyHash> entries_;
};

// Deletes the entry `name` of the folder parentFd (rawPath names it in
// reports). Returns 0, or the errno of the first failure (reported through
// ctx; ECANCELED when the host cancelled, not reported). only: when set, a
// file or link not in it is kept and reported ("changed while it was being
// moved", EBUSY), and a folder is only entered when the copy made it, and
// removed when it is empty afterwards.
int DeleteEntry(int parentFd, const std::string& name, const std::string& rawPath, FileOpContext& ctx,
                const CopiedEntries* only = nullptr);

}  // namespace nxfv
