// The run-time error state and the one exception type that carries it.
//
// Failures travel as VbError exceptions inside the library and are caught
// at the boundary of every procedure that reports them (see ShowError); they
// never reach a host. Like the host runtime, each thread keeps the last error
// raised: number 0 and an empty description after a clean reset.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace nxfv {

// Error numbers of the host runtime that the library raises.
enum VbErrorNumber : int32_t {
  kErrInvalidCall = 5,
  kErrOverflow = 6,
  kErrOutOfMemory = 7,
  kErrSubscript = 9,
  kErrTypeMismatch = 13,
  kErrBadFileName = 52,
  kErrFileNotFound = 53,
  kErrInputPastEnd = 62,
  kErrPermissionDenied = 70,
  kErrPathFileAccess = 75,
  kErrPathNotFound = 76,
  kErrObjectNotSet = 91,
  kErrDuplicateKey = 457,
  kErrElementNotFound = 35601,
  kErrKeyNotUnique = 35602,
  kErrInvalidKey = 35603,
};

class VbError : public std::runtime_error {
 public:
  VbError(int32_t number, std::string description);
  int32_t number() const { return number_; }
  const std::string& description() const { return description_; }

 private:
  int32_t number_;
  std::string description_;
};

// The runtime's own description of a standard error number ("" if unknown).
std::string StandardErrorDescription(int32_t number);

struct ErrorState {
  int32_t number = 0;
  std::string description;
};

// The calling thread's error state.
ErrorState& CurrentError();
void ClearError();
void SetError(int32_t number, std::string description);

// Records the error in the thread's state and throws it.
[[noreturn]] void RaiseError(int32_t number);
[[noreturn]] void RaiseError(int32_t number, std::string description);

// Records a caught exception in the error state: a VbError as it is, a
// bad_alloc as error 7, anything else as error 5. Used by the boundaries
// that catch everything so that no exception reaches a host.
void RecordException(const std::exception& e);
void RecordUnknownException();

}  // namespace nxfv
