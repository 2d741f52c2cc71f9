// On-disk layout of the cabinet records the directory reader uses, with the
// format's own field names.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nxfv::cab {

// CFHEADER, the first 36 bytes of the file.
inline constexpr size_t kHeaderSize = 36;
inline constexpr uint8_t kSignature[4] = {'M', 'S', 'C', 'F'};
inline constexpr size_t kSignatureOffset = 0;
inline constexpr size_t kReserved1 = 4;
inline constexpr size_t kCbCabinet = 8;
inline constexpr size_t kReserved2 = 12;
inline constexpr size_t kCoffFiles = 16;
inline constexpr size_t kReserved3 = 20;
inline constexpr size_t kVersionMinor = 24;
inline constexpr size_t kVersionMajor = 25;
inline constexpr size_t kCFolders = 26;
inline constexpr size_t kCFiles = 28;
inline constexpr size_t kFlags = 30;
inline constexpr size_t kSetID = 32;
inline constexpr size_t kICabinet = 34;

// CFFOLDER: one, read right after the header whatever the flags say about
// reserved areas or neighbour cabinets (which then makes typeCompress junk).
inline constexpr size_t kFolderOffset = 36;
inline constexpr size_t kFolderSize = 8;
inline constexpr size_t kCoffCabStart = 0;
inline constexpr size_t kCCFData = 4;
inline constexpr size_t kTypeCompress = 6;

// CFFILE, read as one fixed block at the entry's position.
inline constexpr size_t kFileBlockSize = 276;
inline constexpr size_t kCbFile = 0;
inline constexpr size_t kUoffFolderStart = 4;
inline constexpr size_t kIFolder = 8;
inline constexpr size_t kDate = 10;
inline constexpr size_t kTime = 12;
inline constexpr size_t kAttribs = 14;
inline constexpr size_t kSzName = 16;
inline constexpr size_t kNameAreaSize = 260;
// The next CFFILE starts 17 + the name's length in bytes after this one:
// 16 fixed bytes, the name, its terminator.
inline constexpr int32_t kFileFixedAndTerminator = 17;

}  // namespace nxfv::cab
