#include "nxfv/archive/windowed_file.h"

#include <algorithm>
#include <cstring>

namespace nxfv {

uint64_t WindowedFile::Size() {
  if (!sizeKnown_) {
    size_ = file_.Size();
    sizeKnown_ = true;
  }
  return size_;
}

void WindowedFile::Fill(uint64_t offset, size_t length, size_t needed) {
  length = std::min(length, kMaxWindow);
  // No larger than the file: a small archive costs a small window. One byte
  // more than the stated size is asked for, and never less than the read
  // that needs the window, so that the read itself shows where the file
  // ends even when the stated size is wrong (a file that grew, or one whose
  // size reads as 0 but which has content).
  const uint64_t size = Size();
  const uint64_t stated = size > offset ? size - offset : 0;
  const size_t request = std::max(stated < length ? static_cast<size_t>(stated) + 1 : length, needed);
  if (request > capacity_) {
    window_ = std::make_unique_for_overwrite<uint8_t[]>(request);
    capacity_ = request;
  }
  start_ = offset;
  held_ = request == 0 ? 0 : file_.ReadAt(offset, window_.get(), request);
  ++fileReads_;
  held_ = std::min(held_, request);
  endSeen_ = held_ < request;
  if (endSeen_) knownEnd_ = std::min(knownEnd_, start_ + held_);
}

void WindowedFile::Prefetch(uint64_t offset, size_t length) {
  if (length == 0) return;
  Fill(offset, length, 0);
}

size_t WindowedFile::ReadAt(uint64_t offset, uint8_t* buffer, size_t n) {
  if (n == 0) return 0;
  auto served = [&](size_t& count) {
    if (offset < start_ || offset - start_ > held_) return false;
    const size_t at = static_cast<size_t>(offset - start_);
    const size_t avail = held_ - at;
    if (n > avail && !endSeen_) return false;
    count = std::min(n, avail);
    if (count > 0) std::memcpy(buffer, window_.get() + at, count);
    return true;
  };
  size_t count = 0;
  if (served(count)) return count;
  if (offset >= knownEnd_) return 0;  // past the end found by an earlier read
  if (n >= kDefaultWindow) {
    // Larger than a window: straight from the file.
    ++fileReads_;
    return std::min(file_.ReadAt(offset, buffer, n), n);
  }
  Fill(offset, kDefaultWindow, n);
  served(count);
  return count;
}

}  // namespace nxfv
