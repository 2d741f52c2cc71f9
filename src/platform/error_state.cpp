#include "nxfv/platform/error_state.h"

#include <new>

namespace nxfv {

VbError::VbError(int32_t number, std::string description)
    : std::runtime_error(description), number_(number), description_(std::move(description)) {}

std::string StandardErrorDescription(int32_t number) {
  switch (number) {
    case 5: return "Invalid procedure call or argument";
    case 6: return "Overflow";
    case 7: return "Out of memory";
    case 9: return "Subscript out of range";
    case 13: return "Type mismatch";
    case 52: return "Bad file name or number";
    case 53: return "File not found";
    case 62: return "Input past end of file";
    case 70: return "Permission denied";
    case 75: return "Path/File access error";
    case 76: return "Path not found";
    case 91: return "Object variable or With block variable not set";
    case 457: return "This key is already associated with an element of this collection";
    case 35601: return "Element not found";
    case 35602: return "Key is not unique in collection";
    case 35603: return "Invalid key";
    default: return "";
  }
}

ErrorState& CurrentError() {
  thread_local ErrorState state;
  return state;
}

void ClearError() {
  CurrentError() = ErrorState{};
}

void SetError(int32_t number, std::string description) {
  auto& s = CurrentError();
  s.number = number;
  s.description = std::move(description);
}

void RaiseError(int32_t number) { RaiseError(number, StandardErrorDescription(number)); }

void RaiseError(int32_t number, std::string description) {
  SetError(number, description);
  throw VbError(number, std::move(description));
}

void RecordException(const std::exception& e) {
  if (auto* vb = dynamic_cast<const VbError*>(&e)) {
    SetError(vb->number(), vb->description());
  } else if (dynamic_cast<const std::bad_alloc*>(&e)) {
    SetError(kErrOutOfMemory, StandardErrorDescription(kErrOutOfMemory));
  } else {
    SetError(kErrInvalidCall, StandardErrorDescription(kErrInvalidCall));
  }
}

void RecordUnknownException() { SetError(kErrInvalidCall, StandardErrorDescription(kErrInvalidCall)); }

}  // namespace nxfv
