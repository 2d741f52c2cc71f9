// The ZIP directory reader: finds the end record in the file's tail and
// walks the central directory entry by entry.
#include <algorithm>
#include <array>
#include <memory>

#include "nxfv/archive/archive_reader.h"
#include "nxfv/archive/archive_text.h"
#include "nxfv/archive/byte_reader.h"
#include "nxfv/archive/reader_steps.h"
#include "nxfv/archive/zip_layout.h"

namespace nxfv {

namespace {

// Step numbers shown in the error box.
enum ZipLine : int32_t {
  kLineFindEnd = 10,
  kLineReadEnd = 20,
  kLineEntryHeader = 100,
  kLinePastHeader = 110,
  kLineName = 120,
  kLinePastName = 130,
  kLineExtra = 140,
  kLinePastExtra = 150,
  kLineComment = 160,
  kLinePastComment = 170,
  kLineDate = 180,
  kLineRaise = 190,
};

// Offset of the last end-record signature in bytes, or npos.
size_t FindLastEndSignature(std::span<const uint8_t> bytes) {
  const size_t width = sizeof zip::kEndSignature;
  if (bytes.size() < width) return std::string::npos;
  for (size_t i = bytes.size() - width + 1; i-- > 0;) {
    if (std::equal(std::begin(zip::kEndSignature), std::end(zip::kEndSignature), bytes.begin() + i)) return i;
  }
  return std::string::npos;
}

}  // namespace

void cArchive::GetZip() {
  using namespace archive_detail;
  Platform& platform = *platform_;
  std::unique_ptr<RandomAccessFile> handle = platform.Files().OpenForRead(ArchiveName);
  if (!handle) return;
  WindowedFile file(*handle);
  StepRunner step(platform, "GetZip");

  // Only the low 32 bits of the size count, as a 32-bit size query gives.
  const uint32_t size = static_cast<uint32_t>(file.Size());
  if (size == 0) return;

  // The end record lies in the last 4096 bytes unless the archive comment
  // is longer than about 4070 bytes; such archives are not recognised.
  const uint64_t searchStart = size > zip::kTailSearchSize ? size - zip::kTailSearchSize : zip::kSmallFileSearchStart;
  size_t endAt = std::string::npos;
  step.Run(kLineFindEnd, [&] {
    std::array<uint8_t, zip::kTailSearchSize> tail{};
    const size_t got = file.ReadAt(searchStart, tail.data(), tail.size());
    endAt = FindLastEndSignature(std::span<const uint8_t>(tail.data(), got));
  });
  if (endAt == std::string::npos) return;

  int32_t position = 0;
  int32_t total = 0;
  uint32_t centralDirSize = 0;
  step.Run(kLineReadEnd, [&] {
    std::array<uint8_t, zip::kEndFieldsSize> end{};
    file.ReadAt(searchStart + endAt + sizeof zip::kEndSignature, end.data(), end.size());
    const ByteReader fields(end);
    FileCount = fields.S16(zip::kEndEntriesThisDisk);  // 32768 and more read negative
    position = fields.S32(zip::kEndCentralDirOffset);   // absolute: no correction for prefixed data
    centralDirSize = fields.U32(zip::kEndCentralDirSize);
    total = FileCount;
  });

  // The whole central directory in one read when its stated size is sane;
  // otherwise the window picks it up piece by piece.
  if (total > 0 && position >= 0 && centralDirSize > WindowedFile::kDefaultWindow &&
      centralDirSize <= WindowedFile::kMaxWindow && position < static_cast<int64_t>(size)) {
    file.Prefetch(static_cast<uint64_t>(position), centralDirSize);
  }

  // Entry state lives across entries: a header read short keeps the bytes
  // of the entry before, and a comment is only replaced by a non-empty one.
  std::array<uint8_t, zip::kCentralHeaderSize> header{};
  const ByteReader fields(header);
  TextFieldReader name(LegacyCodePage::kCp437);
  TextFieldReader comments(LegacyCodePage::kCp437);
  std::string path;
  std::string fileName;
  double modified = 0;
  DosDateCache dates;

  for (int32_t index = 1; index <= total; ++index) {
    step.Run(kLineEntryHeader, [&] { ReadRecord(file, position, header); });
    step.Run(kLinePastHeader, [&] { return AdvancePosition(position, zip::kCentralHeaderSize); });
    const int16_t nameLength = fields.S16(zip::kCdNameLength);
    const int16_t extraLength = fields.S16(zip::kCdExtraLength);
    const int16_t commentLength = fields.S16(zip::kCdCommentLength);

    step.Run(kLineName, [&] {
      bool changed = false;
      const StepError error = name.Read(file, position, nameLength, changed);
      if (changed) SplitArchiveName(name.text(), path, fileName);
      return error;
    });
    step.Run(kLinePastName, [&] { return AdvancePosition(position, nameLength); });
    if (extraLength != 0) {
      // The extra field is skipped unread; only its length is checked.
      step.Run(kLineExtra, [&] { return extraLength < 0 ? kErrInvalidCall : kStepOk; });
      step.Run(kLinePastExtra, [&] { return AdvancePosition(position, extraLength); });
    }
    if (commentLength != 0) {
      step.Run(kLineComment, [&] {
        bool changed = false;
        return comments.Read(file, position, commentLength, changed);
      });
      step.Run(kLinePastComment, [&] { return AdvancePosition(position, commentLength); });
    }
    step.Run(kLineDate, [&] {
      modified = dates.Get(platform.Time(), fields.U16(zip::kCdModDate), fields.U16(zip::kCdModTime));
    });
    step.Run(kLineRaise, [&] {
      if (!listener_) return;
      listener_->FileFound(index, total, fileName, ArchiveExt, modified, fields.S32(zip::kCdUncompressedSize),
                           fields.S32(zip::kCdCompressedSize), fields.S16(zip::kCdMethod),
                           fields.S32(zip::kCdExternalAttributes), path, fields.S16(zip::kCdFlags),
                           fields.S32(zip::kCdCrc32), comments.text());
    });
  }
}

}  // namespace nxfv
