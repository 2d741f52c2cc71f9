// In-memory file tree with Windows rules: "\" separators, drive roots like
// "C:\", names compared without regard to case, full attribute bits, 8.3
// names, three file times and 64-bit sizes. Entries enumerate in the order
// they were added, "." and ".." first in every folder that is not a root.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "nxfv/platform/services.h"

namespace nxfv {

class SimFileSystem : public FileSystemService {
 public:
  // The default write/creation/access time of new entries: 2024-03-15 10:30:00 UTC.
  static constexpr uint64_t kDefaultTime = 133549722000000000ULL;

  SimFileSystem();

  // Volumes: root "C:\" with a file-system name ("NTFS", "FAT32", ...).
  // A root without a volume makes the volume query fail.
  void AddVolume(const std::string& root, const std::string& fileSystemName);
  void RemoveVolume(const std::string& root);

  // Creates the folder and any missing parents. Returns its record.
  FindData& AddFolder(const std::string& path, uint32_t attributes = kAttrDirectory);
  FindData& AddFile(const std::string& path, uint64_t size = 0, uint32_t attributes = kAttrArchive);
  FindData& AddFileWithContent(const std::string& path, std::string bytes, uint32_t attributes = kAttrArchive);
  // The record of an existing entry (to set times, 8.3 name, attributes).
  FindData* Find(const std::string& path);
  bool Remove(const std::string& path);
  // A folder that exists but cannot be enumerated (access denied).
  void SetEnumerable(const std::string& folder, bool enumerable);

  // FileSystemService
  bool Enumerate(const std::string& folder, const Visitor& visit) override;
  bool GetAttributes(const std::string& path, uint32_t& attributes) override;
  bool VolumeFileSystemName(const std::string& root, std::string& name) override;
  // The drives view's figures: a volume added with AddVolume has no label
  // and no space until SetVolumeDetails gives them.
  bool VolumeInformation(const std::string& root, VolumeDetails& details) override;
  void SetVolumeDetails(const std::string& root, std::string label, uint64_t freeBytes, uint64_t totalBytes);
  std::string TempPath() override;
  std::unique_ptr<RandomAccessFile> OpenForRead(const std::string& path) override;
  bool WriteWholeFile(const std::string& path, const std::string& bytes) override;
  std::optional<std::string> ReadWholeFile(const std::string& path) override;
  bool CreateFolder(const std::string& path) override;
  // A link is an entry with the reparse-point attribute (and the folder
  // attribute when its target is a folder); its target is not kept.
  bool CreateLink(const std::string& target, const std::string& linkPath) override;

  void SetTempPath(std::string path) { tempPath_ = std::move(path); }

 private:
  struct Node {
    FindData data;
    std::shared_ptr<std::string> content;  // bytes of a file made with content
    bool enumerable = true;
    std::vector<std::unique_ptr<Node>> children;
    std::unordered_map<std::string, size_t> index;  // upper-cased name -> child position
  };
  Node* Walk(const std::string& path, bool create, uint32_t folderAttributes);
  Node* Parent(const std::string& path, std::string& leaf, bool create);
  Node* AddChild(Node* parent, const std::string& name, uint32_t attributes);

  std::map<std::string, std::unique_ptr<Node>> roots_;  // upper-cased "C:"
  std::map<std::string, VolumeDetails> volumeDetails_;  // upper-cased "C:" -> label and space
  std::map<std::string, std::string> volumes_;          // upper-cased "C:" -> fs name
  std::string tempPath_ = "C:\\TEMP\\";
};

}  // namespace nxfv
