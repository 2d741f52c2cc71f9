// Real Linux file system: getdents64/readdir + statx enumeration mapped to
// find-data records, statfs volume names, positioned reads.
#pragma once

#include "platform/services.h"

namespace nxfv {

class LinuxFileSystem : public FileSystemService {
 public:
  bool Enumerate(const std::string& folder, const Visitor& visit) override;
  bool GetAttributes(const std::string& path, uint32_t& attributes) override;
  bool VolumeFileSystemName(const std::string& root, std::string& name) override;
  std::string TempPath() override;
  std::unique_ptr<RandomAccessFile> OpenForRead(const std::string& path) override;
  bool WriteWholeFile(const std::string& path, const std::string& bytes) override;
  std::optional<std::string> ReadWholeFile(const std::string& path) override;
};

}  // namespace nxfv
