#include "nxfv/platform/sim/sim_message_box.h"

namespace nxfv {

int32_t SimMessageBox::Show(const std::string& text, int32_t style, const std::string& title) {
  ++shownCount_;
  if (keepRecords_) {
    shown_.push_back({title, text, style});
    operations_.push_back(CurrentOperation().id);
  }
  if (!script_.empty()) {
    const int32_t answer = script_.front();
    script_.pop_front();
    return answer;
  }
  switch (style & 7) {
    case kMbOkCancel:
    case kMbYesNoCancel:
    case kMbRetryCancel:
      return kAnswerCancel;
    case kMbAbortRetryIgnore:
      return kAnswerAbort;
    case kMbYesNo:
      return kAnswerNo;
    default:
      return kAnswerOk;
  }
}

}  // namespace nxfv
