#include "nxfv/platform/sim/sim_change_notifier.h"

#include <utility>

namespace nxfv {

namespace {

std::string WithoutTrailingSeparator(std::string path) {
  if (path.size() > 3 && path.back() == '\\') path.pop_back();  // "C:\" keeps its root separator
  return path;
}

bool SameAsciiCaseless(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

}  // namespace

bool SimChangeNotifier::Watch(const std::string& folder) {
  Unwatch();
  uint32_t attributes = 0;
  if (folder.empty() || !files_->GetAttributes(folder, attributes) || (attributes & kAttrDirectory) == 0) return false;
  folder_ = WithoutTrailingSeparator(folder);
  return true;
}

void SimChangeNotifier::Unwatch() {
  folder_.clear();
  pending_.clear();
}

std::vector<FolderChange> SimChangeNotifier::TakeChanges() { return std::exchange(pending_, {}); }

bool SimChangeNotifier::SimulateChange(const std::string& path, FolderChangeKind kind) {
  if (folder_.empty()) return false;
  if (kind == FolderChangeKind::Overflow || kind == FolderChangeKind::FolderGone) {
    Report({kind, ""});
    if (kind == FolderChangeKind::FolderGone) folder_.clear();
    return true;
  }
  const std::string entry = WithoutTrailingSeparator(path);
  const size_t cut = entry.rfind('\\');
  if (cut == std::string::npos || cut + 1 == entry.size()) return false;
  const std::string parent = WithoutTrailingSeparator(entry.substr(0, cut + 1));
  if (!SameAsciiCaseless(parent, folder_)) return false;
  Report({kind, entry.substr(cut + 1)});
  return true;
}

void SimChangeNotifier::Report(FolderChange change) {
  if (pending_.size() >= kMaxPendingChanges) {
    pending_.assign(1, {FolderChangeKind::Overflow, ""});
  } else {
    pending_.push_back(std::move(change));
  }
  if (callback_) callback_();
}

}  // namespace nxfv
