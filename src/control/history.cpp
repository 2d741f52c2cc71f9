#include "nxfv/control/history.h"

#include <cctype>

namespace nxfv {

bool History::Same(const HistoryEntry& a, const HistoryEntry& b) const {
  if (a.drives || b.drives) return a.drives == b.drives;
  if (a.path.size() != b.path.size()) return false;
  if (!ignoreCase_) return a.path == b.path;
  for (size_t i = 0; i < a.path.size(); ++i)
    if (std::toupper(static_cast<unsigned char>(a.path[i])) != std::toupper(static_cast<unsigned char>(b.path[i])))
      return false;
  return true;
}

void History::Visit(const HistoryEntry& entry) {
  if (!entries_.empty() && Same(entries_[current_], entry)) {
    entries_[current_] = entry;  // the latest spelling of the same place
    return;
  }
  if (!entries_.empty()) entries_.resize(current_ + 1);
  entries_.push_back(entry);
  if (entries_.size() > kMaxEntries) entries_.erase(entries_.begin());
  current_ = entries_.size() - 1;
}

void History::Step(int step) {
  if (step < 0 && CanGoPrevious()) --current_;
  if (step > 0 && CanGoNext()) ++current_;
}

void History::DropPrevious() {
  if (!CanGoPrevious()) return;
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(current_ - 1));
  --current_;
}

void History::DropNext() {
  if (CanGoNext()) entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(current_ + 1));
}

}  // namespace nxfv
