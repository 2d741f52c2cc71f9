#include "nxfv/platform/linux/linux_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string_view>
#include <thread>
#include <vector>

#include "nxfv/platform/linux/file_attributes.h"
#include "nxfv/platform/linux/file_name_escape.h"
#include "nxfv/platform/linux/hidden_names.h"
#include "nxfv/platform/linux/volume_names.h"

namespace nxfv {
namespace {

constexpr unsigned kStatxMask = STATX_TYPE | STATX_MODE | STATX_SIZE | STATX_ATIME | STATX_MTIME | STATX_BTIME;
constexpr size_t kDirentBufferBytes = 64 * 1024;

class Fd {
 public:
  explicit Fd(int fd) : fd_(fd) {}
  ~Fd() {
    if (fd_ >= 0) close(fd_);
  }
  Fd(const Fd&) = delete;
  Fd& operator=(const Fd&) = delete;
  int get() const { return fd_; }

 private:
  int fd_;
};

// Opens a folder named as the platform names it (escaped bytes undone).
Fd OpenFolder(const std::string& folder) {
  return Fd(open(UnescapeFileName(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOCTTY));
}

// One buffer of folder entries; retried when a signal interrupts the call.
ssize_t ReadDirents(int dirFd, char* buffer) {
  ssize_t n;
  do n = getdents64(dirFd, buffer, kDirentBufferBytes);
  while (n < 0 && errno == EINTR);
  return n;
}

uint64_t FileTime(const struct statx_timestamp& t) { return UnixTimeToFileTime(t.tv_sec, t.tv_nsec); }

// The find-data fields that come from statx (everything but the name).
void FillFromStatx(const struct statx& sx, bool linkToFolder, bool hidden, FindData& out) {
  EntryFacts facts;
  facts.mode = sx.stx_mode;
  facts.linkToFolder = linkToFolder;
  facts.hidden = hidden;
  facts.compressed = (sx.stx_attributes_mask & sx.stx_attributes & STATX_ATTR_COMPRESSED) != 0;
  out.attributes = MapAttributes(facts);
  out.lastWriteTime = FileTime(sx.stx_mtime);
  out.lastAccessTime = FileTime(sx.stx_atime);
  out.creationTime = (sx.stx_mask & STATX_BTIME) != 0 ? FileTime(sx.stx_btime) : out.lastWriteTime;
  out.sizeHigh = static_cast<uint32_t>(sx.stx_size >> 32);
  out.sizeLow = static_cast<uint32_t>(sx.stx_size & 0xFFFFFFFFu);
}

bool LinkPointsToFolder(int dirFd, const char* name) {
  struct statx target {};
  return statx(dirFd, name, AT_NO_AUTOMOUNT, STATX_TYPE, &target) == 0 && S_ISDIR(target.stx_mode);
}

uint32_t ModeFromDirentType(unsigned char type) {
  // Permission bits unknown: claim owner read/write so the entry does not
  // show as read-only by accident.
  return type == DT_UNKNOWN ? 0 : (DTTOIF(type) | S_IRUSR | S_IWUSR);
}

// Examines one entry of the open folder dirFd. False when it vanished.
bool ExamineEntry(int dirFd, const char* name, unsigned char direntType, const HiddenNames& hidden, FindData& out) {
  struct statx sx {};
  const bool isHidden = hidden.Contains(name);
  if (statx(dirFd, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, kStatxMask, &sx) != 0) {
    if (errno == ENOENT) return false;
    EntryFacts facts;
    facts.mode = ModeFromDirentType(direntType);
    facts.hidden = isHidden;
    facts.linkToFolder = direntType == DT_LNK && LinkPointsToFolder(dirFd, name);
    out.attributes = MapAttributes(facts);
    out.creationTime = out.lastAccessTime = out.lastWriteTime = 0;
    out.sizeHigh = out.sizeLow = 0;
    return true;
  }
  const bool linkToFolder = S_ISLNK(sx.stx_mode) && LinkPointsToFolder(dirFd, name);
  FillFromStatx(sx, linkToFolder, isHidden, out);
  return true;
}

// Raw path without trailing slashes ("/" stays "/").
std::string RawPathNoTrailingSlash(const std::string& path) {
  std::string raw = UnescapeFileName(path);
  while (raw.size() > 1 && raw.back() == '/') raw.pop_back();
  return raw;
}

class LinuxRandomAccessFile : public RandomAccessFile {
 public:
  LinuxRandomAccessFile(int fd, uint64_t size) : fd_(fd), size_(size) {}
  ~LinuxRandomAccessFile() override { close(fd_); }
  LinuxRandomAccessFile(const LinuxRandomAccessFile&) = delete;
  LinuxRandomAccessFile& operator=(const LinuxRandomAccessFile&) = delete;

  uint64_t Size() override { return size_; }

  size_t ReadAt(uint64_t offset, void* buffer, size_t n) override {
    constexpr auto kMaxOffset = static_cast<uint64_t>(std::numeric_limits<off_t>::max());
    auto* out = static_cast<char*>(buffer);
    size_t done = 0;
    while (done < n) {
      if (offset > kMaxOffset || done > kMaxOffset - offset) break;
      const ssize_t got = pread(fd_, out + done, n - done, static_cast<off_t>(offset + done));
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) break;
      done += static_cast<size_t>(got);
    }
    return done;
  }

 private:
  int fd_;
  uint64_t size_;
};

bool WriteAll(int fd, const std::string& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    done += static_cast<size_t>(n);
  }
  return true;
}

}  // namespace

namespace {

// Entries examined by the reading thread, handed over in batches.
using EntryBatch = std::vector<FindData>;
constexpr size_t kBatchEntries = 2048;
constexpr size_t kQueuedBatches = 4;

// A bounded hand-over between the thread that reads the folder and the
// caller's thread that visits the entries: the kernel's share of a large
// listing (getdents64 and one statx per entry) runs while the caller builds
// its rows, and at most kQueuedBatches batches wait in memory.
class BatchQueue {
 public:
  // Producer side. Returns false once the consumer has stopped.
  bool Push(EntryBatch batch) {
    std::unique_lock lock(mutex_);
    space_.wait(lock, [&] { return queue_.size() < kQueuedBatches || stopped_; });
    if (stopped_) return false;
    queue_.push_back(std::move(batch));
    ready_.notify_one();
    return true;
  }
  void Finish(bool ok) {
    std::lock_guard lock(mutex_);
    finished_ = true;
    ok_ = ok;
    ready_.notify_one();
  }
  // Consumer side. False when everything was handed over.
  bool Pop(EntryBatch& batch) {
    std::unique_lock lock(mutex_);
    ready_.wait(lock, [&] { return !queue_.empty() || finished_; });
    if (queue_.empty()) return false;
    batch = std::move(queue_.front());
    queue_.pop_front();
    space_.notify_one();
    return true;
  }
  void Stop() {
    std::lock_guard lock(mutex_);
    stopped_ = true;
    space_.notify_one();
  }
  bool Ok() {
    std::lock_guard lock(mutex_);
    return ok_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable ready_, space_;
  std::deque<EntryBatch> queue_;
  bool finished_ = false, stopped_ = false, ok_ = true;
};

bool IsDotOrDotDot(const char* name) {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

// Examines every entry of one getdents64 buffer into batch (reusing its
// records' string capacity).
void ExamineBuffer(int dirFd, const char* buffer, size_t bytes, const HiddenNames& hidden, EntryBatch& batch,
                   size_t& used) {
  for (size_t offset = 0; offset < bytes;) {
    const auto* d = reinterpret_cast<const struct dirent64*>(buffer + offset);
    offset += d->d_reclen;
    if (IsDotOrDotDot(d->d_name)) continue;
    if (used == batch.size()) batch.emplace_back();
    FindData& entry = batch[used];
    if (!ExamineEntry(dirFd, d->d_name, d->d_type, hidden, entry)) continue;
    EscapeFileNameInto(std::string_view(d->d_name), entry.name);
    ++used;
  }
}

}  // namespace

bool LinuxFileSystem::Enumerate(const std::string& folder, const Visitor& visit) {
  const Fd dir = OpenFolder(folder);
  if (dir.get() < 0) return false;

  HiddenNames hidden;
  hidden.LoadAt(dir.get());

  auto buffer = std::make_unique_for_overwrite<char[]>(kDirentBufferBytes);
  auto readSome = [&](ssize_t& n) { n = ReadDirents(dir.get(), buffer.get()); };

  // The first buffer is read and visited here: small folders never start a
  // thread.
  ssize_t n = 0;
  readSome(n);
  if (n < 0) return false;
  if (n == 0) return true;
  {
    EntryBatch first;
    size_t used = 0;
    ExamineBuffer(dir.get(), buffer.get(), static_cast<size_t>(n), hidden, first, used);
    for (size_t i = 0; i < used; ++i)
      if (!visit(first[i])) return true;
  }

  // Larger folders: the rest is read by a helper thread while the entries
  // are visited here, on the caller's thread, in the same order.
  BatchQueue queue;
  std::thread reader([&] {
    bool ok = true;
    EntryBatch batch;
    size_t used = 0;
    for (;;) {
      ssize_t got = 0;
      readSome(got);
      if (got <= 0) {
        ok = got == 0;
        break;
      }
      ExamineBuffer(dir.get(), buffer.get(), static_cast<size_t>(got), hidden, batch, used);
      if (used >= kBatchEntries) {
        batch.resize(used);
        if (!queue.Push(std::move(batch))) break;
        batch = EntryBatch();
        batch.reserve(kBatchEntries + 512);
        used = 0;
      }
    }
    if (used > 0) {
      batch.resize(used);
      queue.Push(std::move(batch));
    }
    queue.Finish(ok);
  });
  struct Joiner {
    BatchQueue& queue;
    std::thread& thread;
    ~Joiner() {
      queue.Stop();
      thread.join();
    }
  } joiner{queue, reader};

  EntryBatch batch;
  while (queue.Pop(batch))
    for (const FindData& entry : batch)
      if (!visit(entry)) return true;
  // A read error after the first buffer still counts as a listing: what
  // was read is shown, as before.
  return true;
}

bool LinuxFileSystem::EnumerateNames(const std::string& folder, const Visitor& visit) {
  const Fd dir = OpenFolder(folder);
  if (dir.get() < 0) return false;
  HiddenNames hidden;
  hidden.LoadAt(dir.get());
  auto buffer = std::make_unique_for_overwrite<char[]>(kDirentBufferBytes);
  FindData entry;
  for (;;) {
    const ssize_t n = ReadDirents(dir.get(), buffer.get());
    if (n <= 0) return n == 0;
    for (size_t offset = 0; offset < static_cast<size_t>(n);) {
      const auto* d = reinterpret_cast<const struct dirent64*>(buffer.get() + offset);
      offset += d->d_reclen;
      if (IsDotOrDotDot(d->d_name)) continue;
      if (d->d_type == DT_LNK || d->d_type == DT_UNKNOWN) {
        if (!ExamineEntry(dir.get(), d->d_name, d->d_type, hidden, entry)) continue;
      } else {
        EntryFacts facts;
        facts.mode = ModeFromDirentType(d->d_type);
        facts.hidden = hidden.Contains(d->d_name);
        entry.attributes = MapAttributes(facts);
      }
      EscapeFileNameInto(std::string_view(d->d_name), entry.name);
      if (!visit(entry)) return true;
    }
  }
}

void LinuxFileSystem::FindEntries(const std::string& folder, const std::vector<std::string>& names,
                                  const Visitor& visit) {
  if (names.empty()) return;
  const Fd dir = OpenFolder(folder);
  if (dir.get() < 0) return;
  HiddenNames hidden;
  hidden.LoadAt(dir.get());
  FindData entry;
  for (const std::string& name : names) {
    const std::string raw = UnescapeFileName(name);
    // A name, never a path: nothing outside the folder is looked at.
    if (raw.empty() || raw.find('/') != std::string::npos || IsDotOrDotDot(raw.c_str())) continue;
    if (!ExamineEntry(dir.get(), raw.c_str(), DT_UNKNOWN, hidden, entry)) continue;
    entry.name = name;
    if (!visit(entry)) return;
  }
}

bool LinuxFileSystem::GetAttributes(const std::string& path, uint32_t& attributes) {
  const std::string raw = RawPathNoTrailingSlash(path);
  if (raw.empty()) return false;
  struct statx sx {};
  if (statx(AT_FDCWD, raw.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, kStatxMask, &sx) != 0) return false;

  // The parent folder's .hidden decides the hidden bit, as in a listing.
  const size_t slash = raw.rfind('/');
  const std::string parent = slash == std::string::npos ? "." : slash == 0 ? "/" : raw.substr(0, slash);
  const std::string base = slash == std::string::npos ? raw : raw.substr(slash + 1);
  bool isHidden = false;
  if (!base.empty() && raw != "/") {
    const Fd dir(open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOCTTY));
    if (dir.get() >= 0) {
      HiddenNames hidden;
      hidden.LoadAt(dir.get());
      isHidden = hidden.Contains(base);
    }
  }
  const bool linkToFolder = S_ISLNK(sx.stx_mode) && LinkPointsToFolder(AT_FDCWD, raw.c_str());
  FindData data;
  FillFromStatx(sx, linkToFolder, isHidden, data);
  attributes = data.attributes;
  return true;
}

std::string LinuxFileSystem::WhyNotReadable(const std::string& path, bool asFolder) {
  const std::string raw = RawPathNoTrailingSlash(path);
  const int flags = O_RDONLY | O_CLOEXEC | O_NOCTTY | (asFolder ? O_DIRECTORY : O_NONBLOCK);
  const Fd fd(open(raw.c_str(), flags));
  if (fd.get() < 0) {
    switch (errno) {
      case EACCES:
      case EPERM: return "permission denied";
      case ENOTDIR: return "not a folder";
      case EISDIR: return "is a folder";
      case ELOOP: return "too many levels of symbolic links";
      case ENAMETOOLONG: return "path too long";
      case ENOENT: return "no such file or folder";
      default: return std::strerror(errno);
    }
  }
  if (asFolder) return "";
  struct stat st {};
  if (fstat(fd.get(), &st) != 0) return std::strerror(errno);
  if (S_ISDIR(st.st_mode)) return "is a folder";
  return S_ISREG(st.st_mode) ? "" : "not a regular file";
}

bool LinuxFileSystem::VolumeFileSystemName(const std::string& root, std::string& name) {
  const std::string raw = UnescapeFileName(root);
  struct statfs info {};
  if (raw.empty() || statfs(raw.c_str(), &info) != 0) return false;
  name = FileSystemNameForMagic(static_cast<uint64_t>(info.f_type));
  return true;
}

bool LinuxFileSystem::VolumeInformation(const std::string& root, VolumeDetails& details) {
  const std::string raw = UnescapeFileName(root);
  struct statvfs space {};
  if (!VolumeFileSystemName(root, details.fileSystem) || statvfs(raw.c_str(), &space) != 0) return false;
  details.freeBytes = static_cast<uint64_t>(space.f_bavail) * space.f_frsize;
  details.totalBytes = static_cast<uint64_t>(space.f_blocks) * space.f_frsize;
  details.label.clear();
  for (const std::string_view media : {"/media/", "/run/media/"}) {
    if (root.compare(0, media.size(), media) != 0) continue;
    const size_t cut = root.find_last_of('/');
    // /media/LABEL and /media/USER/LABEL alike: the last name is the label.
    if (cut >= media.size() - 1 && cut + 1 < root.size()) details.label = root.substr(cut + 1);
  }
  return true;
}

std::string LinuxFileSystem::TempPath() {
  const char* dir = std::getenv("TMPDIR");
  std::string path = dir != nullptr && *dir != '\0' ? EscapeFileName(dir) : std::string("/tmp");
  if (path.back() != '/') path += '/';
  return path;
}

std::unique_ptr<RandomAccessFile> LinuxFileSystem::OpenForRead(const std::string& path) {
  const std::string raw = UnescapeFileName(path);
  // Non-blocking, so that a FIFO or a device under an archive's name is
  // refused at once instead of waiting for a writer for ever.
  const int fd = open(raw.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  if (fd < 0) return nullptr;
  struct stat st {};
  if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    close(fd);
    return nullptr;
  }
  return std::make_unique<LinuxRandomAccessFile>(fd, static_cast<uint64_t>(st.st_size));
}

bool LinuxFileSystem::WriteWholeFile(const std::string& path, const std::string& bytes) {
  const std::string raw = UnescapeFileName(path);
  const int fd = open(raw.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, 0666);
  if (fd < 0) return false;
  const bool wrote = WriteAll(fd, bytes);
  const bool closed = close(fd) == 0;
  return wrote && closed;
}

bool LinuxFileSystem::CreateFolder(const std::string& path) {
  const std::string raw = UnescapeFileName(path);
  return !raw.empty() && mkdir(raw.c_str(), 0777) == 0;
}

bool LinuxFileSystem::CreateLink(const std::string& target, const std::string& linkPath) {
  const std::string rawTarget = UnescapeFileName(target);
  const std::string rawLink = UnescapeFileName(linkPath);
  return !rawTarget.empty() && !rawLink.empty() && symlink(rawTarget.c_str(), rawLink.c_str()) == 0;
}

std::optional<std::string> LinuxFileSystem::ReadWholeFile(const std::string& path) {
  const std::string raw = UnescapeFileName(path);
  const Fd file(open(raw.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
  if (file.get() < 0) return std::nullopt;
  struct stat st {};
  if (fstat(file.get(), &st) != 0 || !S_ISREG(st.st_mode)) return std::nullopt;  // never a FIFO or device
  std::string bytes;
  if (st.st_size > 0) bytes.reserve(static_cast<size_t>(st.st_size));
  char chunk[64 * 1024];
  for (;;) {
    const ssize_t n = read(file.get(), chunk, sizeof chunk);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return std::nullopt;
    if (n == 0) return bytes;
    bytes.append(chunk, static_cast<size_t>(n));
  }
}

}  // namespace nxfv
