// On-disk layout of the ZIP records the directory reader uses. Offsets of
// the end record are counted from the byte after its signature, as the
// reader takes them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nxfv::zip {

// End of central directory record.
inline constexpr uint8_t kEndSignature[4] = {0x50, 0x4B, 0x05, 0x06};
inline constexpr size_t kEndFieldsSize = 16;  // fields read after the signature
inline constexpr size_t kEndDiskNumber = 0;
inline constexpr size_t kEndCentralDirDisk = 2;
inline constexpr size_t kEndEntriesThisDisk = 4;  // becomes FileCount
inline constexpr size_t kEndEntriesTotal = 6;
inline constexpr size_t kEndCentralDirSize = 8;
inline constexpr size_t kEndCentralDirOffset = 12;

// ZIP64 end-of-central-directory locator: when present it lies right
// before the end record. The reader does not follow it.
inline constexpr uint8_t kZip64LocatorSignature[4] = {0x50, 0x4B, 0x06, 0x07};
inline constexpr size_t kZip64LocatorSize = 20;  // signature included

// The tail searched for the end record.
inline constexpr uint32_t kTailSearchSize = 4096;
// Small files are searched from this offset, not 0: the first byte is never
// looked at, so a bare 22-byte end record at offset 0 lists nothing.
inline constexpr uint32_t kSmallFileSearchStart = 1;

// Central directory file header.
inline constexpr size_t kCentralHeaderSize = 46;
inline constexpr size_t kCdSignature = 0;  // read, never compared
inline constexpr size_t kCdVersionMadeBy = 4;
inline constexpr size_t kCdVersionNeeded = 6;
inline constexpr size_t kCdFlags = 8;
inline constexpr size_t kCdMethod = 10;
inline constexpr size_t kCdModTime = 12;
inline constexpr size_t kCdModDate = 14;
inline constexpr size_t kCdCrc32 = 16;
inline constexpr size_t kCdCompressedSize = 20;
inline constexpr size_t kCdUncompressedSize = 24;
inline constexpr size_t kCdNameLength = 28;
inline constexpr size_t kCdExtraLength = 30;
inline constexpr size_t kCdCommentLength = 32;
inline constexpr size_t kCdDiskNumberStart = 34;
inline constexpr size_t kCdInternalAttributes = 36;
inline constexpr size_t kCdExternalAttributes = 38;
inline constexpr size_t kCdLocalHeaderOffset = 42;

// General purpose flag: names and comments are UTF-8.
inline constexpr uint16_t kFlagUtf8 = 0x0800;

}  // namespace nxfv::zip
