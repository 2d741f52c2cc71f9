// Test helpers: a listener that records every entry, a one-call listing on
// the simulated platform, and the external archivers.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "archive/archive_reader.h"
#include "archive_writer.h"
#include "platform/sim/simulated_platform.h"

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

struct Listing {
  std::vector<Entry> entries;
  int32_t fileCount = 0;
};
// Lists path with extension ext; FileCount starts at 777 so that
// "unchanged" shows.
Listing ListFile(PlatformRef platform, const std::string& path, const std::string& ext);
// Lists bytes stored as a file of a fresh simulated platform.
Listing ListBytes(SimulatedPlatform& platform, const std::string& bytes, const std::string& ext);

// Runs a shell command; true when it exited 0. HaveTool: on PATH.
bool RunTool(const std::string& command);
bool HaveTool(const std::string& name);
// The bytes of a real file ("" when unreadable).
std::string ReadHostFile(const std::string& path);
// A new empty temporary folder.
std::string MakeTempFolder(const std::string& prefix);

}  // namespace nxfv::testing_archive
