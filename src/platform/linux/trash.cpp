#include "nxfv/platform/linux/trash.h"

#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cstring>

#include "nxfv/platform/free_name.h"

namespace nxfv {

namespace {

std::string Parent(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string BaseName(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string RealPath(const std::string& path) {
  char* r = realpath(path.c_str(), nullptr);
  if (r == nullptr) return {};
  std::string s(r);
  free(r);
  return s;
}

// mkdir -p, new folders with the given mode.
bool MakeFolders(const std::string& path, mode_t mode) {
  struct stat st {};
  if (stat(path.c_str(), &st) == 0) return S_ISDIR(st.st_mode);
  if (path.empty() || path == "/") return false;
  if (!MakeFolders(Parent(path), 0700)) return false;
  return mkdir(path.c_str(), mode) == 0 || errno == EEXIST;
}

// A trash folder we may use: a real folder (not a link) that is ours.
bool OwnFolder(const std::string& path) {
  struct stat st {};
  if (lstat(path.c_str(), &st) != 0 && !(errno == ENOENT && mkdir(path.c_str(), 0700) == 0 && lstat(path.c_str(), &st) == 0))
    return false;
  return S_ISDIR(st.st_mode) && st.st_uid == geteuid();
}

std::string DeletionDate() {
  const time_t now = time(nullptr);
  tm local{};
  localtime_r(&now, &local);
  char buf[32];
  strftime(buf, sizeof buf, "%Y-%m-%dT%H:%M:%S", &local);
  return buf;
}

bool WriteAll(int fd, const std::string& text) {
  for (size_t off = 0; off < text.size();) {
    const ssize_t n = write(fd, text.data() + off, text.size() - off);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    off += static_cast<size_t>(n);
  }
  return true;
}

}  // namespace

std::string HomeTrashPath() {
  if (const char* data = getenv("XDG_DATA_HOME"); data != nullptr && data[0] == '/') return std::string(data) + "/Trash";
  const char* home = getenv("HOME");
  return std::string(home != nullptr ? home : "") + "/.local/share/Trash";
}

std::string EncodeTrashPath(const std::string& raw) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(raw.size());
  for (const char ch : raw) {
    const auto c = static_cast<unsigned char>(ch);
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || std::strchr("-._~/", c) != nullptr) {
      out += static_cast<char>(c);
    } else {
      out += '%';
      out += kHex[c >> 4];
      out += kHex[c & 15];
    }
  }
  return out;
}

std::string DecodeTrashPath(const std::string& text) {
  auto hex = [](char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
  };
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && hex(text[i + 1]) >= 0 && hex(text[i + 2]) >= 0) {
      out += static_cast<char>(hex(text[i + 1]) * 16 + hex(text[i + 2]));
      i += 2;
    } else {
      out += text[i];
    }
  }
  return out;
}

Trash::~Trash() {
  for (const Can& c : cans_) {
    if (c.files >= 0) close(c.files);
    if (c.info >= 0) close(c.info);
  }
}

const Trash::Can* Trash::CanFor(dev_t dev, const std::string& rawPath, int& err, std::string& reason) {
  for (const Can& c : cans_)
    if (c.dev == dev) return &c;
  Can can;
  can.dev = dev;
  std::string dir = HomeTrashPath();
  struct stat st {};
  const bool home = MakeFolders(dir, 0700) && stat(dir.c_str(), &st) == 0 && st.st_dev == dev;
  if (!home) {
    // The top of the item's file system: the highest folder above it on the same device.
    std::string top = RealPath(Parent(rawPath));
    while (top != "/" && !top.empty()) {
      const std::string up = Parent(top);
      if (stat(up.c_str(), &st) != 0 || st.st_dev != dev) break;
      top = up;
    }
    if (top.empty() || stat(top.c_str(), &st) != 0 || st.st_dev != dev) {
      err = EXDEV;
      reason = "its file system has no trash";
      return nullptr;
    }
    can.topdir = top;
    const std::string base = top == "/" ? "" : top;
    const std::string shared = base + "/.Trash";
    const uid_t uid = geteuid();
    // The administrator's shared trash counts only when it is safe: a real
    // folder with the sticky bit, so users cannot remove each other's.
    if (lstat(shared.c_str(), &st) == 0 && S_ISDIR(st.st_mode) && (st.st_mode & S_ISVTX) != 0 &&
        OwnFolder(shared + "/" + std::to_string(uid))) {
      dir = shared + "/" + std::to_string(uid);
    } else {
      dir = base + "/.Trash-" + std::to_string(uid);
      if (!OwnFolder(dir)) {
        err = errno != 0 ? errno : EPERM;
        reason = "its file system has no usable trash (" + dir + ")";
        return nullptr;
      }
    }
  }
  mkdir((dir + "/files").c_str(), 0700);
  mkdir((dir + "/info").c_str(), 0700);
  can.files = open((dir + "/files").c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  can.info = open((dir + "/info").c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (can.files < 0 || can.info < 0) {
    err = errno;
    reason = std::strerror(err);
    if (can.files >= 0) close(can.files);
    if (can.info >= 0) close(can.info);
    return nullptr;
  }
  cans_.push_back(can);
  return &cans_.back();
}

int Trash::Put(const std::string& rawPath, std::string& reason) {
  struct stat st {};
  if (lstat(rawPath.c_str(), &st) != 0) {
    reason = std::strerror(errno);
    return errno;
  }
  int err = 0;
  const Can* can = CanFor(st.st_dev, rawPath, err, reason);
  if (can == nullptr) return err;
  std::string original = rawPath;
  if (!can->topdir.empty()) {
    original = RealPath(Parent(rawPath)) + "/" + BaseName(rawPath);
    original.erase(0, can->topdir == "/" ? 1 : can->topdir.size() + 1);
  }
  const std::string info = "[Trash Info]\nPath=" + EncodeTrashPath(original) + "\nDeletionDate=" + DeletionDate() + "\n";
  std::string base = BaseName(rawPath);
  if (base.size() > NAME_MAX - 20) base.resize(NAME_MAX - 20);  // room for " (N)" and ".trashinfo"
  for (uint32_t n = 1; n < 100000; ++n) {
    const std::string name = n == 1 ? base : NumberedName(base, S_ISDIR(st.st_mode), n);
    const std::string infoName = name + ".trashinfo";
    const int fd = openat(can->info, infoName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (fd < 0 && errno == EEXIST) continue;
    if (fd < 0) {
      err = errno;
      reason = std::strerror(err);
      return err;
    }
    const bool written = WriteAll(fd, info);
    err = written ? 0 : errno;
    if (close(fd) != 0 && err == 0) err = errno;
    if (err == 0) {
      if (renameat2(AT_FDCWD, rawPath.c_str(), can->files, name.c_str(), RENAME_NOREPLACE) == 0) return 0;
      err = errno;
      if (err == EINVAL) {  // a file system without RENAME_NOREPLACE: look first
        struct stat there {};
        if (fstatat(can->files, name.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0) {
          err = EEXIST;
        } else if (renameat(AT_FDCWD, rawPath.c_str(), can->files, name.c_str()) == 0) {
          return 0;
        } else {
          err = errno;
        }
      }
    }
    unlinkat(can->info, infoName.c_str(), 0);
    if (err == EEXIST) continue;
    reason = std::strerror(err);
    return err;
  }
  reason = "no free name in the trash";
  return EEXIST;
}

int RestoreFromTrash(const std::string& trashDir, const std::string& name) {
  const std::string infoPath = trashDir + "/info/" + name + ".trashinfo";
  FILE* f = fopen(infoPath.c_str(), "re");
  if (f == nullptr) return errno;
  std::string text;
  char buf[4096];
  for (size_t n; (n = fread(buf, 1, sizeof buf, f)) > 0;) text.append(buf, n);
  fclose(f);
  const size_t key = text.find("\nPath=");
  if (key == std::string::npos) return EINVAL;
  const size_t start = key + 6;
  std::string path = DecodeTrashPath(text.substr(start, text.find('\n', start) - start));
  if (path.empty()) return EINVAL;
  if (path[0] != '/') {
    // $topdir/.Trash-$UID or $topdir/.Trash/$UID
    std::string top = Parent(trashDir);
    if (BaseName(top) == ".Trash") top = Parent(top);
    path = (top == "/" ? "" : top) + "/" + path;
  }
  const std::string from = trashDir + "/files/" + name;
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, path.c_str(), RENAME_NOREPLACE) != 0) return errno;
  unlink(infoPath.c_str());
  return 0;
}

}  // namespace nxfv
