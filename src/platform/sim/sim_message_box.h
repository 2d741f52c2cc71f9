// A message box that records every box it is asked to show and answers from
// a script. With an empty script it answers Cancel when the box has a
// Cancel button and OK otherwise.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "nxfv/platform/services.h"

namespace nxfv {

struct MessageBoxRecord {
  std::string title;
  std::string text;
  int32_t style = 0;
  bool operator==(const MessageBoxRecord&) const = default;
};

class SimMessageBox : public MessageBoxService {
 public:
  int32_t Show(const std::string& text, int32_t style, const std::string& title) override;

  // Answers for the next boxes, in order.
  void Script(std::initializer_list<int32_t> answers) { script_.insert(script_.end(), answers); }
  const std::vector<MessageBoxRecord>& Shown() const { return shown_; }
  // The operation each shown box belonged to (CurrentOperation().id).
  const std::vector<uint64_t>& Operations() const { return operations_; }
  void Clear() {
    shown_.clear();
    operations_.clear();
  }

  // With false, boxes are counted but no longer recorded: Shown() and
  // Operations() stay as they are. For long runs that show boxes by the
  // million (fuzzing), where the records would only pile up.
  void KeepRecords(bool keep) { keepRecords_ = keep; }
  // Every box shown so far, recorded or not; Clear() does not reset it.
  size_t ShownCount() const { return shownCount_; }

 private:
  std::deque<int32_t> script_;
  std::vector<MessageBoxRecord> shown_;
  std::vector<uint64_t> operations_;
  bool keepRecords_ = true;
  size_t shownCount_ = 0;
};

}  // namespace nxfv
