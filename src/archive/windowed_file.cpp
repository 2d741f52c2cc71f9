#include "nxfv/archive/windowed_file.h"

#include <algorithm>
#include <cstring>

namespace nxfv {

void WindowedFile::Fill(uint64_t offset, size_t length) {
  length = std::min(length, kMaxWindow);
  if (length > capacity_) {
    window_ = std::make_unique_for_overwrite<uint8_t[]>(length);
    capacity_ = length;
  }
  start_ = offset;
  held_ = length == 0 ? 0 : file_.ReadAt(offset, window_.get(), length);
  ++fileReads_;
  held_ = std::min(held_, length);
  endSeen_ = held_ < length;
  if (endSeen_) knownEnd_ = std::min(knownEnd_, start_ + held_);
}

void WindowedFile::Prefetch(uint64_t offset, size_t length) {
  if (length == 0) return;
  Fill(offset, length);
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
  Fill(offset, kDefaultWindow);
  served(count);
  return count;
}

}  // namespace nxfv
