// Shared machinery of the two directory readers: per-step error reports,
// 32-bit position arithmetic and reads into record buffers.
#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "nxfv/archive/archive_text.h"
#include "nxfv/archive/windowed_file.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/platform/platform.h"

namespace nxfv::archive_detail {

// Runs the steps of one reader. A step that fails shows an OK box,
//   "<description>\r\nin cArchive.<procedure> component at line <line>",
// and the reader goes on with its next step: a corrupt directory is listed
// as far as it can be, never abandoned half way by an exception.
class StepRunner {
 public:
  StepRunner(Platform& platform, const char* procedure) : platform_(platform), procedure_(procedure) {}

  // Runs step(); false when it failed (and was reported).
  template <class Step>
  bool Run(int32_t line, Step&& step) {
    try {
      step();
      return true;
    } catch (const std::exception& e) {
      RecordException(e);
    } catch (...) {
      RecordUnknownException();
    }
    Report(line);
    return false;
  }

 private:
  void Report(int32_t line);

  Platform& platform_;
  const char* procedure_;
};

// a + b in 32 bits; raises error 6 "Overflow" when it leaves the range.
int32_t AddPosition(int32_t a, int32_t b);

// Reads into buffer at a 32-bit file position. Bytes past the end of the
// file keep whatever buffer held; a negative position reads nothing.
// Returns the count read.
size_t ReadRecord(WindowedFile& file, int32_t position, std::span<uint8_t> buffer);

// A variable-length text field (a ZIP name or comment). Every read starts
// from a zero-filled buffer of the field's length, so bytes past the end of
// the file read as 0. Decoding is skipped while the bytes repeat: a
// directory that runs past the end of the file repeats its last entry up to
// 32767 times.
class TextFieldReader {
 public:
  explicit TextFieldReader(LegacyCodePage codePage) : codePage_(codePage) {}

  // Reads length bytes at position; true when text() changed. A negative
  // length raises error 5, as allocating such a buffer would, and leaves
  // text() as it was.
  bool Read(WindowedFile& file, int32_t position, int32_t length);
  const std::string& text() const { return text_; }

 private:
  LegacyCodePage codePage_;
  std::vector<uint8_t> bytes_;
  std::vector<uint8_t> decodedBytes_;  // the bytes text_ was decoded from
  bool zeros_ = false;                 // bytes_ holds zeros only
  bool decoded_ = false;
  std::string text_;
};

}  // namespace nxfv::archive_detail
