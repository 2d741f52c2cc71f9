#include "nxfv/platform/linux/file_copy.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <ftw.h>
#include <linux/fs.h>
#include <stdio.h>
#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <time.h>
#include <unistd.h>

#include <cstdint>
#include <vector>

#include "nxfv/platform/linux/file_op_context.h"
#include "nxfv/platform/linux/tree_delete.h"

namespace nxfv {

namespace {

constexpr const char* kVerb = "copy";
// The unit of a large file's progress, and so how soon a cancel is seen.
constexpr size_t kChunk = size_t{8} << 20;
// Room for ".", ".nxfv-XXXXXX" and the name within NAME_MAX.
constexpr size_t kTempNameKeep = 200;

uint64_t NextRandom() {
  thread_local uint64_t state = 0;
  if (state == 0) {
    timespec ts{};
    clock_gettime(CLOCK_REALTIME, &ts);
    state = (static_cast<uint64_t>(ts.tv_nsec) << 20) ^ static_cast<uint64_t>(getpid()) ^ 0x9E3779B97F4A7C15ull;
  }
  state ^= state << 13;
  state ^= state >> 7;
  state ^= state << 17;
  return state;
}

std::string TempName(const std::string& name) {
  static constexpr char kDigits[] = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::string t = ".";
  t.append(name, 0, kTempNameKeep);
  t += ".nxfv-";
  uint64_t r = NextRandom();
  for (int i = 0; i < 6; ++i, r /= 36) t += kDigits[r % 36];
  return t;
}

// Calls make(tempName) with fresh names until it does not fail with EEXIST;
// returns its result (>= 0 on success) with the name in temp.
template <typename Make>
int WithTempName(const std::string& name, std::string& temp, Make make) {
  for (int attempt = 0; attempt < 100; ++attempt) {
    temp = TempName(name);
    const int r = make(temp.c_str());
    if (r >= 0 || errno != EEXIST) return r;
  }
  return -1;
}

bool IsRoot() { return geteuid() == 0; }

// Moves the finished temporary to its name. Without replace, an existing
// target is never touched: kTargetExists at the top, a reported EEXIST below.
int Place(int dstDir, const std::string& temp, const std::string& name, const std::string& dstRaw,
          Existing existing, bool top, FileOpContext& ctx) {
  int err = 0;
  if (existing == Existing::Replace) {
    if (renameat(dstDir, temp.c_str(), dstDir, name.c_str()) == 0) return 0;
    err = errno;
  } else {
    if (!ctx.noReplaceUnsupported) {
      if (renameat2(dstDir, temp.c_str(), dstDir, name.c_str(), RENAME_NOREPLACE) == 0) return 0;
      err = errno;
      if (err == EINVAL) ctx.noReplaceUnsupported = true;
    }
    if (ctx.noReplaceUnsupported) {
      // A hard link fails on an existing name as atomically as the rename would.
      if (linkat(dstDir, temp.c_str(), dstDir, name.c_str(), 0) == 0) {
        unlinkat(dstDir, temp.c_str(), 0);
        return 0;
      }
      err = errno;
      if (err != EEXIST) {
        // No hard links either (FAT and the like): look, then rename. The
        // window between the two is the one race left on such systems.
        struct stat st {};
        if (fstatat(dstDir, name.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0) {
          err = EEXIST;
        } else if (renameat(dstDir, temp.c_str(), dstDir, name.c_str()) == 0) {
          return 0;
        } else {
          err = errno;
        }
      }
    }
    if (err == EEXIST && top) return kTargetExists;
  }
  if (err == EISDIR || err == ENOTEMPTY || err == EEXIST)
    ctx.Fail(kVerb, dstRaw, "a folder or file of that name is in the way", err);
  else
    ctx.Fail(kVerb, dstRaw, err);
  return err;
}

bool Fallback(int err) { return err == EXDEV || err == ENOSYS || err == EOPNOTSUPP || err == EINVAL || err == ENOTTY; }

// Copies the data; returns 0, ECANCELED, or a reported errno. copied counts
// what was written (and added to the progress).
int CopyData(int in, int out, const struct stat& st, dev_t dstDev, const std::string& srcRaw, uint64_t& copied,
             FileOpContext& ctx) {
  const FileOpContext::DevicePair pair{st.st_dev, dstDev};
  if (st.st_size > 0 && !(ctx.noClone == pair)) {
    if (ioctl(out, FICLONE, in) == 0) {
      struct stat now {};
      if (fstat(out, &now) == 0) {
        copied = static_cast<uint64_t>(now.st_size);
        return ctx.BytesDone(copied, copied >= kChunk) ? 0 : ECANCELED;
      }
    }
    if (Fallback(errno) || errno == EBADF) ctx.noClone = pair;
  }
  if (st.st_size >= static_cast<off_t>(kChunk)) posix_fadvise(in, 0, 0, POSIX_FADV_SEQUENTIAL);
  // In-kernel copies first: copy_file_range (one file system, or kinds that
  // allow it), then sendfile, which copies page cache to page cache across
  // file systems without the trip through a user buffer. A strategy that
  // fails before its first byte is not tried again for the same devices.
  enum Outcome { kDone, kTryNext, kFailed };
  auto kernelCopy = [&](auto copyChunk, FileOpContext::DevicePair& unsupported, int& err) {
    if (unsupported == pair) return kTryNext;
    for (;;) {
      const ssize_t n = copyChunk();
      if (n > 0) {
        copied += static_cast<uint64_t>(n);
        if (!ctx.BytesDone(static_cast<uint64_t>(n), copied >= kChunk)) {
          err = ECANCELED;
          return kFailed;
        }
        continue;
      }
      // Files whose size the kernel makes up (/proc, /sys) read as empty here.
      if (n == 0) return copied == 0 && st.st_size > 0 ? kTryNext : kDone;
      if (errno == EINTR) continue;
      if (copied == 0 && Fallback(errno)) {
        unsupported = pair;
        return kTryNext;
      }
      err = errno;
      ctx.Fail(kVerb, srcRaw, err);
      return kFailed;
    }
  };
  int err = 0;
  Outcome outcome = kernelCopy([&] { return copy_file_range(in, nullptr, out, nullptr, kChunk, 0); },
                               ctx.noCopyRange, err);
  if (outcome == kTryNext) outcome = kernelCopy([&] { return sendfile(out, in, nullptr, kChunk); }, ctx.noSendfile, err);
  if (outcome == kDone) return 0;
  if (outcome == kFailed) return err;
  std::vector<char>& buf = ctx.Buffer();
  uint64_t sinceReport = 0;
  for (;;) {
    ssize_t n = read(in, buf.data(), buf.size());
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      const int err = errno;
      ctx.Fail(kVerb, srcRaw, err);
      return err;
    }
    if (n == 0) return 0;
    for (ssize_t off = 0; off < n;) {
      const ssize_t w = write(out, buf.data() + off, static_cast<size_t>(n - off));
      if (w < 0 && errno == EINTR) continue;
      if (w <= 0) {
        const int err = w < 0 ? errno : EIO;
        ctx.Fail(kVerb, srcRaw, err);
        return err;
      }
      off += w;
    }
    copied += static_cast<uint64_t>(n);
    sinceReport += static_cast<uint64_t>(n);
    const bool report = sinceReport >= kChunk;
    if (report) sinceReport = 0;
    if (!ctx.BytesDone(static_cast<uint64_t>(n), report)) return ECANCELED;
  }
}

bool Same(const timespec& a, const timespec& b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; }

int CopyRegular(int in, const struct stat& st, int dstDir, dev_t dstDev, const std::string& name,
                const std::string& srcRaw, const std::string& dstRaw, Existing existing, bool top, CopyJob& job) {
  FileOpContext& ctx = job.ctx;
  std::string temp;
  ScopedFd out(WithTempName(name, temp, [&](const char* t) {
    return openat(dstDir, t, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
  }));
  if (out.fd < 0) {
    const int err = errno;
    ctx.Fail(kVerb, srcRaw, err);
    return err;
  }
  uint64_t copied = 0;
  int r = CopyData(in, out.fd, st, dstDev, srcRaw, copied, ctx);
  if (r == 0 && job.copied != nullptr) {
    // A move deletes the source afterwards: what was copied must be all of
    // it, and the source must not have changed meanwhile.
    struct stat after {};
    struct stat written {};
    if (fstat(in, &after) != 0 || fstat(out.fd, &written) != 0 || after.st_size != st.st_size ||
        !Same(after.st_mtim, st.st_mtim) || written.st_size != st.st_size ||
        copied != static_cast<uint64_t>(st.st_size)) {
      ctx.Fail(kVerb, srcRaw, "it changed while it was being copied", EAGAIN);
      r = EAGAIN;
    }
  }
  if (r == 0) {
    if (IsRoot() && fchown(out.fd, st.st_uid, st.st_gid) != 0 && errno != EPERM) r = errno;
    if (r == 0 && fchmod(out.fd, st.st_mode & 07777) != 0) r = errno;
    const timespec times[2] = {st.st_atim, st.st_mtim};
    if (r == 0 && futimens(out.fd, times) != 0) r = errno;
    if (r != 0) ctx.Fail(kVerb, dstRaw, r);
  }
  if (close(out.release()) != 0 && r == 0) {  // a network file system may tell only now
    r = errno;
    ctx.Fail(kVerb, srcRaw, r);
  }
  if (r == 0) r = Place(dstDir, temp, name, dstRaw, existing, top, ctx);
  if (r != 0) {
    unlinkat(dstDir, temp.c_str(), 0);
    ctx.BytesUndone(copied);
    return r;
  }
  if (job.copied != nullptr) job.copied->Add(st.st_dev, st.st_ino, st.st_size, st.st_mtim);
  ctx.FileDone();
  return 0;
}

// A link or a special file: made under a temporary name, then placed.
int CopyNode(int srcDir, const char* srcName, const struct stat& st, int dstDir, const std::string& name,
             const std::string& srcRaw, const std::string& dstRaw, Existing existing, bool top, CopyJob& job) {
  FileOpContext& ctx = job.ctx;
  std::string temp;
  int made = -1;
  if (S_ISLNK(st.st_mode)) {
    std::vector<char> target(static_cast<size_t>(st.st_size) + 2);
    for (;;) {
      const ssize_t n = readlinkat(srcDir, srcName, target.data(), target.size());
      if (n < 0) {
        const int err = errno;
        ctx.Fail(kVerb, srcRaw, err);
        return err;
      }
      if (static_cast<size_t>(n) < target.size()) {
        target[static_cast<size_t>(n)] = '\0';
        break;
      }
      target.resize(target.size() * 2);  // it grew since the stat
    }
    made = WithTempName(name, temp, [&](const char* t) { return symlinkat(target.data(), dstDir, t); });
  } else {
    made = WithTempName(name, temp, [&](const char* t) { return mknodat(dstDir, t, st.st_mode & (S_IFMT | 07777), st.st_rdev); });
  }
  if (made != 0) {
    const int err = errno;
    ctx.Fail(kVerb, srcRaw, err);
    return err;
  }
  int r = 0;
  if (IsRoot() && fchownat(dstDir, temp.c_str(), st.st_uid, st.st_gid, AT_SYMLINK_NOFOLLOW) != 0 && errno != EPERM)
    r = errno;
  // mknod applied the umask; a link has no mode of its own.
  if (r == 0 && !S_ISLNK(st.st_mode) && fchmodat(dstDir, temp.c_str(), st.st_mode & 07777, 0) != 0) r = errno;
  const timespec times[2] = {st.st_atim, st.st_mtim};
  if (r == 0 && utimensat(dstDir, temp.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0) r = errno;
  if (r != 0) ctx.Fail(kVerb, dstRaw, r);
  if (r == 0) r = Place(dstDir, temp, name, dstRaw, existing, top, ctx);
  if (r != 0) {
    unlinkat(dstDir, temp.c_str(), 0);
    return r;
  }
  if (job.copied != nullptr) job.copied->Add(st.st_dev, st.st_ino, st.st_size, st.st_mtim);
  ctx.FileDone();
  return 0;
}

int CopyIn(int srcDir, const char* srcName, const std::string& srcRaw, unsigned char type, int dstDir, dev_t dstDev,
           const std::string& dstName, const std::string& dstRaw, Existing existing, bool top, CopyJob& job);

int CopyFolder(int in, const struct stat& st, int dstDir, const std::string& name, const std::string& srcRaw,
               const std::string& dstRaw, Existing existing, bool top, CopyJob& job) {
  FileOpContext& ctx = job.ctx;
  ScopedFd source(in);
  bool created = false;
  if (mkdirat(dstDir, name.c_str(), 0700) == 0) {
    created = true;
  } else if (errno != EEXIST || existing == Existing::Refuse) {
    const int err = errno;
    if (err == EEXIST && top) return kTargetExists;
    ctx.Fail(kVerb, dstRaw, err);
    return err;
  }
  if (top) job.topFolderCreated = created;
  ScopedFd out(openat(dstDir, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat outSt {};
  if (out.fd < 0 || fstat(out.fd, &outSt) != 0) {
    const int err = errno;
    if (err == ENOTDIR || err == ELOOP)
      ctx.Fail(kVerb, dstRaw, "a file of that name is in the way", err);
    else
      ctx.Fail(kVerb, dstRaw, err);
    return err;
  }
  DIR* dir = fdopendir(source.fd);
  if (dir == nullptr) {
    const int err = errno;
    ctx.Fail(kVerb, srcRaw, err);
    return err;
  }
  source.release();  // the DIR owns it now
  // Inside a folder the copy made, nothing should be in the way; inside a
  // merge the user agreed to replace what is.
  const Existing inner = created ? Existing::Refuse : Existing::Replace;
  std::string childSrc;
  std::string childDst;
  int first = ForEachChild(dir, kVerb, srcRaw, ctx, [&](const dirent& e) {
    childSrc.assign(srcRaw).append("/").append(e.d_name);
    childDst.assign(dstRaw).append("/").append(e.d_name);
    return CopyIn(dirfd(dir), e.d_name, childSrc, e.d_type, out.fd, outSt.st_dev, e.d_name, childDst, inner, false,
                  job);
  });
  if (created) {
    // Last, so that filling the folder does not change its times, and a
    // read-only folder could be filled.
    if (IsRoot() && fchown(out.fd, st.st_uid, st.st_gid) != 0 && errno != EPERM && first == 0) first = errno;
    const timespec times[2] = {st.st_atim, st.st_mtim};
    if ((fchmod(out.fd, st.st_mode & 07777) != 0 || futimens(out.fd, times) != 0) && first == 0) {
      first = errno;
      ctx.Fail(kVerb, dstRaw, first);
    }
  }
  if (first != 0) return first;
  if (job.copied != nullptr) job.copied->Add(st.st_dev, st.st_ino, st.st_size, st.st_mtim);
  ctx.FileDone();
  return 0;
}

int CopyIn(int srcDir, const char* srcName, const std::string& srcRaw, unsigned char type, int dstDir, dev_t dstDev,
           const std::string& dstName, const std::string& dstRaw, Existing existing, bool top, CopyJob& job) {
  FileOpContext& ctx = job.ctx;
  if (!ctx.FileStarted(srcRaw)) return ECANCELED;
  constexpr int kOpen = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
  struct stat st {};
  int fd = -1;
  if (type == DT_REG || type == DT_DIR) {
    // The listing's type saves a stat; the fstat below has the last word.
    fd = openat(srcDir, srcName, kOpen | (type == DT_DIR ? O_DIRECTORY : 0));
    if (fd < 0 && errno != ELOOP && errno != ENOTDIR) {
      const int err = errno;
      ctx.Fail(kVerb, srcRaw, err);
      return err;
    }
  }
  if (fd < 0) {
    if (fstatat(srcDir, srcName, &st, AT_SYMLINK_NOFOLLOW) != 0) {
      const int err = errno;
      ctx.Fail(kVerb, srcRaw, err);
      return err;
    }
    if (S_ISREG(st.st_mode) || S_ISDIR(st.st_mode)) {
      fd = openat(srcDir, srcName, kOpen | (S_ISDIR(st.st_mode) ? O_DIRECTORY : 0));
      if (fd < 0) {
        const int err = errno;
        ctx.Fail(kVerb, srcRaw, err);
        return err;
      }
    }
  }
  if (fd >= 0 && fstat(fd, &st) != 0) {
    const int err = errno;
    close(fd);
    ctx.Fail(kVerb, srcRaw, err);
    return err;
  }
  if (S_ISDIR(st.st_mode)) return CopyFolder(fd, st, dstDir, dstName, srcRaw, dstRaw, existing, top, job);
  if (S_ISREG(st.st_mode)) {
    ScopedFd in(fd);
    return CopyRegular(in.fd, st, dstDir, dstDev, dstName, srcRaw, dstRaw, existing, top, job);
  }
  if (fd >= 0) close(fd);  // swapped for a FIFO or device after the listing
  return CopyNode(srcDir, srcName, st, dstDir, dstName, srcRaw, dstRaw, existing, top, job);
}

thread_local FileOpContext* countingInto = nullptr;

int CountOne(const char*, const struct stat* st, int type, struct FTW*) {
  countingInto->AddTotals(type == FTW_F && S_ISREG(st->st_mode) ? static_cast<uint64_t>(st->st_size) : 0, 1);
  return 0;
}

}  // namespace

int CopyEntry(int srcDir, const std::string& srcName, const std::string& srcRaw, int dstDir,
              const std::string& dstName, const std::string& dstRaw, Existing existing, CopyJob& job) {
  struct stat dst {};
  if (fstat(dstDir, &dst) != 0) {
    const int err = errno;
    job.ctx.Fail(kVerb, dstRaw, err);
    return err;
  }
  return CopyIn(srcDir, srcName.c_str(), srcRaw, DT_UNKNOWN, dstDir, dst.st_dev, dstName, dstRaw, existing, true,
                job);
}

void AddTreeTotals(const std::string& rawPath, FileOpContext& ctx) {
  countingInto = &ctx;
  nftw(rawPath.c_str(), CountOne, 64, FTW_PHYS);
  countingInto = nullptr;
}

}  // namespace nxfv
