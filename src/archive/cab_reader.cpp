// The cabinet directory reader: header, first folder, then the file table
// located through coffFiles.
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include "nxfv/archive/archive_reader.h"
#include "nxfv/archive/archive_text.h"
#include "nxfv/archive/byte_reader.h"
#include "nxfv/archive/cab_layout.h"
#include "nxfv/archive/reader_steps.h"

namespace nxfv {

namespace {

// Step numbers shown in the error box.
enum CabLine : int32_t {
  kLineHeader = 10,
  kLineFolder = 20,
  kLineEntry = 100,
  kLineName = 110,
  kLineDate = 120,
  kLineRaise = 130,
  kLineAdvance = 140,
};

// The stored name: the bytes before the first zero of the name area, or,
// when there is none, the whole area without leading and trailing blanks.
std::span<const uint8_t> StoredName(std::span<const uint8_t> area) {
  // One memchr: the area is scanned for every entry, up to 32767 times.
  if (const void* zero = std::memchr(area.data(), 0, area.size())) {
    return area.first(static_cast<size_t>(static_cast<const uint8_t*>(zero) - area.data()));
  }
  size_t first = 0;
  size_t last = area.size();
  while (first < last && area[first] == ' ') ++first;
  while (last > first && area[last - 1] == ' ') --last;
  return area.subspan(first, last - first);
}

// A typical table: 16 fixed bytes and a name of a few dozen bytes per entry.
constexpr size_t kTypicalEntryBytes = 64;

}  // namespace

void cArchive::GetCab() {
  using namespace archive_detail;
  Platform& platform = *platform_;
  std::unique_ptr<RandomAccessFile> handle = platform.Files().OpenForRead(ArchiveName);
  if (!handle) return;
  WindowedFile file(*handle);
  StepRunner step(platform, "GetCab");

  std::array<uint8_t, cab::kHeaderSize> header{};
  file.ReadAt(0, header.data(), header.size());
  if (!std::equal(std::begin(cab::kSignature), std::end(cab::kSignature), header.begin())) return;
  const ByteReader head(header);

  const int32_t total = head.S16(cab::kCFiles);
  FileCount = total;
  if (total == 0) return;
  const int32_t flags = head.S16(cab::kFlags);

  // The first folder's compression type stands for every entry. It is read
  // right after the header even when reserved areas or neighbour-cabinet
  // names lie there.
  int32_t method = 0;
  if (head.U16(cab::kCFolders) != 0) {
    step.Run(kLineFolder, [&] {
      std::array<uint8_t, cab::kFolderSize> folder{};
      file.ReadAt(cab::kFolderOffset, folder.data(), folder.size());
      method = ByteReader(folder).S16(cab::kTypeCompress);
    });
  }

  int32_t position = head.S32(cab::kCoffFiles);
  if (total > 0 && position >= 0) {
    file.Prefetch(static_cast<uint64_t>(position),
                  static_cast<size_t>(total) * kTypicalEntryBytes + cab::kFileBlockSize);
  }

  // Kept across entries: a block read short holds the previous entry's bytes.
  std::array<uint8_t, cab::kFileBlockSize> block{};
  const ByteReader fields(block);
  std::vector<uint8_t> lastRaw;
  std::string path;
  std::string fileName;
  int32_t nameLength = 0;
  double modified = 0;
  DosDateCache dates;

  for (int32_t index = 1; index <= total; ++index) {
    step.Run(kLineEntry, [&] { ReadRecord(file, position, block); });
    step.Run(kLineName, [&] {
      const std::span<const uint8_t> raw =
          StoredName(std::span<const uint8_t>(block).subspan(cab::kSzName, cab::kNameAreaSize));
      nameLength = static_cast<int32_t>(raw.size());
      if (!std::equal(raw.begin(), raw.end(), lastRaw.begin(), lastRaw.end())) {
        lastRaw.assign(raw.begin(), raw.end());
        SplitArchiveName(DecodeArchiveText(raw, LegacyCodePage::kWindows1252), path, fileName);
      }
    });
    step.Run(kLineDate, [&] {
      modified = dates.Get(platform.Time(), fields.U16(cab::kDate), fields.U16(cab::kTime));
    });
    step.Run(kLineRaise, [&] {
      if (!listener_) return;
      listener_->FileFound(index, total, fileName, ArchiveExt, modified, fields.S32(cab::kCbFile), 0, method,
                           fields.S16(cab::kAttribs), path, flags, 0, "");
    });
    // nameLength is at most 260, so only the sum with position can overflow.
    step.Run(kLineAdvance, [&] { return AdvancePosition(position, cab::kFileFixedAndTerminator + nameLength); });
  }
}

}  // namespace nxfv
