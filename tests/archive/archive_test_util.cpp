#include "archive_test_util.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <random>

namespace nxfv::testing_archive {

bool Entry::operator==(const Entry& o) const {
  return Index == o.Index && Total == o.Total && FileName == o.FileName && ArchiveExt == o.ArchiveExt &&
         std::abs(Modified - o.Modified) < 1e-8 && Size == o.Size && CompSize == o.CompSize && Method == o.Method &&
         Attr == o.Attr && Path == o.Path && flags == o.flags && CRC == o.CRC && Comments == o.Comments;
}

std::ostream& operator<<(std::ostream& os, const Entry& e) {
  return os << "{" << e.Index << "/" << e.Total << " \"" << e.Path << "\" \"" << e.FileName << "\" " << e.ArchiveExt
            << " mod=" << e.Modified << " size=" << e.Size << " comp=" << e.CompSize << " method=" << e.Method
            << " attr=" << e.Attr << " flags=" << e.flags << " crc=" << e.CRC << " \"" << e.Comments << "\"}";
}

void Recorder::FileFound(int32_t Index, int32_t Total, std::string FileName, std::string ArchiveExt,
                         double Modified, int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr,
                         std::string Path, int32_t flags, int32_t CRC, std::string Comments) {
  entries.push_back(Entry{Index, Total, std::move(FileName), std::move(ArchiveExt), Modified, Size, CompSize, Method,
                          Attr, std::move(Path), flags, CRC, std::move(Comments)});
}

Listing ListFile(PlatformRef platform, const std::string& path, const std::string& ext) {
  cArchive reader(std::move(platform));
  Recorder recorder;
  reader.SetListener(&recorder);
  reader.ArchiveName = path;
  reader.ArchiveExt = ext;
  reader.FileCount = 777;
  reader.GetInfo();
  return Listing{std::move(recorder.entries), reader.FileCount};
}

Listing ListBytes(SimulatedPlatform& platform, const std::string& bytes, const std::string& ext) {
  platform.SimFiles().AddFileWithContent("C:\\a.bin", bytes);
  return ListFile(PlatformRef(PlatformRef(), &platform), "C:\\a.bin", ext);
}

bool RunTool(const std::string& command) { return std::system(command.c_str()) == 0; }
bool HaveTool(const std::string& name) { return RunTool("command -v " + name + " >/dev/null 2>&1"); }

std::string ReadHostFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

std::string MakeTempFolder(const std::string& prefix) {
  const auto dir = std::filesystem::temp_directory_path() / (prefix + std::to_string(std::random_device{}()));
  std::filesystem::remove_all(dir);
  std::filesystem::create_directories(dir);
  return dir.string();
}

}  // namespace nxfv::testing_archive
