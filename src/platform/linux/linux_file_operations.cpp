#include "nxfv/platform/linux/linux_file_operations.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <string>
#include <vector>

#include "nxfv/platform/linux/file_copy.h"
#include "nxfv/platform/linux/file_name_escape.h"
#include "nxfv/platform/linux/file_op_context.h"
#include "nxfv/platform/free_name.h"
#include "nxfv/platform/linux/trash.h"
#include "nxfv/platform/linux/tree_delete.h"

namespace nxfv {

namespace {

constexpr const char* kInsideItself = "The destination folder is inside the source folder";
constexpr const char* kInTheWay = "a folder or file of that name is in the way";

// Cleaning up after a failed item must neither ask nor report twice.
struct SilentBox : MessageBoxService {
  int32_t Show(const std::string&, int32_t, const std::string&) override { return 0; }
};

std::string Parent(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string Base(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

std::string Join(const std::string& folder, const std::string& name) {
  std::string path = folder;
  if (path != "/") path += '/';
  return path += name;
}

std::string Quote(const std::string& raw) {
  std::string quoted(1, '"');
  return quoted.append(EscapeFileName(raw)).append(1, '"');
}

// Request text -> raw path, without a trailing "/" (the root keeps its own).
std::string RawPath(const std::string& text) {
  std::string raw = UnescapeFileName(text);
  while (raw.size() > 1 && raw.back() == '/') raw.pop_back();
  return raw;
}

bool IsItemName(const std::string& name) { return !name.empty() && name != "." && name != ".."; }

int OpenFolder(const std::string& raw) { return open(raw.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }

// renameat2 without replacing; where the file system lacks RENAME_NOREPLACE
// (EINVAL), a look first and a plain rename.
int RenameNoReplace(int fromDir, const std::string& from, int toDir, const std::string& to) {
  if (renameat2(fromDir, from.c_str(), toDir, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL) return -1;
  struct stat st {};
  if (fstatat(toDir, to.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0) {
    errno = EEXIST;
    return -1;
  }
  return renameat(fromDir, from.c_str(), toDir, to.c_str());
}

// The device of the folder, or of its nearest existing ancestor.
dev_t DeviceOf(std::string folder) {
  struct stat st {};
  while (stat(folder.c_str(), &st) != 0 && folder != "/") folder = Parent(folder);
  return st.st_dev;
}

// Whether folder is the item (dev, ino) or lies below it.
bool IsAtOrBelow(const std::string& folder, const struct stat& item) {
  char* real = realpath(folder.c_str(), nullptr);
  if (real == nullptr) return false;
  std::string p = real;
  free(real);
  for (;;) {
    struct stat st {};
    if (stat(p.c_str(), &st) == 0 && st.st_dev == item.st_dev && st.st_ino == item.st_ino) return true;
    if (p == "/") return false;
    p = Parent(p);
  }
}

bool MakeFolders(const std::string& path) {
  struct stat st {};
  if (stat(path.c_str(), &st) == 0) return S_ISDIR(st.st_mode) || (errno = ENOTDIR, false);
  if (errno != ENOENT || path == "/") return false;
  if (!MakeFolders(Parent(path))) return false;
  return mkdir(path.c_str(), 0777) == 0 || errno == EEXIST;
}

struct Pair {
  std::string source;  // raw
  std::string target;  // raw, the full target path
};

class Run {
 public:
  Run(const FileOperationRequest& request, FileOpContext& ctx) : request_(request), ctx_(ctx) {}

  void Delete();
  void Transfer();

 private:
  bool Flag(uint16_t f) const { return (request_.flags & f) != 0; }
  const char* Verb() const {
    switch (request_.operation) {
      case FO_COPY: return "copy";
      case FO_MOVE: return "move";
      case FO_RENAME: return "rename";
      default: return Flag(FOF_ALLOWUNDO) ? "move to the trash" : "delete";
    }
  }
  bool Sources(std::vector<std::string>& raw);
  bool Resolve(std::vector<Pair>& pairs);
  bool EnsureFolder(const std::string& folder);
  bool MayReplace(const std::string& target, const std::string& source, bool folders);
  static std::string FreeName(int folder, const std::string& name, bool isFolder, uint32_t& number);
  void One(const Pair& pair);
  int CopyItem(int srcDir, const std::string& srcName, const std::string& src, int dstDir, const std::string& dstName,
               const std::string& dst, Existing existing, CopiedEntries* copied);
  int MoveItem(int srcDir, const std::string& srcName, const std::string& src, bool isFolder, int dstDir,
               const std::string& dstName, const std::string& dst, Existing existing);
  int MoveAcross(int srcDir, const std::string& srcName, const std::string& src, int dstDir,
                 const std::string& dstName, const std::string& dst, Existing existing);
  int MergeMove(int srcDir, const std::string& srcName, const std::string& src, int dstDir,
                const std::string& dstName, const std::string& dst);

  const FileOperationRequest& request_;
  FileOpContext& ctx_;
  std::set<std::string> declinedFolders_;
};

bool Run::Sources(std::vector<std::string>& raw) {
  for (const std::string& s : request_.sources) {
    raw.push_back(RawPath(s));
    if (raw.back().empty() || raw.back()[0] != '/' || !IsItemName(Base(raw.back()))) {
      ctx_.Fail(Verb(), raw.back(), "not the full path of an item", EINVAL);
      return false;
    }
  }
  if (raw.empty()) ctx_.Fail(Verb(), "", "nothing to work on", EINVAL);
  return !raw.empty();
}

void Run::Delete() {
  std::vector<std::string> sources;
  if (!Sources(sources)) return;
  const bool trash = Flag(FOF_ALLOWUNDO);
  if (!Flag(FOF_NOCONFIRMATION)) {
    const std::string what = sources.size() == 1 ? Quote(sources[0]) : "these " + std::to_string(sources.size()) + " items";
    const std::string text = trash ? "Do you want to move " + what + " to the trash?"
                                   : "Do you want to permanently delete " + what + "?";
    if (!ctx_.Ask(FileOperationQuestion::ConfirmOperation, text)) {
      ctx_.Skipped();
      return;
    }
  }
  for (const std::string& s : sources) {
    if (trash)
      ctx_.AddTotals(0, 1);
    else
      AddTreeTotals(s, ctx_);
  }
  Trash bin;
  for (const std::string& s : sources) {
    if (!ctx_.FileStarted(s)) return;
    if (trash) {
      std::string reason;
      if (const int r = bin.Put(s, reason); r != 0)
        ctx_.Fail(Verb(), s, reason, r);
      else
        ctx_.FileDone();
      continue;
    }
    ScopedFd parent(OpenFolder(Parent(s)));
    if (parent.fd < 0) {
      ctx_.Fail(Verb(), s, errno);
      continue;
    }
    if (DeleteEntry(parent.fd, Base(s), s, ctx_) == ECANCELED) return;
  }
}

bool Run::Resolve(std::vector<Pair>& pairs) {
  std::vector<std::string> sources;
  if (!Sources(sources)) return false;
  std::vector<std::string> dests;
  for (const std::string& d : request_.destinations) dests.push_back(RawPath(d));
  for (const std::string& d : dests) {
    if (d.empty() || d[0] != '/') {
      ctx_.Fail(Verb(), d, "the destination is not a full path", EINVAL);
      return false;
    }
  }
  if (request_.operation == FO_RENAME) {
    if (dests.size() != sources.size()) {
      ctx_.Fail(Verb(), sources[0], "every item needs its new name", EINVAL);
      return false;
    }
    for (size_t i = 0; i < sources.size(); ++i) pairs.push_back({sources[i], dests[i]});
    return true;
  }
  // One destination for several sources is their folder, whatever the flags say.
  const bool oneFolder = !Flag(FOF_MULTIDESTFILES) || (dests.size() == 1 && sources.size() > 1);
  if (oneFolder ? dests.size() != 1 : dests.size() != sources.size()) {
    ctx_.Fail(Verb(), sources[0], "the destinations do not match the sources", EINVAL);
    return false;
  }
  if (oneFolder && sources.size() > 1 && !EnsureFolder(dests[0])) return false;
  for (size_t i = 0; i < sources.size(); ++i) {
    const std::string& d = dests[oneFolder ? 0 : i];
    struct stat st {};
    const bool intoFolder = d != sources[i] && stat(d.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
    pairs.push_back({sources[i], intoFolder ? Join(d, Base(sources[i])) : d});
  }
  return true;
}

bool Run::EnsureFolder(const std::string& folder) {
  struct stat st {};
  if (stat(folder.c_str(), &st) == 0) {
    if (S_ISDIR(st.st_mode)) return true;
    ctx_.Fail(Verb(), folder, ENOTDIR);
    return false;
  }
  if (errno != ENOENT) {
    ctx_.Fail(Verb(), folder, errno);
    return false;
  }
  if (declinedFolders_.count(folder) != 0) {
    ctx_.Skipped();
    return false;
  }
  if (!Flag(FOF_NOCONFIRMMKDIR) && !Flag(FOF_NOCONFIRMATION) &&
      !ctx_.Ask(FileOperationQuestion::ConfirmMakeDir,
                "The folder " + Quote(folder) + " does not exist. Do you want to create it?")) {
    declinedFolders_.insert(folder);
    ctx_.Skipped();
    return false;
  }
  if (!MakeFolders(folder)) {
    ctx_.Fail(Verb(), folder, errno);
    return false;
  }
  return true;
}

bool Run::MayReplace(const std::string& target, const std::string& source, bool folders) {
  if (Flag(FOF_NOCONFIRMATION)) return true;
  if (!ctx_.HasHost()) {
    ctx_.Fail(Verb(), source, Quote(target) + " already exists and nobody could be asked to replace it", EEXIST);
    return false;
  }
  const std::string text =
      folders ? "The folder " + Quote(target) + " already exists. Do you want to merge " + Quote(source) +
                    " into it? Files of the same name will be replaced."
              : Quote(target) + " already exists. Do you want to replace it?";
  if (ctx_.Ask(FileOperationQuestion::ConfirmReplace, text)) return true;
  ctx_.Skipped();
  return false;
}

// The first free "name (N)" from number on; number moves past it, so that a
// retry after losing a race goes on from there.
std::string Run::FreeName(int folder, const std::string& name, bool isFolder, uint32_t& number) {
  for (;;) {
    const std::string candidate = NumberedName(name, isFolder, number++);
    struct stat st {};
    if (fstatat(folder, candidate.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT) return candidate;
    if (number > 100000) return candidate;  // the copy or rename reports it
  }
}

void Run::Transfer() {
  std::vector<Pair> pairs;
  if (!Resolve(pairs)) return;
  for (const Pair& p : pairs) {
    struct stat st {};
    // A rename on one file system moves no bytes: one step per item.
    if (request_.operation == FO_COPY || (lstat(p.source.c_str(), &st) == 0 && st.st_dev != DeviceOf(Parent(p.target)))) {
      const uint64_t before = ctx_.Progress().filesTotal;
      AddTreeTotals(p.source, ctx_);
      // A move across file systems deletes every entry it copied, too.
      if (request_.operation != FO_COPY) ctx_.AddTotals(0, ctx_.Progress().filesTotal - before);
    } else {
      ctx_.AddTotals(0, 1);
    }
  }
  for (const Pair& p : pairs) {
    if (ctx_.Cancelled()) return;
    One(p);
  }
}

void Run::One(const Pair& pair) {
  const std::string& src = pair.source;
  if (!ctx_.FileStarted(src)) return;
  struct stat sst {};
  if (lstat(src.c_str(), &sst) != 0) {
    ctx_.Fail(Verb(), src, errno);
    return;
  }
  const std::string folder = Parent(pair.target);
  std::string name = Base(pair.target);
  if (!IsItemName(name)) {
    ctx_.Fail(Verb(), pair.target, "not a valid name", EINVAL);
    return;
  }
  if (!EnsureFolder(folder)) return;
  const bool isFolder = S_ISDIR(sst.st_mode);
  if (isFolder && IsAtOrBelow(folder, sst)) {
    ctx_.Fail(Verb(), src, kInsideItself, EINVAL);
    return;
  }
  ScopedFd from(OpenFolder(Parent(src)));
  ScopedFd to(OpenFolder(folder));
  if (from.fd < 0 || to.fd < 0) {
    ctx_.Fail(Verb(), from.fd < 0 ? src : folder, errno);
    return;
  }
  const std::string srcName = Base(src);
  const std::string wanted = name;
  uint32_t number = 2;
  Existing existing = Existing::Refuse;
  struct stat tst {};
  if (fstatat(to.fd, name.c_str(), &tst, AT_SYMLINK_NOFOLLOW) == 0) {
    const bool same = tst.st_dev == sst.st_dev && tst.st_ino == sst.st_ino;
    if (same && request_.operation != FO_COPY) {
      if (Join(folder, name) == src) {  // already there
        ctx_.FileDone();
        return;
      }
      // Another spelling of the same entry (a case change on FAT): renaming is all there is to do.
      if (renameat(from.fd, srcName.c_str(), to.fd, name.c_str()) != 0) ctx_.Fail(Verb(), src, errno);
      return;
    }
    if (Flag(FOF_RENAMEONCOLLISION)) {
      name = FreeName(to.fd, wanted, isFolder, number);
    } else if (same) {
      ctx_.Fail(Verb(), src, "the source and the destination are the same file", EINVAL);
      return;
    } else if (S_ISDIR(tst.st_mode) != isFolder) {
      ctx_.Fail(Verb(), Join(folder, name), kInTheWay, EEXIST);
      return;
    } else if (!MayReplace(Join(folder, name), src, isFolder)) {
      return;
    } else {
      existing = Existing::Replace;
    }
  }
  for (;;) {
    const std::string dst = Join(folder, name);
    const int r = request_.operation == FO_COPY
                      ? CopyItem(from.fd, srcName, src, to.fd, name, dst, existing, nullptr)
                      : MoveItem(from.fd, srcName, src, isFolder, to.fd, name, dst, existing);
    if (r != kTargetExists) return;
    // Taken between the look and the copy.
    if (!Flag(FOF_RENAMEONCOLLISION)) {
      ctx_.Fail(Verb(), dst, "it already exists", EEXIST);
      return;
    }
    name = FreeName(to.fd, wanted, isFolder, number);
  }
}

int Run::CopyItem(int srcDir, const std::string& srcName, const std::string& src, int dstDir,
                  const std::string& dstName, const std::string& dst, Existing existing, CopiedEntries* copied) {
  CopyJob job{ctx_, copied};
  const int r = CopyEntry(srcDir, srcName, src, dstDir, dstName, dst, existing, job);
  if (r != 0 && r != kTargetExists && job.topFolderCreated) {
    // The item arrives whole or not at all.
    SilentBox silent;
    FileOpContext quiet(nullptr, silent);
    DeleteEntry(dstDir, dstName, dst, quiet);
  }
  return r;
}

int Run::MoveItem(int srcDir, const std::string& srcName, const std::string& src, bool isFolder, int dstDir,
                  const std::string& dstName, const std::string& dst, Existing existing) {
  int err = 0;
  if (existing == Existing::Refuse) {
    if (RenameNoReplace(srcDir, srcName, dstDir, dstName) == 0) {
      ctx_.FileDone();
      return 0;
    }
    err = errno;
    if (err == EEXIST || err == ENOTEMPTY) return kTargetExists;
  } else if (isFolder) {
    struct stat a {};
    struct stat b {};
    if (fstat(srcDir, &a) == 0 && fstat(dstDir, &b) == 0 && a.st_dev == b.st_dev)
      return MergeMove(srcDir, srcName, src, dstDir, dstName, dst);
    err = EXDEV;
  } else {
    if (renameat(srcDir, srcName.c_str(), dstDir, dstName.c_str()) == 0) {
      ctx_.FileDone();
      return 0;
    }
    err = errno;
  }
  if (err == EXDEV) return MoveAcross(srcDir, srcName, src, dstDir, dstName, dst, existing);
  ctx_.Fail(Verb(), src, err);
  return err;
}

int Run::MoveAcross(int srcDir, const std::string& srcName, const std::string& src, int dstDir,
                    const std::string& dstName, const std::string& dst, Existing existing) {
  CopiedEntries copied;
  const int r = CopyItem(srcDir, srcName, src, dstDir, dstName, dst, existing, &copied);
  if (r != 0) return r;
  // The copy must be on the disk before the only other copy goes.
  if (syncfs(dstDir) != 0) {
    const int err = errno;
    ctx_.Fail(Verb(), dst, err);
    return err;
  }
  return DeleteEntry(srcDir, srcName, src, ctx_, &copied);
}

int Run::MergeMove(int srcDir, const std::string& srcName, const std::string& src, int dstDir,
                   const std::string& dstName, const std::string& dst) {
  ScopedFd in(openat(srcDir, srcName.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  ScopedFd out(openat(dstDir, dstName.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (in.fd < 0 || out.fd < 0) {
    const int err = errno;
    ctx_.Fail(Verb(), in.fd < 0 ? src : dst, err);
    return err;
  }
  // The names first: renaming entries away while reading the folder could skip some.
  std::vector<std::string> names;
  {
    DIR* dir = fdopendir(dup(in.fd));
    if (dir == nullptr) {
      const int err = errno;
      ctx_.Fail(Verb(), src, err);
      return err;
    }
    while (const dirent* e = readdir(dir))
      if (IsItemName(e->d_name)) names.emplace_back(e->d_name);
    closedir(dir);
  }
  int first = 0;
  for (const std::string& n : names) {
    const std::string from = src + "/" + n;
    const std::string to = dst + "/" + n;
    if (!ctx_.FileStarted(from)) return ECANCELED;
    struct stat s {};
    struct stat t {};
    if (fstatat(in.fd, n.c_str(), &s, AT_SYMLINK_NOFOLLOW) != 0) {
      first = first != 0 ? first : errno;
      ctx_.Fail(Verb(), from, errno);
      continue;
    }
    int r = 0;
    if (fstatat(out.fd, n.c_str(), &t, AT_SYMLINK_NOFOLLOW) != 0) {
      r = MoveItem(in.fd, n, from, S_ISDIR(s.st_mode), out.fd, n, to, Existing::Refuse);
      if (r == kTargetExists) {
        ctx_.Fail(Verb(), to, "it already exists", EEXIST);
        r = EEXIST;
      }
    } else if (S_ISDIR(s.st_mode) != S_ISDIR(t.st_mode)) {
      ctx_.Fail(Verb(), to, kInTheWay, EEXIST);
      r = EEXIST;
    } else {
      r = MoveItem(in.fd, n, from, S_ISDIR(s.st_mode), out.fd, n, to, Existing::Replace);
    }
    if (r == ECANCELED) return r;
    if (first == 0) first = r;
  }
  if (first != 0) return first;
  if (unlinkat(srcDir, srcName.c_str(), AT_REMOVEDIR) != 0) {
    const int err = errno;
    ctx_.Fail(Verb(), src, err);
    return err;
  }
  ctx_.FileDone();
  return 0;
}

}  // namespace

FileOperationResult LinuxFileOperations::Perform(const FileOperationRequest& request) {
  FileOpContext ctx(Host(), errorBox_);
  Run run(request, ctx);
  switch (request.operation) {
    case FO_DELETE:
      run.Delete();
      break;
    case FO_COPY:
    case FO_MOVE:
    case FO_RENAME:
      run.Transfer();
      break;
    default:
      ctx.Fail("run", "", "unknown file operation " + std::to_string(request.operation), EINVAL);
      break;
  }
  ctx.Finish();
  return ctx.Result();
}

}  // namespace nxfv
