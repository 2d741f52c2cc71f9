// Real Linux file system: getdents64 + statx enumeration mapped to find-data
// records, statfs volume names, positioned reads.
//
// Paths and names are UTF-8 text; names that are not valid UTF-8 are shown
// with "\xHH" escapes (file_name_escape.h) and every member taking a path
// decodes them again before calling the OS.
#pragma once

#include "nxfv/platform/services.h"

namespace nxfv {

class LinuxFileSystem : public FileSystemService {
 public:
  // Streams every entry except "." and ".." to visit, in directory order,
  // without collecting them: one statx per entry (without following a
  // symbolic link), plus one stat of the target for symbolic links; the
  // folder's .hidden file is read once. An entry that vanishes between
  // the read and its statx is skipped; one that cannot be examined (a
  // folder readable but not searchable) is reported with its type only,
  // zero times and size. False when the folder cannot be opened or its
  // first read fails; a read error later ends the enumeration early (true).
  bool Enumerate(const std::string& folder, const Visitor& visit) override;
  // The entry itself (a symbolic link is not followed), same attribute
  // rules; trailing "/" ignored. False when it does not exist.
  bool GetAttributes(const std::string& path, uint32_t& attributes) override;
  // From the errno of opening the path (a folder with O_DIRECTORY); a file
  // that opens but is not a regular file is "not a regular file". Other
  // reasons come as strerror gives them.
  std::string WhyNotReadable(const std::string& path, bool asFolder) override;
  // statfs of root: "FAT", "ext4", "tmpfs", ... or "unknown" for a file
  // system not in the table. False when root does not exist.
  bool VolumeFileSystemName(const std::string& root, std::string& name) override;
  // Names from getdents64 alone: the bits come from the entry type, and
  // only symbolic links and entries of unknown type are examined further.
  bool EnumerateNames(const std::string& folder, const Visitor& visit) override;
  // One statx per name, relative to the folder opened once.
  void FindEntries(const std::string& folder, const std::vector<std::string>& names, const Visitor& visit) override;
  // Space from statvfs; the label is the mount point's last name for
  // removable media (/media/USER/LABEL, /run/media/USER/LABEL), else "".
  bool VolumeInformation(const std::string& root, VolumeDetails& details) override;
  // $TMPDIR or "/tmp", with a trailing "/".
  std::string TempPath() override;
  // Null for a missing file or a folder. Size is taken at open.
  std::unique_ptr<RandomAccessFile> OpenForRead(const std::string& path) override;
  // Creates or truncates the file in place (links and permissions of an
  // existing file are kept). False on any failure; the file may then be
  // left incomplete.
  bool WriteWholeFile(const std::string& path, const std::string& bytes) override;
  std::optional<std::string> ReadWholeFile(const std::string& path) override;
  // mkdir with mode 0777 (the umask applies).
  bool CreateFolder(const std::string& path) override;
  bool CreateLink(const std::string& target, const std::string& linkPath) override;
};

}  // namespace nxfv
