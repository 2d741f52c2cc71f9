// The back/forward history of the locations a control has shown.
//
// Browser rules: every location announced to the host is visited; visiting
// the location already current adds nothing (a refresh is not a step);
// visiting a new one drops everything ahead of the current entry and
// appends it. Going back or forward only moves the current position; the
// entries stay until a new location drops the forward part.
//
// An entry is a path, or the drives view (which has no path). Paths are
// compared with the platform's letter-case rule.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace nxfv {

struct HistoryEntry {
  std::string path;     // "" for the drives view
  bool drives = false;  // the drives and special-folder list
};

class History {
 public:
  // Keeps at most this many entries; the oldest go first.
  static constexpr size_t kMaxEntries = 256;

  explicit History(bool ignoreCase = true) : ignoreCase_(ignoreCase) {}
  void SetIgnoreCase(bool ignoreCase) { ignoreCase_ = ignoreCase; }

  void Visit(const HistoryEntry& entry);
  bool CanGoPrevious() const { return current_ > 0; }
  bool CanGoNext() const { return current_ + 1 < entries_.size(); }
  // The entry one step back or ahead; only when CanGo... is true.
  const HistoryEntry& Previous() const { return entries_.at(current_ - 1); }
  const HistoryEntry& Next() const { return entries_.at(current_ + 1); }
  // Moves the current position by step (-1 back, +1 ahead) without listing.
  void Step(int step);
  // Forgets the entry one step back or ahead (a location that is gone).
  void DropPrevious();
  void DropNext();
  size_t Size() const { return entries_.size(); }
  size_t Position() const { return current_; }
  bool Same(const HistoryEntry& a, const HistoryEntry& b) const;

 private:
  std::vector<HistoryEntry> entries_;
  size_t current_ = 0;
  bool ignoreCase_;
};

}  // namespace nxfv
