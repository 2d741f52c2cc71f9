#include "platform/linux/linux_file_system.h"

// Placeholder until the real implementation lands: answers "not available".
namespace nxfv {

bool LinuxFileSystem::Enumerate(const std::string&, const Visitor&) { return false; }
bool LinuxFileSystem::GetAttributes(const std::string&, uint32_t&) { return false; }
bool LinuxFileSystem::VolumeFileSystemName(const std::string&, std::string&) { return false; }
std::string LinuxFileSystem::TempPath() { return "/tmp/"; }
std::unique_ptr<RandomAccessFile> LinuxFileSystem::OpenForRead(const std::string&) { return nullptr; }
bool LinuxFileSystem::WriteWholeFile(const std::string&, const std::string&) { return false; }
std::optional<std::string> LinuxFileSystem::ReadWholeFile(const std::string&) { return std::nullopt; }

}  // namespace nxfv
