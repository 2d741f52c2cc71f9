// How Linux file facts map onto find-data attribute bits and file times.
// Pure functions, so the rules are tested without touching a disk.
#pragma once

#include <cstdint>

namespace nxfv {

// What the enumeration learnt about one entry (the entry itself, not a
// symbolic link's target, except linkToFolder).
struct EntryFacts {
  uint32_t mode = 0;          // st_mode: type and permission bits
  bool linkToFolder = false;  // a symbolic link whose target is a folder
  bool hidden = false;        // listed in the folder's .hidden file
  bool compressed = false;    // the file system says it is compressed
};

// Folder 16; symbolic link 1024 (+16 when it points to a folder; a dangling
// link is just 1024); socket, FIFO and device node 4; owner without write
// permission 1; hidden 2; compressed 2048; a regular file with none of
// these 128.
uint32_t MapAttributes(const EntryFacts& facts);

// Unix time (seconds, nanoseconds) -> file time (100-ns ticks since
// 1601-01-01 UTC), keeping nanoseconds / 100. Times before 1601 give 0;
// times past the file-time range give the largest file time.
uint64_t UnixTimeToFileTime(int64_t seconds, uint32_t nanoseconds);

}  // namespace nxfv
