// What the file-operation tests share: a host that records and answers, a
// tree fingerprint, a rich test tree and a tmpfs mount (root only).
#pragma once

#include <dirent.h>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "nxfv/platform/file_operation_service.h"
#include "nxfv/platform/linux/file_name_escape.h"
#include "temp_dir.h"

namespace nxfv::testing {

struct RecordingHost : FileOperationHost {
  bool answer = true;
  uint64_t cancelAtBytes = UINT64_MAX;  // Progress answers false from this many bytes on
  std::vector<FileOperationQuestion> asked;
  std::vector<std::string> failed;  // "PATH: REASON"
  int progressCalls = 0;
  FileOperationProgress last;

  bool Ask(FileOperationQuestion q, const std::string&) override {
    asked.push_back(q);
    return answer;
  }
  bool Progress(const FileOperationProgress& p) override {
    ++progressCalls;
    last = p;
    return p.bytesDone < cancelAtBytes;
  }
  void Failed(const std::string& path, const std::string& reason) override { failed.push_back(path + ": " + reason); }
};

// Whether anything (a dangling link too) is at path.
inline bool Exists(const std::string& path) {
  struct stat st {};
  return lstat(path.c_str(), &st) == 0;
}

inline uint64_t Fnv(const std::string& bytes) {
  uint64_t h = 14695981039346656037ull;
  for (const unsigned char c : bytes) h = (h ^ c) * 1099511628211ull;
  return h;
}

inline std::string ReadAll(const std::string& path) {
  std::string out;
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (fd < 0) return "<unreadable>";
  char buf[1 << 16];
  for (ssize_t n; (n = read(fd, buf, sizeof buf)) > 0;) out.append(buf, static_cast<size_t>(n));
  close(fd);
  return out;
}

// Every entry below root (links not followed) -> type, mode, owner,
// content hash or link target, and mtime to the nanosecond.
inline void Fingerprint(const std::string& root, const std::string& rel, std::map<std::string, std::string>& out) {
  struct stat st {};
  const std::string path = rel.empty() ? root : root + "/" + rel;
  if (lstat(path.c_str(), &st) != 0) return;
  std::string e = std::to_string(st.st_mode) + " " + std::to_string(st.st_uid) + ":" + std::to_string(st.st_gid);
  if (S_ISREG(st.st_mode)) e += " " + std::to_string(st.st_size) + " #" + std::to_string(Fnv(ReadAll(path)));
  if (S_ISLNK(st.st_mode)) {
    char target[4096];
    const ssize_t n = readlink(path.c_str(), target, sizeof target);
    e += " -> " + std::string(target, n > 0 ? static_cast<size_t>(n) : 0);
  } else {
    e += " @" + std::to_string(st.st_mtim.tv_sec) + "." + std::to_string(st.st_mtim.tv_nsec);
  }
  out[rel.empty() ? "." : rel] = e;
  if (!S_ISDIR(st.st_mode)) return;
  DIR* d = opendir(path.c_str());
  std::vector<std::string> names;
  while (const dirent* de = d ? readdir(d) : nullptr)
    if (std::string(de->d_name) != "." && std::string(de->d_name) != "..") names.emplace_back(de->d_name);
  if (d) closedir(d);
  for (const std::string& n : names) Fingerprint(root, rel.empty() ? n : rel + "/" + n, out);
}

inline std::map<std::string, std::string> Fingerprint(const std::string& root) {
  std::map<std::string, std::string> out;
  Fingerprint(root, "", out);
  return out;
}

// Entries whose name shows a copy's temporary (".NAME.nxfv-XXXXXX").
inline std::vector<std::string> Temporaries(const std::string& root) {
  std::vector<std::string> found;
  for (const auto& [rel, e] : Fingerprint(root))
    if (rel.find(".nxfv-") != std::string::npos) found.push_back(rel);
  return found;
}

inline std::string Bytes(size_t n, uint32_t seed) {
  std::string s(n, '\0');
  uint64_t x = 0x9E3779B97F4A7C15ull ^ seed;
  for (char& c : s) {
    x ^= x << 13, x ^= x >> 7, x ^= x << 17;
    c = static_cast<char>(x);
  }
  return s;
}

inline void SetMtime(const std::string& path, long nsec) {
  const timespec t[2] = {{1600000000, 5}, {1600000000 + nsec % 1000, nsec}};
  utimensat(AT_FDCWD, path.c_str(), t, AT_SYMLINK_NOFOLLOW);
}

// dir/tree: a large file, small ones, odd names (line break, bytes that are
// not UTF-8, leading dash), an empty folder, a nested folder, a link out of
// the tree, a dangling and a relative link, a FIFO, odd modes and times.
inline void MakeRichTree(const TempDir& dir, size_t largeBytes = size_t{20} << 20) {
  const std::string t = "tree";
  dir.MakeDir(t);
  dir.MakeDir(t + "/empty");
  dir.MakeDir(t + "/sub");
  dir.MakeDir(t + "/sub/deeper", 0750);
  dir.MakeDir("outside");
  dir.WriteFile("outside/keep.txt", "outside");
  dir.WriteFile(t + "/large.bin", Bytes(largeBytes, 1));
  dir.WriteFile(t + "/small.txt", "small", 0640);
  dir.WriteFile(t + "/run.sh", "#!/bin/sh\n", 0755);
  dir.WriteFile(t + "/sub/new\nline.txt", "nl");
  dir.WriteFile(t + "/sub/\xff\xfe raw.bin", Bytes(5000, 2));
  dir.WriteFile(t + "/sub/deeper/-dash", "");
  symlink((dir / "outside").c_str(), (dir / (t + "/out-link")).c_str());
  symlink("/nonexistent/nxfv-dangling", (dir / (t + "/dangling")).c_str());
  symlink("../small.txt", (dir / (t + "/sub/rel-link")).c_str());
  mkfifo((dir / (t + "/fifo")).c_str(), 0600);
  long ns = 123456789;
  for (const char* p : {"large.bin", "small.txt", "sub/deeper/-dash", "sub/deeper", "sub", "empty", ""})
    SetMtime(dir / (t + (*p ? "/" : "") + p), ns += 1111);
}

// A tmpfs at dir/name for the test's life; ok() is false unless running as
// root where mounting works.
class TmpfsMount {
 public:
  TmpfsMount(const TempDir& dir, const std::string& name, const std::string& options) : path_(dir / name) {
    mkdir(path_.c_str(), 0755);
    ok_ = geteuid() == 0 && mount("tmpfs", path_.c_str(), "tmpfs", 0, options.c_str()) == 0;
  }
  ~TmpfsMount() {
    if (ok_) umount2(path_.c_str(), MNT_DETACH);
  }
  TmpfsMount(const TmpfsMount&) = delete;
  TmpfsMount& operator=(const TmpfsMount&) = delete;
  bool ok() const { return ok_; }
  bool ReadOnly() const { return mount("tmpfs", path_.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0; }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  bool ok_ = false;
};

}  // namespace nxfv::testing
