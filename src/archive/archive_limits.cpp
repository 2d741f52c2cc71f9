#include "nxfv/archive/archive_limits.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>

#include "nxfv/archive/byte_reader.h"
#include "nxfv/archive/cab_layout.h"
#include "nxfv/archive/zip_layout.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

namespace {

// The most entries the readers count: a 16-bit signed total.
constexpr uint32_t kMostEntries = 32767;

std::string Grouped(uint64_t n) {
  std::string digits = std::to_string(n);
  for (size_t i = digits.size(); i > 3; i -= 3) digits.insert(i - 3, ",");
  return digits;
}

std::string TooManyEntries(const std::string& what) {
  return "The archive holds " + what + "; the viewer lists at most " + Grouped(kMostEntries) +
         ", so its entries are not listed.";
}

bool HasSignature(std::span<const uint8_t> bytes, size_t at, const uint8_t (&signature)[4]) {
  return at <= bytes.size() && bytes.size() - at >= 4 &&
         std::equal(std::begin(signature), std::end(signature), bytes.begin() + static_cast<std::ptrdiff_t>(at));
}

std::string ZipNotice(RandomAccessFile& file) {
  // The end record is looked for as the reader looks for it: the last
  // signature in the file's last 4096 bytes (32-bit size).
  const uint32_t size = static_cast<uint32_t>(file.Size());
  const uint32_t searchStart = size > zip::kTailSearchSize ? size - zip::kTailSearchSize : zip::kSmallFileSearchStart;
  if (size <= searchStart) return "";
  std::array<uint8_t, zip::kTailSearchSize> tail{};
  const std::span<const uint8_t> bytes(tail.data(), file.ReadAt(searchStart, tail.data(), tail.size()));
  size_t endAt = bytes.size();
  for (size_t i = bytes.size(); i-- > 0;) {
    if (HasSignature(bytes, i, zip::kEndSignature)) {
      endAt = i;
      break;
    }
  }
  const ByteReader record(bytes);
  const size_t fields = endAt + sizeof zip::kEndSignature;
  uint16_t thisDisk = 0, total = 0;
  uint32_t cdSize = 0, cdOffset = 0;
  if (!record.U16At(fields + zip::kEndEntriesThisDisk, thisDisk) || !record.U16At(fields + zip::kEndEntriesTotal, total) ||
      !record.U32At(fields + zip::kEndCentralDirSize, cdSize) ||
      !record.U32At(fields + zip::kEndCentralDirOffset, cdOffset)) {
    return "";
  }

  // The locator sits right before the end record; it may lie just before
  // the bytes searched, so it is read on its own.
  const uint64_t endPosition = uint64_t{searchStart} + endAt;
  if (endPosition >= zip::kZip64LocatorSize) {
    std::array<uint8_t, sizeof zip::kZip64LocatorSignature> locator{};
    if (file.ReadAt(endPosition - zip::kZip64LocatorSize, locator.data(), locator.size()) == locator.size() &&
        HasSignature(locator, 0, zip::kZip64LocatorSignature)) {
      return "The archive uses ZIP64 records (for more than 65,535 entries or for sizes of 4 GB and more), "
             "which the viewer does not read, so its entries are not listed.";
    }
  }
  const uint16_t count = std::max(thisDisk, total);
  if (count == 0xFFFF) return TooManyEntries("65,535 entries or more");
  if (count > kMostEntries) return TooManyEntries(Grouped(count) + " entries");
  if (uint64_t{cdOffset} + cdSize != endPosition) {
    const bool before = uint64_t{cdOffset} + cdSize < endPosition;
    const uint64_t gap = before ? endPosition - cdOffset - cdSize : uint64_t{cdOffset} + cdSize - endPosition;
    const std::string bytes = Grouped(gap) + (gap == 1 ? " byte" : " bytes");
    return "The archive's central directory does not end where its end record begins (" +
           (before ? bytes + " of data before the archive or after its directory"
                   : "it would run " + bytes + " into the end record") +
           "), so its entries are not listed, or listed wrongly.";
  }
  return "";
}

std::string CabNotice(RandomAccessFile& file) {
  std::array<uint8_t, cab::kHeaderSize> header{};
  if (file.ReadAt(0, header.data(), header.size()) != header.size()) return "";
  if (!HasSignature(header, cab::kSignatureOffset, cab::kSignature)) return "";
  uint16_t files = 0;
  if (!ByteReader(header).U16At(cab::kCFiles, files) || files <= kMostEntries) return "";
  return TooManyEntries(Grouped(files) + " files");
}

}  // namespace

std::string ArchiveLimitNotice(Platform& platform, const std::string& path, const std::string& ext) {
  const bool zip = ext == "zip" || ext == ".zip";
  const bool cab = ext == "cab" || ext == ".cab";
  if (!zip && !cab) return "";
  const std::unique_ptr<RandomAccessFile> file = platform.Files().OpenForRead(path);
  if (!file) return "";
  return zip ? ZipNotice(*file) : CabNotice(*file);
}

}  // namespace nxfv
