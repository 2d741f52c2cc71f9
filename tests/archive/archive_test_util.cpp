#include "archive_test_util.h"

#include <cmath>
#include <cstdlib>

namespace nxfv::testing_archive {

void PutU16(std::string& out, uint16_t v) {
  out += static_cast<char>(v & 0xFF);
  out += static_cast<char>(v >> 8);
}

void PutU32(std::string& out, uint32_t v) {
  PutU16(out, static_cast<uint16_t>(v & 0xFFFF));
  PutU16(out, static_cast<uint16_t>(v >> 16));
}

void SetU16(std::string& bytes, size_t offset, uint16_t v) {
  bytes[offset] = static_cast<char>(v & 0xFF);
  bytes[offset + 1] = static_cast<char>(v >> 8);
}

void SetU32(std::string& bytes, size_t offset, uint32_t v) {
  SetU16(bytes, offset, static_cast<uint16_t>(v & 0xFFFF));
  SetU16(bytes, offset + 2, static_cast<uint16_t>(v >> 16));
}

std::string ZipCentralEntry(const ZipEntrySpec& e) {
  std::string out = "PK\x01\x02";
  PutU16(out, 20);  // version made by
  PutU16(out, 20);  // version needed
  PutU16(out, e.flags);
  PutU16(out, e.method);
  PutU16(out, e.time);
  PutU16(out, e.date);
  PutU32(out, e.crc);
  PutU32(out, e.compressedSize);
  PutU32(out, e.size);
  PutU16(out, static_cast<uint16_t>(e.name.size()));
  PutU16(out, static_cast<uint16_t>(e.extra.size()));
  PutU16(out, static_cast<uint16_t>(e.comment.size()));
  PutU16(out, 0);  // disk number start
  PutU16(out, 0);  // internal attributes
  PutU32(out, e.externalAttributes);
  PutU32(out, 0);  // local header offset
  return out + e.name + e.extra + e.comment;
}

std::string ZipEndRecord(uint16_t entries, uint32_t centralDirSize, uint32_t centralDirOffset,
                         const std::string& comment) {
  std::string out = "PK\x05\x06";
  PutU16(out, 0);
  PutU16(out, 0);
  PutU16(out, entries);
  PutU16(out, entries);
  PutU32(out, centralDirSize);
  PutU32(out, centralDirOffset);
  PutU16(out, static_cast<uint16_t>(comment.size()));
  return out + comment;
}

std::string BuildZip(const std::vector<ZipEntrySpec>& entries, const std::string& archiveComment,
                     const std::string& prefix) {
  std::string cd;
  for (const auto& e : entries) cd += ZipCentralEntry(e);
  return prefix + cd +
         ZipEndRecord(static_cast<uint16_t>(entries.size()), static_cast<uint32_t>(cd.size()),
                      static_cast<uint32_t>(prefix.size()), archiveComment);
}

std::string BuildCab(const CabSpec& spec) {
  std::string optional;  // reserve sizes, reserved bytes, neighbour names
  if (spec.flags & 4) {
    PutU16(optional, spec.headerReserve);
    optional += '\0';  // cbCFFolder
    optional += '\0';  // cbCFData
    optional += std::string(spec.headerReserve, '\xEE');
  }
  if (spec.flags & 1) optional += spec.previousCabinet + '\0' + "Disk 1" + '\0';
  if (spec.flags & 2) optional += spec.nextCabinet + '\0' + "Disk 3" + '\0';

  std::string folders;
  for (uint16_t i = 0; i < spec.folders; ++i) {
    PutU32(folders, 0);  // coffCabStart (no data blocks here)
    PutU16(folders, 0);  // cCFData
    PutU16(folders, spec.typeCompress);
  }
  std::string files;
  for (const auto& f : spec.files) {
    PutU32(files, f.size);
    PutU32(files, 0);  // uoffFolderStart
    PutU16(files, 0);  // iFolder
    PutU16(files, f.date);
    PutU16(files, f.time);
    PutU16(files, f.attribs);
    files += f.name;
    files += '\0';
  }
  const uint32_t coffFiles = static_cast<uint32_t>(36 + optional.size() + folders.size());
  std::string out = "MSCF";
  PutU32(out, 0);
  PutU32(out, static_cast<uint32_t>(coffFiles + files.size()));  // cbCabinet
  PutU32(out, 0);
  PutU32(out, coffFiles);
  PutU32(out, 0);
  out += '\x03';  // versionMinor
  out += '\x01';  // versionMajor
  PutU16(out, spec.folders);
  PutU16(out, static_cast<uint16_t>(spec.files.size()));
  PutU16(out, spec.flags);
  PutU16(out, 0x1234);  // setID
  PutU16(out, 0);       // iCabinet
  return out + optional + folders + files;
}

bool Entry::operator==(const Entry& o) const {
  return Index == o.Index && Total == o.Total && FileName == o.FileName && ArchiveExt == o.ArchiveExt &&
         std::abs(Modified - o.Modified) < 1e-8 && Size == o.Size && CompSize == o.CompSize && Method == o.Method &&
         Attr == o.Attr && Path == o.Path && flags == o.flags && CRC == o.CRC && Comments == o.Comments;
}

std::ostream& operator<<(std::ostream& os, const Entry& e) {
  return os << "{" << e.Index << "/" << e.Total << " path=\"" << e.Path << "\" name=\"" << e.FileName
            << "\" ext=" << e.ArchiveExt << " mod=" << e.Modified << " size=" << e.Size << " comp=" << e.CompSize
            << " method=" << e.Method << " attr=" << e.Attr << " flags=" << e.flags << " crc=" << e.CRC
            << " comment=\"" << e.Comments << "\"}";
}

void Recorder::FileFound(int32_t Index, int32_t Total, std::string FileName, std::string ArchiveExt,
                         double Modified, int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr,
                         std::string Path, int32_t flags, int32_t CRC, std::string Comments) {
  entries.push_back(Entry{Index, Total, std::move(FileName), std::move(ArchiveExt), Modified, Size, CompSize, Method,
                          Attr, std::move(Path), flags, CRC, std::move(Comments)});
}

Listing ListBytes(SimulatedPlatform& platform, const std::string& bytes, const std::string& ext,
                  int32_t startCount) {
  const std::string path = "C:\\a.bin";
  platform.SimFiles().AddFileWithContent(path, bytes);
  cArchive reader(platform);
  Recorder recorder;
  reader.SetListener(&recorder);
  reader.ArchiveName = path;
  reader.ArchiveExt = ext;
  reader.FileCount = startCount;
  reader.GetInfo();
  platform.SimFiles().Remove(path);
  return Listing{std::move(recorder.entries), reader.FileCount};
}

namespace {

class CountingFile : public RandomAccessFile {
 public:
  CountingFile(std::unique_ptr<RandomAccessFile> inner, size_t& reads) : inner_(std::move(inner)), reads_(reads) {}
  uint64_t Size() override { return inner_->Size(); }
  size_t ReadAt(uint64_t offset, void* buffer, size_t n) override {
    ++reads_;
    return inner_->ReadAt(offset, buffer, n);
  }

 private:
  std::unique_ptr<RandomAccessFile> inner_;
  size_t& reads_;
};

}  // namespace

class CountingPlatform::CountingFiles : public FileSystemService {
 public:
  explicit CountingFiles(SimFileSystem& inner) : inner_(inner) {}
  bool Enumerate(const std::string& folder, const Visitor& visit) override { return inner_.Enumerate(folder, visit); }
  bool GetAttributes(const std::string& path, uint32_t& attributes) override {
    return inner_.GetAttributes(path, attributes);
  }
  bool VolumeFileSystemName(const std::string& root, std::string& name) override {
    return inner_.VolumeFileSystemName(root, name);
  }
  std::string TempPath() override { return inner_.TempPath(); }
  std::unique_ptr<RandomAccessFile> OpenForRead(const std::string& path) override {
    auto file = inner_.OpenForRead(path);
    if (!file) return nullptr;
    return std::make_unique<CountingFile>(std::move(file), reads);
  }
  bool WriteWholeFile(const std::string& path, const std::string& bytes) override {
    return inner_.WriteWholeFile(path, bytes);
  }
  std::optional<std::string> ReadWholeFile(const std::string& path) override { return inner_.ReadWholeFile(path); }

  size_t reads = 0;

 private:
  SimFileSystem& inner_;
};

CountingPlatform::CountingPlatform() : counting_(std::make_unique<CountingFiles>(SimFiles())) {}
CountingPlatform::~CountingPlatform() = default;
FileSystemService& CountingPlatform::Files() { return *counting_; }
size_t CountingPlatform::reads() const { return counting_->reads; }

bool RunTool(const std::string& command) { return std::system(command.c_str()) == 0; }

bool HaveTool(const std::string& name) { return RunTool("command -v " + name + " >/dev/null 2>&1"); }

}  // namespace nxfv::testing_archive
