#include "nxfv/platform/linux/tree_delete.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "nxfv/platform/linux/file_op_context.h"

namespace nxfv {

void CopiedEntries::Add(dev_t dev, ino_t ino, int64_t size, timespec mtime) { entries_[{dev, ino}] = {size, mtime}; }

bool CopiedEntries::Contains(dev_t dev, ino_t ino, int64_t size, timespec mtime) const {
  const auto it = entries_.find({dev, ino});
  return it != entries_.end() && it->second.size == size && it->second.mtime.tv_sec == mtime.tv_sec &&
         it->second.mtime.tv_nsec == mtime.tv_nsec;
}

namespace {

constexpr const char* kVerb = "delete";

int RemoveFolder(int parentFd, const char* name, const std::string& rawPath, dev_t parentDev, FileOpContext& ctx,
                 const CopiedEntries* only);

// isFolder: the caller knows the entry is a folder (from the directory
// listing); otherwise unlinking is tried first and EISDIR tells.
int Remove(int parentFd, const char* name, const std::string& rawPath, bool isFolder, dev_t parentDev,
           FileOpContext& ctx, const CopiedEntries* only) {
  if (!ctx.FileStarted(rawPath)) return ECANCELED;
  if (only != nullptr) {
    struct stat st {};
    if (fstatat(parentFd, name, &st, AT_SYMLINK_NOFOLLOW) != 0) {
      ctx.Fail(kVerb, rawPath, errno);
      return errno;
    }
    isFolder = S_ISDIR(st.st_mode);
    const bool copied = isFolder ? only->Contains(st.st_dev, st.st_ino)
                                 : only->Contains(st.st_dev, st.st_ino, st.st_size, st.st_mtim);
    if (!copied) {
      ctx.Fail(kVerb, rawPath, "it changed while it was being moved; it stays at the source", EBUSY);
      return EBUSY;
    }
  }
  if (!isFolder) {
    if (unlinkat(parentFd, name, 0) == 0) {
      ctx.FileDone();
      return 0;
    }
    if (errno != EISDIR) {
      const int err = errno;
      ctx.Fail(kVerb, rawPath, err);
      return err;
    }
  }
  return RemoveFolder(parentFd, name, rawPath, parentDev, ctx, only);
}

int RemoveFolder(int parentFd, const char* name, const std::string& rawPath, dev_t parentDev, FileOpContext& ctx,
                 const CopiedEntries* only) {
  const int fd = openat(parentFd, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (fd < 0) {
    int err = errno;
    // Not a folder any more (swapped for a link or a file): remove that instead.
    if ((err == ELOOP || err == ENOTDIR) && only == nullptr) {
      if (unlinkat(parentFd, name, 0) == 0) return 0;
      err = errno;
    }
    ctx.Fail(kVerb, rawPath, err);
    return err;
  }
  struct stat st {};
  if (fstat(fd, &st) != 0 || st.st_dev != parentDev) {
    const int err = st.st_dev != parentDev ? EXDEV : errno;
    close(fd);
    ctx.Fail(kVerb, rawPath, "another file system is mounted there; it is kept", err);
    return err;
  }
  DIR* dir = fdopendir(fd);
  if (dir == nullptr) {
    const int err = errno;
    close(fd);
    ctx.Fail(kVerb, rawPath, err);
    return err;
  }
  std::string child;
  const int first = ForEachChild(dir, kVerb, rawPath, ctx, [&](const dirent& e) {
    child.assign(rawPath).append("/").append(e.d_name);
    return Remove(dirfd(dir), e.d_name, child, e.d_type == DT_DIR, st.st_dev, ctx, only);
  });
  if (first != 0) return first;  // what is left stays; the failures said why
  if (unlinkat(parentFd, name, AT_REMOVEDIR) != 0) {
    const int err = errno;
    ctx.Fail(kVerb, rawPath, err);
    return err;
  }
  ctx.FileDone();
  return 0;
}

}  // namespace

int DeleteEntry(int parentFd, const std::string& name, const std::string& rawPath, FileOpContext& ctx,
                const CopiedEntries* only) {
  struct stat parent {};
  if (fstat(parentFd, &parent) != 0) {
    const int err = errno;
    ctx.Fail(kVerb, rawPath, err);
    return err;
  }
  return Remove(parentFd, name.c_str(), rawPath, false, parent.st_dev, ctx, only);
}

}  // namespace nxfv
