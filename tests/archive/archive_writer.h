// Test archives written by program: ZIP and CAB directory structures only
// (no data), little-endian by explicit shifts. Header-only so that every
// test binary can build archives.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace nxfv::testing_archive {

constexpr uint16_t DosDate(int year, int month, int day) {
  return static_cast<uint16_t>(((year - 1980) << 9) | (month << 5) | day);
}
constexpr uint16_t DosTime(int hour, int minute, int second) {
  return static_cast<uint16_t>((hour << 11) | (minute << 5) | (second / 2));
}

inline void PutU16(std::string& out, uint32_t v) {
  out += static_cast<char>(v & 0xFF);
  out += static_cast<char>((v >> 8) & 0xFF);
}
inline void PutU32(std::string& out, uint32_t v) {
  PutU16(out, v & 0xFFFF);
  PutU16(out, v >> 16);
}
inline void SetU16(std::string& bytes, size_t offset, uint16_t v) {
  bytes[offset] = static_cast<char>(v & 0xFF);
  bytes[offset + 1] = static_cast<char>(v >> 8);
}

// Built fluently: ZipEntry("a.txt").Comment("c").Flags(1).
struct ZipEntryLayout {
  std::string name, comment, extra;
  uint16_t flags = 0, method = 8, time = DosTime(10, 30, 42), date = DosDate(2024, 3, 15);
  uint32_t crc = 0x12345678, compressedSize = 10, size = 20, externalAttributes = 32;

  ZipEntryLayout& Comment(std::string v) { comment = std::move(v); return *this; }
  ZipEntryLayout& Extra(std::string v) { extra = std::move(v); return *this; }
  ZipEntryLayout& Flags(uint16_t v) { flags = v; return *this; }
  ZipEntryLayout& Method(uint16_t v) { method = v; return *this; }
  ZipEntryLayout& Time(uint16_t v) { time = v; return *this; }
  ZipEntryLayout& Date(uint16_t v) { date = v; return *this; }
  ZipEntryLayout& Crc(uint32_t v) { crc = v; return *this; }
  ZipEntryLayout& CompressedSize(uint32_t v) { compressedSize = v; return *this; }
  ZipEntryLayout& Size(uint32_t v) { size = v; return *this; }
  ZipEntryLayout& Attributes(uint32_t v) { externalAttributes = v; return *this; }
};
inline ZipEntryLayout ZipEntry(std::string name) {
  ZipEntryLayout e;
  e.name = std::move(name);
  return e;
}

// One central directory file header with its variable fields.
inline std::string ZipCentralEntry(const ZipEntryLayout& e) {
  std::string o = "PK\x01\x02";
  for (uint32_t v : {20u, 20u, uint32_t{e.flags}, uint32_t{e.method}, uint32_t{e.time}, uint32_t{e.date}}) PutU16(o, v);
  for (uint32_t v : {e.crc, e.compressedSize, e.size}) PutU32(o, v);
  for (size_t v : {e.name.size(), e.extra.size(), e.comment.size(), size_t{0}, size_t{0}}) {
    PutU16(o, static_cast<uint32_t>(v));
  }
  PutU32(o, e.externalAttributes);
  PutU32(o, 0);  // local header offset
  return o + e.name + e.extra + e.comment;
}

inline std::string ZipEndRecord(uint16_t entries, uint32_t cdSize, uint32_t cdOffset, const std::string& comment = "") {
  std::string o = "PK\x05\x06";
  for (uint32_t v : {0u, 0u, uint32_t{entries}, uint32_t{entries}}) PutU16(o, v);
  PutU32(o, cdSize);
  PutU32(o, cdOffset);
  PutU16(o, static_cast<uint32_t>(comment.size()));
  return o + comment;
}

// prefix (standing for local headers and data), the central directory,
// the end record announcing entries.size() entries.
inline std::string BuildZip(const std::vector<ZipEntryLayout>& entries, const std::string& archiveComment = "",
                            const std::string& prefix = "PK-local-data") {
  std::string cd;
  for (const auto& e : entries) cd += ZipCentralEntry(e);
  return prefix + cd +
         ZipEndRecord(static_cast<uint16_t>(entries.size()), static_cast<uint32_t>(cd.size()),
                      static_cast<uint32_t>(prefix.size()), archiveComment);
}

struct CabFileLayout {
  std::string name;
  uint32_t size = 100;
  uint16_t date = DosDate(2023, 12, 31), time = DosTime(23, 59, 58), attribs = 0x20;

  CabFileLayout& Size(uint32_t v) { size = v; return *this; }
  CabFileLayout& Date(uint16_t v) { date = v; return *this; }
  CabFileLayout& Time(uint16_t v) { time = v; return *this; }
  CabFileLayout& Attribs(uint16_t v) { attribs = v; return *this; }
};
inline CabFileLayout CabFile(std::string name) {
  CabFileLayout f;
  f.name = std::move(name);
  return f;
}

struct CabLayout {
  std::vector<CabFileLayout> files;
  uint16_t folders = 1, typeCompress = 1;
  uint16_t flags = 0;          // 1 previous cabinet, 2 next cabinet, 4 reserve present
  uint16_t headerReserve = 0;  // cbCFHeader when flag 4 is set
};

// Header, the optional parts the flags announce, the folders, the file
// table at coffFiles.
inline std::string BuildCab(const CabLayout& cab) {
  std::string optional;
  if (cab.flags & 4) {
    PutU16(optional, cab.headerReserve);
    optional += std::string(2, '\0') + std::string(cab.headerReserve, '\xEE');  // cbCFFolder, cbCFData, area
  }
  if (cab.flags & 1) optional += std::string("prev.cab\0Disk 1\0", 16);
  if (cab.flags & 2) optional += std::string("next.cab\0Disk 3\0", 16);
  std::string folders;
  for (uint16_t i = 0; i < cab.folders; ++i) {
    PutU32(folders, 0);
    PutU16(folders, 0);
    PutU16(folders, cab.typeCompress);
  }
  std::string files;
  for (const auto& f : cab.files) {
    PutU32(files, f.size);
    PutU32(files, 0);
    for (uint32_t v : {0u, uint32_t{f.date}, uint32_t{f.time}, uint32_t{f.attribs}}) PutU16(files, v);
    files += f.name + '\0';
  }
  const uint32_t coffFiles = static_cast<uint32_t>(36 + optional.size() + folders.size());
  std::string o = "MSCF";
  for (uint32_t v : {0u, static_cast<uint32_t>(coffFiles + files.size()), 0u, coffFiles, 0u}) PutU32(o, v);
  o += "\x03\x01";  // version 1.3
  for (uint32_t v : {uint32_t{cab.folders}, static_cast<uint32_t>(cab.files.size()), uint32_t{cab.flags}, 0x1234u, 0u}) {
    PutU16(o, v);
  }
  return o + optional + folders + files;
}

}  // namespace nxfv::testing_archive
