// The instance slot table shared by every control of one host thread.
//
// A new control takes the slot counter's current value as its slot; the
// counter then grows by one and stops at 10. So the first ten controls get
// rows 0..9 and every later control shares row 10. The table has 51 rows,
// so it can never overflow, and a slot is never given back.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace nxfv {

struct InstanceSlot {
  std::string lockedColumns;   // the columns the user may not resize, for the header
  bool allowMoveColumns = true;
  std::string currentFolder;   // written on every change of folder
  bool refreshPending = false; // set when the current folder changed on disk
  int32_t reserved = 0;
};

class InstanceTable {
 public:
  static constexpr int kRows = 51;
  static constexpr int16_t kLastCountedSlot = 10;

  // The calling thread's table.
  static InstanceTable& ForThisThread();

  int16_t TakeSlot();
  InstanceSlot& Row(int16_t slot) { return rows_.at(static_cast<size_t>(slot)); }
  int16_t Counter() const { return counter_; }

 private:
  std::array<InstanceSlot, kRows> rows_{};
  int16_t counter_ = 0;
};

}  // namespace nxfv
