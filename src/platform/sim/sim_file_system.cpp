#include "nxfv/platform/sim/sim_file_system.h"

#include <cstring>

#include "nxfv/platform/utf8.h"

namespace nxfv {

namespace {

std::vector<std::string> SplitPath(const std::string& path) {
  std::vector<std::string> parts;
  std::string cur;
  for (char c : path) {
    if (c == '\\' || c == '/') {
      if (!cur.empty()) parts.push_back(cur);
      cur.clear();
    } else {
      cur += c;
    }
  }
  if (!cur.empty()) parts.push_back(cur);
  return parts;
}

class MemoryFile : public RandomAccessFile {
 public:
  MemoryFile(std::shared_ptr<std::string> bytes, uint64_t size) : bytes_(std::move(bytes)), size_(size) {}
  uint64_t Size() override { return size_; }
  size_t ReadAt(uint64_t offset, void* buffer, size_t n) override {
    const uint64_t have = bytes_ ? bytes_->size() : 0;
    if (offset >= have) return 0;
    const size_t count = static_cast<size_t>(std::min<uint64_t>(n, have - offset));
    std::memcpy(buffer, bytes_->data() + offset, count);
    return count;
  }

 private:
  std::shared_ptr<std::string> bytes_;
  uint64_t size_;
};

}  // namespace

SimFileSystem::SimFileSystem() {
  AddVolume("C:\\", "NTFS");
  AddFolder("C:\\");
  AddFolder("C:\\TEMP");
}

void SimFileSystem::AddVolume(const std::string& root, const std::string& fsName) {
  auto parts = SplitPath(root);
  if (parts.empty()) return;
  volumes_[Utf8Upper(parts[0])] = fsName;
}

void SimFileSystem::RemoveVolume(const std::string& root) {
  auto parts = SplitPath(root);
  if (!parts.empty()) volumes_.erase(Utf8Upper(parts[0]));
}

SimFileSystem::Node* SimFileSystem::AddChild(Node* parent, const std::string& name, uint32_t attributes) {
  auto node = std::make_unique<Node>();
  node->data.name = name;
  node->data.attributes = attributes;
  node->data.creationTime = node->data.lastAccessTime = node->data.lastWriteTime = kDefaultTime;
  Node* raw = node.get();
  parent->index[Utf8Upper(name)] = parent->children.size();
  parent->children.push_back(std::move(node));
  return raw;
}

SimFileSystem::Node* SimFileSystem::Walk(const std::string& path, bool create, uint32_t folderAttributes) {
  auto parts = SplitPath(path);
  if (parts.empty()) return nullptr;
  const std::string drive = Utf8Upper(parts[0]);
  auto it = roots_.find(drive);
  if (it == roots_.end()) {
    if (!create) return nullptr;
    auto root = std::make_unique<Node>();
    root->data.name = parts[0];
    root->data.attributes = kAttrDirectory;
    it = roots_.emplace(drive, std::move(root)).first;
  }
  Node* node = it->second.get();
  for (size_t i = 1; i < parts.size(); ++i) {
    auto found = node->index.find(Utf8Upper(parts[i]));
    if (found == node->index.end()) {
      if (!create) return nullptr;
      node = AddChild(node, parts[i], folderAttributes);
    } else {
      node = node->children[found->second].get();
    }
  }
  return node;
}

SimFileSystem::Node* SimFileSystem::Parent(const std::string& path, std::string& leaf, bool create) {
  auto parts = SplitPath(path);
  if (parts.size() < 2) return nullptr;
  leaf = parts.back();
  std::string parentPath;
  for (size_t i = 0; i + 1 < parts.size(); ++i) parentPath += parts[i] + "\\";
  return Walk(parentPath, create, kAttrDirectory);
}

FindData& SimFileSystem::AddFolder(const std::string& path, uint32_t attributes) {
  Node* n = Walk(path, true, kAttrDirectory);
  if (SplitPath(path).size() > 1) n->data.attributes = attributes | kAttrDirectory;
  return n->data;
}

FindData& SimFileSystem::AddFile(const std::string& path, uint64_t size, uint32_t attributes) {
  std::string leaf;
  Node* parent = Parent(path, leaf, true);
  auto found = parent->index.find(Utf8Upper(leaf));
  Node* n = found == parent->index.end() ? AddChild(parent, leaf, attributes)
                                         : parent->children[found->second].get();
  n->data.attributes = attributes;
  n->data.sizeHigh = static_cast<uint32_t>(size >> 32);
  n->data.sizeLow = static_cast<uint32_t>(size);
  return n->data;
}

FindData& SimFileSystem::AddFileWithContent(const std::string& path, std::string bytes, uint32_t attributes) {
  const uint64_t size = bytes.size();
  FindData& d = AddFile(path, size, attributes);
  std::string leaf;
  Node* parent = Parent(path, leaf, false);
  parent->children[parent->index[Utf8Upper(leaf)]]->content = std::make_shared<std::string>(std::move(bytes));
  return d;
}

FindData* SimFileSystem::Find(const std::string& path) {
  Node* n = Walk(path, false, 0);
  return n ? &n->data : nullptr;
}

bool SimFileSystem::Remove(const std::string& path) {
  std::string leaf;
  Node* parent = Parent(path, leaf, false);
  if (!parent) return false;
  auto found = parent->index.find(Utf8Upper(leaf));
  if (found == parent->index.end()) return false;
  parent->children.erase(parent->children.begin() + static_cast<std::ptrdiff_t>(found->second));
  parent->index.clear();
  for (size_t i = 0; i < parent->children.size(); ++i)
    parent->index[Utf8Upper(parent->children[i]->data.name)] = i;
  return true;
}

void SimFileSystem::SetEnumerable(const std::string& folder, bool enumerable) {
  if (Node* n = Walk(folder, false, 0)) n->enumerable = enumerable;
}

bool SimFileSystem::Enumerate(const std::string& folder, const Visitor& visit) {
  // Accept "C:\x\", "C:\x" and "C:\x\*.*" alike.
  std::string path = folder;
  if (path.size() >= 3 && path.compare(path.size() - 3, 3, "*.*") == 0) path.resize(path.size() - 3);
  Node* n = Walk(path, false, 0);
  if (!n || !(n->data.attributes & kAttrDirectory) || !n->enumerable) return false;
  if (SplitPath(path).size() > 1) {
    FindData dot;
    dot.attributes = kAttrDirectory;
    dot.creationTime = dot.lastAccessTime = dot.lastWriteTime = n->data.lastWriteTime;
    dot.name = ".";
    if (!visit(dot)) return true;
    dot.name = "..";
    if (!visit(dot)) return true;
  }
  for (auto& child : n->children)
    if (!visit(child->data)) break;
  return true;
}

bool SimFileSystem::GetAttributes(const std::string& path, uint32_t& attributes) {
  Node* n = Walk(path, false, 0);
  if (!n) return false;
  attributes = n->data.attributes;
  return true;
}

bool SimFileSystem::VolumeInformation(const std::string& root, VolumeDetails& details) {
  if (!VolumeFileSystemName(root, details.fileSystem)) return false;
  const auto it = volumeDetails_.find(Utf8Upper(SplitPath(root)[0]));
  const std::string fileSystem = details.fileSystem;
  details = it == volumeDetails_.end() ? VolumeDetails{} : it->second;
  details.fileSystem = fileSystem;
  return true;
}

void SimFileSystem::SetVolumeDetails(const std::string& root, std::string label, uint64_t freeBytes,
                                     uint64_t totalBytes) {
  auto parts = SplitPath(root);
  if (parts.empty()) return;
  volumeDetails_[Utf8Upper(parts[0])] = VolumeDetails{std::move(label), "", freeBytes, totalBytes};
}

bool SimFileSystem::VolumeFileSystemName(const std::string& root, std::string& name) {
  auto parts = SplitPath(root);
  if (parts.empty()) return false;
  auto it = volumes_.find(Utf8Upper(parts[0]));
  if (it == volumes_.end()) return false;
  name = it->second;
  return true;
}

std::string SimFileSystem::TempPath() { return tempPath_; }

std::unique_ptr<RandomAccessFile> SimFileSystem::OpenForRead(const std::string& path) {
  Node* n = Walk(path, false, 0);
  if (!n || (n->data.attributes & kAttrDirectory)) return nullptr;
  const uint64_t size = (static_cast<uint64_t>(n->data.sizeHigh) << 32) | n->data.sizeLow;
  return std::make_unique<MemoryFile>(n->content, size);
}

bool SimFileSystem::WriteWholeFile(const std::string& path, const std::string& bytes) {
  std::string leaf;
  Node* parent = Parent(path, leaf, false);
  if (!parent || !(parent->data.attributes & kAttrDirectory)) return false;
  auto found = parent->index.find(Utf8Upper(leaf));
  if (found != parent->index.end() && (parent->children[found->second]->data.attributes & kAttrDirectory))
    return false;
  AddFileWithContent(path, bytes, kAttrArchive);
  return true;
}

bool SimFileSystem::CreateFolder(const std::string& path) {
  std::string leaf;
  Node* parent = Parent(path, leaf, false);
  if (!parent || !(parent->data.attributes & kAttrDirectory) || leaf.empty()) return false;
  if (parent->index.count(Utf8Upper(leaf)) != 0) return false;
  AddChild(parent, leaf, kAttrDirectory);
  return true;
}

bool SimFileSystem::CreateLink(const std::string& target, const std::string& linkPath) {
  uint32_t targetAttributes = 0;
  const bool toFolder = GetAttributes(target, targetAttributes) && (targetAttributes & kAttrDirectory);
  std::string leaf;
  Node* parent = Parent(linkPath, leaf, false);
  if (!parent || !(parent->data.attributes & kAttrDirectory) || leaf.empty()) return false;
  if (parent->index.count(Utf8Upper(leaf)) != 0) return false;
  AddChild(parent, leaf, kAttrReparsePoint | (toFolder ? kAttrDirectory : 0u));
  return true;
}

std::optional<std::string> SimFileSystem::ReadWholeFile(const std::string& path) {
  Node* n = Walk(path, false, 0);
  if (!n || (n->data.attributes & kAttrDirectory)) return std::nullopt;
  if (!n->content) return std::string();
  return *n->content;
}

}  // namespace nxfv
