// The pure mapping rules of the Linux backend: attributes, file times,
// .hidden parsing, volume names, the mount table.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "nxfv/platform/linux/file_attributes.h"
#include "nxfv/platform/linux/hidden_names.h"
#include "nxfv/platform/linux/mount_table.h"
#include "nxfv/platform/linux/volume_names.h"
#include "nxfv/platform/services.h"

namespace nxfv {
namespace {

// The kinds a test folder cannot hold (devices, compression); the rest is
// checked on a real folder.
TEST(MapAttributes, KindsOutsideATestFolder) {
  struct Case { const char* what; EntryFacts facts; uint32_t expected; } cases[] = {
      {"compressed file", {S_IFREG | 0644, false, false, true}, kAttrCompressed},
      {"group-writable only", {S_IFREG | 0464}, kAttrReadOnly},
      {"character device", {S_IFCHR | 0666}, kAttrSystem},
      {"read-only block device", {S_IFBLK | 0440}, kAttrSystem | kAttrReadOnly},
      {"hidden read-only folder", {S_IFDIR | 0555, false, true}, kAttrDirectory | kAttrReadOnly | kAttrHidden},
  };
  for (const Case& c : cases) EXPECT_EQ(MapAttributes(c.facts), c.expected) << c.what;
}

TEST(UnixTimeToFileTime, ConvertsAtTheRangeEnds) {
  struct Case { int64_t seconds; uint32_t nanoseconds; uint64_t expected; } cases[] = {
      {0, 0, 116444736000000000ull},                    // 1970-01-01
      {0, 999, 116444736000000009ull},                  // nanoseconds / 100, truncated
      {-11644473600, 0, 0},                             // 1601-01-01 itself
      {INT64_MIN, 0, 0},                                // before 1601: clamped
      {INT64_MAX, 999999999, UINT64_MAX},               // past the range: clamped
  };
  for (const Case& c : cases)
    EXPECT_EQ(UnixTimeToFileTime(c.seconds, c.nanoseconds), c.expected) << c.seconds << "." << c.nanoseconds;
}

TEST(HiddenNames, ParsesOneRawNamePerLine) {
  HiddenNames hidden;
  EXPECT_FALSE(hidden.Contains("a"));
  hidden.Parse("secret\r\nnotes.txt\n\n caf\xE9 \nlast");
  for (const char* name : {"secret", "notes.txt", " caf\xE9 ", "last"}) EXPECT_TRUE(hidden.Contains(name)) << name;
  for (const char* name : {"", "Secret", "caf\xE9", "notes", "secret\r"}) EXPECT_FALSE(hidden.Contains(name)) << name;
  hidden.Parse("");
  EXPECT_TRUE(hidden.empty());
}

TEST(FileSystemNameForMagic, NamesTheCommonFileSystems) {
  struct Case { uint64_t magic; const char* name; } cases[] = {
      {0x4d44, "FAT"}, {0x2011BAB0, "FAT"},  // vfat/msdos and exfat alike
      {0xEF53, "ext4"}, {0x12345678, "unknown"},
      {0xFFFFFFFF9123683Eull, "btrfs"},  // f_type sign-extended
  };
  for (const Case& c : cases) EXPECT_EQ(FileSystemNameForMagic(c.magic), c.name) << std::hex << c.magic;
}

TEST(ParseMountPoints, DecodesEscapesAndDropsDuplicates) {
  const char* mounts =
      "proc /proc proc rw 0 0\n"
      "/dev/vda / ext4 rw 0 0\n"
      "tmpfs /dev/shm tmpfs rw 0 0\n"
      "/dev/sdb1 /media/My\\040Disk vfat rw 0 0\n"
      "/dev/sdb2 /media/tab\\011and\\134slash ext4 rw 0 0\n"
      "tmpfs /dev/shm tmpfs rw 0 0\n"
      "broken-line\n"
      "none relative tmpfs rw 0 0";
  const std::vector<std::string> expected = {"/proc", "/", "/dev/shm", "/media/My Disk", "/media/tab\tand\\slash"};
  EXPECT_EQ(ParseMountPoints(mounts), expected);
}

TEST(ParseUserVolumes, KeepsWhatAUserBrowses) {
  const char* mounts =
      "proc /proc proc rw 0 0\n"
      "sysfs /sys sysfs rw 0 0\n"
      "cgroup /sys/fs/cgroup/cpu cgroup rw 0 0\n"
      "overlay / overlay rw 0 0\n"
      "/dev/vda1 /home ext4 rw 0 0\n"
      "tmpfs /tmp tmpfs rw 0 0\n"
      "tmpfs /run/user/1000 tmpfs rw 0 0\n"
      "/dev/sdb1 /media/user/My\\040Stick vfat rw 0 0\n"
      "/dev/sdc1 /run/media/user/CARD exfat rw 0 0\n"
      "/dev/loop3 /snap/core/1 squashfs ro 0 0\n"
      "/dev/vda15 /boot/efi vfat rw 0 0\n"
      "server:/x /mnt/share nfs4 rw 0 0\n";
  const std::vector<std::string> expected = {"/", "/home", "/tmp", "/media/user/My Stick", "/run/media/user/CARD",
                                             "/mnt/share"};
  EXPECT_EQ(ParseUserVolumes(mounts), expected);
}

}  // namespace
}  // namespace nxfv
