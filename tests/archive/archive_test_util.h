// Test helpers: a listener that records every entry, one-call listings, and
// the external archivers.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "nxfv/archive/archive_reader.h"
#include "archive_writer.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv::testing_archive {

struct Entry {
  int32_t Index = 0, Total = 0;
  std::string FileName, ArchiveExt;
  double Modified = 0;
  int32_t Size = 0, CompSize = 0, Method = 0, Attr = 0;
  std::string Path;
  int32_t flags = 0, CRC = 0;
  std::string Comments;
  // Dates compare to within a millisecond: tests compute them another way.
  bool operator==(const Entry& o) const {
    return std::tie(Index, Total, FileName, ArchiveExt, Size, CompSize, Method, Attr, Path, flags, CRC, Comments) ==
               std::tie(o.Index, o.Total, o.FileName, o.ArchiveExt, o.Size, o.CompSize, o.Method, o.Attr, o.Path,
                        o.flags, o.CRC, o.Comments) &&
           std::abs(Modified - o.Modified) < 1e-8;
  }
};
inline std::ostream& operator<<(std::ostream& os, const Entry& e) {
  return os << "{" << e.Index << "/" << e.Total << " \"" << e.Path << "\" \"" << e.FileName << "\" " << e.ArchiveExt
            << " mod=" << e.Modified << " size=" << e.Size << " comp=" << e.CompSize << " method=" << e.Method
            << " attr=" << e.Attr << " flags=" << e.flags << " crc=" << e.CRC << " \"" << e.Comments << "\"}";
}

class Recorder : public cArchiveEvents {
 public:
  std::vector<Entry> entries;
  void FileFound(int32_t Index, int32_t Total, std::string_view FileName, std::string_view ArchiveExt,
                 double Modified, int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr, std::string_view Path,
                 int32_t flags, int32_t CRC, std::string_view Comments) override {
    entries.push_back(Entry{Index, Total, std::string(FileName), std::string(ArchiveExt), Modified, Size, CompSize,
                            Method, Attr, std::string(Path), flags, CRC, std::string(Comments)});
  }
};

struct Listing {
  std::vector<Entry> entries;
  int32_t fileCount = 0;
};
// Lists path with extension ext; FileCount starts at 777 so that
// "unchanged" shows.
inline Listing ListFile(PlatformRef platform, const std::string& path, const std::string& ext,
                        Recorder&& recorder = Recorder()) {
  cArchive reader(std::move(platform));
  reader.SetListener(&recorder);
  reader.ArchiveName = path;
  reader.ArchiveExt = ext;
  reader.FileCount = 777;
  reader.GetInfo();
  return Listing{std::move(recorder.entries), reader.FileCount};
}
// Lists bytes stored as a file of the simulated platform.
inline Listing ListBytes(SimulatedPlatform& platform, const std::string& bytes, const std::string& ext) {
  platform.SimFiles().AddFileWithContent("C:\\a.bin", bytes);
  return ListFile(PlatformRef(PlatformRef(), &platform), "C:\\a.bin", ext);
}

// Runs a shell command; true when it exited 0. HaveTool: on PATH.
inline bool RunTool(const std::string& command) { return std::system(command.c_str()) == 0; }
inline bool HaveTool(const std::string& name) { return RunTool("command -v " + name + " >/dev/null 2>&1"); }
// The bytes of a real file ("" when unreadable).
inline std::string ReadHostFile(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}
}  // namespace nxfv::testing_archive
