#include "nxfv/platform/linux/volume_names.h"

namespace nxfv {
namespace {

struct MagicName {
  uint64_t magic;
  const char* name;
};

// Values as the kernel defines them (linux/magic.h and the file systems'
// own headers); spelled out so the table does not depend on header versions.
constexpr MagicName kMagicNames[] = {
    {0x4d44, "FAT"},           // msdos, vfat
    {0x2011BAB0, "FAT"},       // exfat
    {0xEF53, "ext4"},          // ext2, ext3, ext4
    {0x01021994, "tmpfs"},
    {0x858458f6, "ramfs"},
    {0x794c7630, "overlay"},
    {0x9123683E, "btrfs"},
    {0x58465342, "xfs"},
    {0xF2F52010, "f2fs"},
    {0xCA451A4E, "bcachefs"},
    {0x2fc12fc1, "zfs"},
    {0x3153464a, "jfs"},
    {0x52654973, "reiserfs"},
    {0x3434, "nilfs2"},
    {0x5346544e, "NTFS"},      // ntfs (classic driver)
    {0x7366746e, "NTFS"},      // ntfs3
    {0x4244, "hfs"},
    {0x482b, "hfsplus"},
    {0x9660, "iso9660"},
    {0x15013346, "UDF"},
    {0x73717368, "squashfs"},
    {0x28cd3d45, "cramfs"},
    {0xE0F5E1E2, "erofs"},
    {0x6969, "nfs"},
    {0xFF534D42, "cifs"},
    {0xFE534D42, "smb2"},
    {0x01021997, "9p"},
    {0x00c36400, "ceph"},
    {0x65735546, "fuse"},      // fuse, fuseblk
    {0xf15f, "ecryptfs"},
    {0x9fa0, "proc"},
    {0x62656572, "sysfs"},
    {0x1cd1, "devpts"},
    {0x27e0eb, "cgroup"},
    {0x63677270, "cgroup2"},
    {0x64626720, "debugfs"},
    {0x74726163, "tracefs"},
    {0x73636673, "securityfs"},
    {0x6165676C, "pstore"},
    {0xde5e81e4, "efivarfs"},
    {0x42494e4d, "binfmt_misc"},
    {0xcafe4a11, "bpf"},
    {0x958458f6, "hugetlbfs"},
    {0x19800202, "mqueue"},
    {0x6e736673, "nsfs"},
    {0x0187, "autofs"},
};

}  // namespace

std::string FileSystemNameForMagic(uint64_t magic) {
  // statfs's f_type is signed on some ABIs: compare the low 32 bits.
  const uint64_t low = magic & 0xFFFFFFFFu;
  for (const MagicName& m : kMagicNames)
    if (m.magic == low) return m.name;
  return "unknown";
}

}  // namespace nxfv
