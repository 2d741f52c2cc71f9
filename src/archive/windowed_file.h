// A read cache over a RandomAccessFile for the directory readers.
//
// ReadAt answers exactly what the file would answer for the same call
// (same bytes, same count, short at the end of the file), but serves runs
// of small sequential reads from one window filled by a single large read.
// Prefetch fills the window with a whole region known to be read next (a
// central directory, a file table), so a directory of any size costs a
// handful of reads. Memory: one window, at most kMaxWindow bytes and never
// more than one byte past the file's stated size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "nxfv/platform/services.h"

namespace nxfv {

class WindowedFile {
 public:
  static constexpr size_t kDefaultWindow = 256 * 1024;
  static constexpr size_t kMaxWindow = 64 * 1024 * 1024;

  explicit WindowedFile(RandomAccessFile& file) : file_(file) {}

  // The file's stated size, asked for once.
  uint64_t Size();
  // Copies up to n bytes at offset into buffer; returns the count copied.
  size_t ReadAt(uint64_t offset, uint8_t* buffer, size_t n);
  // Loads [offset, offset + length) into the window (length capped at
  // kMaxWindow); reads inside it are then served from memory.
  void Prefetch(uint64_t offset, size_t length);
  // Number of reads issued to the file (for tests and benchmarks).
  size_t FileReads() const { return fileReads_; }

 private:
  // Loads about length bytes at offset, and at least needed (<= length).
  void Fill(uint64_t offset, size_t length, size_t needed);

  RandomAccessFile& file_;
  std::unique_ptr<uint8_t[]> window_;  // not zero-filled: only held_ bytes are read
  size_t capacity_ = 0;
  uint64_t start_ = 0;
  size_t held_ = 0;      // bytes of the window that hold file data
  bool endSeen_ = false; // the fill stopped short: the file ends at start_ + held_
  uint64_t knownEnd_ = UINT64_MAX;  // where a short read showed the file ends
  size_t fileReads_ = 0;
  uint64_t size_ = 0;
  bool sizeKnown_ = false;
};

}  // namespace nxfv
