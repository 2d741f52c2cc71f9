#include "nxfv/platform/linux/linux_change_notifier.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "nxfv/platform/linux/file_name_escape.h"

namespace nxfv {

namespace {

constexpr uint32_t kEntryEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY | IN_ATTRIB;
constexpr uint32_t kFolderGoneEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;

FolderChangeKind KindOf(uint32_t mask) {
  if (mask & IN_CREATE) return FolderChangeKind::Created;
  if (mask & IN_DELETE) return FolderChangeKind::Deleted;
  if (mask & IN_MOVED_FROM) return FolderChangeKind::MovedOut;
  if (mask & IN_MOVED_TO) return FolderChangeKind::MovedIn;
  if (mask & IN_MODIFY) return FolderChangeKind::Modified;
  return FolderChangeKind::AttributesChanged;
}

}  // namespace

LinuxChangeNotifier::LinuxChangeNotifier() : fd_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

LinuxChangeNotifier::~LinuxChangeNotifier() {
  if (fd_ >= 0) close(fd_);
}

bool LinuxChangeNotifier::Watch(const std::string& folder) {
  Unwatch();
  if (fd_ < 0 || folder.empty()) return false;
  const std::string raw = UnescapeFileName(folder);
  // IN_EXCL_UNLINK: no events for files that were deleted while still open.
  wd_ = inotify_add_watch(fd_, raw.c_str(), kEntryEvents | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR | IN_EXCL_UNLINK);
  if (wd_ < 0) return false;
  folder_ = folder;
  return true;
}

void LinuxChangeNotifier::Unwatch() {
  if (wd_ >= 0) inotify_rm_watch(fd_, wd_);
  wd_ = -1;
  folder_.clear();
  pending_.clear();
}

std::vector<FolderChange> LinuxChangeNotifier::TakeChanges() { return std::exchange(pending_, {}); }

size_t LinuxChangeNotifier::Dispatch() {
  if (fd_ < 0) return 0;
  size_t added = 0;
  alignas(inotify_event) char buffer[16384];
  for (;;) {
    const ssize_t n = read(fd_, buffer, sizeof buffer);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;  // EAGAIN: everything read
    const auto size = static_cast<size_t>(n);
    for (size_t at = 0; at < size && size - at >= sizeof(inotify_event);) {
      inotify_event event;
      std::memcpy(&event, buffer + at, sizeof event);
      const char* name = buffer + at + sizeof event;
      const size_t nameLength = strnlen(name, std::min<size_t>(event.len, size - at - sizeof event));
      at += sizeof event + event.len;
      if (wd_ < 0) continue;  // nothing watched, or left over from an earlier watch
      if (event.mask & IN_Q_OVERFLOW) {
        Add(FolderChangeKind::Overflow, "");
      } else if (event.wd != wd_) {
        continue;
      } else if (event.mask & kFolderGoneEvents) {
        Add(FolderChangeKind::FolderGone, "");
        EndWatch();
      } else if (event.mask & kEntryEvents) {
        Add(KindOf(event.mask), EscapeFileName(std::string_view(name, nameLength)));
      } else {
        continue;
      }
      ++added;
    }
  }
  if (added > 0 && callback_) callback_();
  return added;
}

void LinuxChangeNotifier::Add(FolderChangeKind kind, std::string name) {
  if (pending_.size() >= kMaxPendingChanges)
    pending_.assign(1, {FolderChangeKind::Overflow, ""});
  else
    pending_.push_back({kind, std::move(name)});
}

void LinuxChangeNotifier::EndWatch() {
  // The kernel already dropped a deleted folder's watch; for a moved one it
  // would follow the folder to its new place, which is not what was asked.
  inotify_rm_watch(fd_, wd_);
  wd_ = -1;
  folder_.clear();
}

}  // namespace nxfv
