// Bounds-checked little-endian reading of untrusted archive bytes.
//
// Values are assembled from unsigned bytes with explicit shifts; a getter
// that would leave the span answers false and changes nothing. The signed
// forms reproduce how the directory fields are stored in 16- and 32-bit
// signed variables: 0xFFFF reads as -1, 0x8000 as -32768.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace nxfv {

class ByteReader {
 public:
  explicit ByteReader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  size_t size() const { return bytes_.size(); }

  bool U8At(size_t offset, uint8_t& value) const {
    if (offset >= bytes_.size()) return false;
    value = bytes_[offset];
    return true;
  }
  bool U16At(size_t offset, uint16_t& value) const {
    if (offset > bytes_.size() || 2 > bytes_.size() - offset) return false;
    value = static_cast<uint16_t>(bytes_[offset] | (bytes_[offset + 1] << 8));
    return true;
  }
  bool U32At(size_t offset, uint32_t& value) const {
    if (offset > bytes_.size() || 4 > bytes_.size() - offset) return false;
    value = static_cast<uint32_t>(bytes_[offset]) | (static_cast<uint32_t>(bytes_[offset + 1]) << 8) |
            (static_cast<uint32_t>(bytes_[offset + 2]) << 16) | (static_cast<uint32_t>(bytes_[offset + 3]) << 24);
    return true;
  }
  // The sub-span [offset, offset + length).
  bool BytesAt(size_t offset, size_t length, std::span<const uint8_t>& out) const {
    if (offset > bytes_.size() || length > bytes_.size() - offset) return false;
    out = bytes_.subspan(offset, length);
    return true;
  }

  // Field getters for fixed records whose size the caller has checked:
  // 0 for a field outside the span.
  uint16_t U16(size_t offset) const {
    uint16_t v = 0;
    return U16At(offset, v) ? v : 0;
  }
  uint32_t U32(size_t offset) const {
    uint32_t v = 0;
    return U32At(offset, v) ? v : 0;
  }
  int16_t S16(size_t offset) const { return static_cast<int16_t>(U16(offset)); }
  int32_t S32(size_t offset) const { return static_cast<int32_t>(U32(offset)); }

 private:
  std::span<const uint8_t> bytes_;
};

}  // namespace nxfv
