// Test helpers: tiny ZIP and CAB writers (directory structures only, no
// data), a listener that records every entry, and a platform that counts
// the reads the reader issues.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "archive/archive_reader.h"
#include "platform/sim/simulated_platform.h"

namespace nxfv::testing_archive {

// DOS date and time words.
constexpr uint16_t DosDate(int year, int month, int day) {
  return static_cast<uint16_t>(((year - 1980) << 9) | (month << 5) | day);
}
constexpr uint16_t DosTime(int hour, int minute, int second) {
  return static_cast<uint16_t>((hour << 11) | (minute << 5) | (second / 2));
}

void PutU16(std::string& out, uint16_t v);
void PutU32(std::string& out, uint32_t v);
void SetU16(std::string& bytes, size_t offset, uint16_t v);
void SetU32(std::string& bytes, size_t offset, uint32_t v);

// Built fluently: ZipEntry("a.txt").Comment("c").Flags(1).
struct ZipEntrySpec {
  std::string name;
  std::string comment;
  std::string extra;
  uint16_t flags = 0;
  uint16_t method = 8;
  uint16_t time = DosTime(10, 30, 42);
  uint16_t date = DosDate(2024, 3, 15);
  uint32_t crc = 0x12345678;
  uint32_t compressedSize = 10;
  uint32_t size = 20;
  uint32_t externalAttributes = 32;

  ZipEntrySpec& Comment(std::string v) { comment = std::move(v); return *this; }
  ZipEntrySpec& Extra(std::string v) { extra = std::move(v); return *this; }
  ZipEntrySpec& Flags(uint16_t v) { flags = v; return *this; }
  ZipEntrySpec& Method(uint16_t v) { method = v; return *this; }
  ZipEntrySpec& Time(uint16_t v) { time = v; return *this; }
  ZipEntrySpec& Date(uint16_t v) { date = v; return *this; }
  ZipEntrySpec& Crc(uint32_t v) { crc = v; return *this; }
  ZipEntrySpec& CompressedSize(uint32_t v) { compressedSize = v; return *this; }
  ZipEntrySpec& Size(uint32_t v) { size = v; return *this; }
  ZipEntrySpec& Attributes(uint32_t v) { externalAttributes = v; return *this; }
};
inline ZipEntrySpec ZipEntry(std::string name) {
  ZipEntrySpec e;
  e.name = std::move(name);
  return e;
}

// One central directory file header with its variable fields.
std::string ZipCentralEntry(const ZipEntrySpec& e);
// The end record: signature, fields, comment.
std::string ZipEndRecord(uint16_t entries, uint32_t centralDirSize, uint32_t centralDirOffset,
                         const std::string& comment = "");
// prefix (stands for local headers and data), the central directory, the
// end record announcing entries.size() entries.
std::string BuildZip(const std::vector<ZipEntrySpec>& entries, const std::string& archiveComment = "",
                     const std::string& prefix = "PK-local-data");

struct CabFileSpec {
  std::string name;
  uint32_t size = 100;
  uint16_t date = DosDate(2023, 12, 31);
  uint16_t time = DosTime(23, 59, 58);
  uint16_t attribs = 0x20;

  CabFileSpec& Size(uint32_t v) { size = v; return *this; }
  CabFileSpec& Date(uint16_t v) { date = v; return *this; }
  CabFileSpec& Time(uint16_t v) { time = v; return *this; }
  CabFileSpec& Attribs(uint16_t v) { attribs = v; return *this; }
};
inline CabFileSpec CabFile(std::string name) {
  CabFileSpec f;
  f.name = std::move(name);
  return f;
}

struct CabSpec {
  std::vector<CabFileSpec> files;
  uint16_t folders = 1;
  uint16_t typeCompress = 1;
  uint16_t flags = 0;          // 1 previous cabinet, 2 next cabinet, 4 reserve present
  uint16_t headerReserve = 0;  // cbCFHeader when flag 4 is set
  std::string previousCabinet = "prev.cab";
  std::string nextCabinet = "next.cab";
};
// Returns the cabinet; coffFiles is where the real file table starts.
std::string BuildCab(const CabSpec& spec);

struct Entry {
  int32_t Index = 0;
  int32_t Total = 0;
  std::string FileName;
  std::string ArchiveExt;
  double Modified = 0;
  int32_t Size = 0;
  int32_t CompSize = 0;
  int32_t Method = 0;
  int32_t Attr = 0;
  std::string Path;
  int32_t flags = 0;
  int32_t CRC = 0;
  std::string Comments;
  // Dates compare to within a millisecond: they are computed two ways.
  bool operator==(const Entry& o) const;
};
std::ostream& operator<<(std::ostream& os, const Entry& e);

class Recorder : public cArchiveEvents {
 public:
  std::vector<Entry> entries;
  void FileFound(int32_t Index, int32_t Total, std::string FileName, std::string ArchiveExt, double Modified,
                 int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr, std::string Path, int32_t flags,
                 int32_t CRC, std::string Comments) override;
};

// Lists bytes stored as C:\a.<ext-without-dot> on platform with extension ext.
// fileCount starts at startCount so that "unchanged" is visible.
struct Listing {
  std::vector<Entry> entries;
  int32_t fileCount = 0;
};
Listing ListBytes(SimulatedPlatform& platform, const std::string& bytes, const std::string& ext,
                  int32_t startCount = 777);

// A simulated platform whose files count the reads made on them.
class CountingPlatform : public SimulatedPlatform {
 public:
  CountingPlatform();
  ~CountingPlatform() override;
  FileSystemService& Files() override;
  size_t reads() const;

 private:
  class CountingFiles;
  std::unique_ptr<CountingFiles> counting_;
};

// Runs a shell command; true when it exited 0.
bool RunTool(const std::string& command);
// Whether a program is on PATH.
bool HaveTool(const std::string& name);

}  // namespace nxfv::testing_archive
