// The boundary between the control and its host: whatever a procedure or a
// host handler throws (a VbError, any std::exception, or anything else) is
// caught here and never reaches the host.
#pragma once

#include <exception>
#include <string>

#include "nxfv/platform/error_state.h"
#include "nxfv/platform/platform.h"
#include "nxfv/shell/show_error.h"

namespace nxfv {

// Records the exception in flight in the thread's error state.
inline void RecordCurrentException() {
  try {
    throw;
  } catch (const std::exception& e) {
    RecordException(e);
  } catch (...) {
    RecordUnknownException();
  }
}

// Runs body; a failure shows the common error box captioned label.
// Returns false when body failed.
template <class Body>
bool RunReported(Platform& platform, const std::string& label, Body&& body) {
  struct OperationScope {
    MessageBoxService& boxes;
    bool began;
    ~OperationScope() {
      if (began) boxes.EndOperation();
    }
  } scope{platform.MessageBox(), platform.MessageBox().BeginOperation(label)};
  try {
    body();
    return true;
  } catch (...) {
    RecordCurrentException();
  }
  try {
    ShowError(platform, label);
  } catch (...) {
    // A message box handler of the host that throws is not our failure to
    // report twice.
  }
  return false;
}

// Runs body; a failure stays in the thread's error state for the caller to
// read (the members whose errors the host runtime hands to the caller).
template <class Body>
bool RunRecorded(Body&& body) {
  try {
    body();
    return true;
  } catch (...) {
    RecordCurrentException();
    return false;
  }
}

}  // namespace nxfv
