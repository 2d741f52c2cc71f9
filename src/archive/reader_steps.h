// Shared machinery of the two directory readers: per-step error reports,
// 32-bit position arithmetic and reads into record buffers.
#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "nxfv/archive/archive_text.h"
#include "nxfv/archive/windowed_file.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/platform/platform.h"

namespace nxfv::archive_detail {

// What a step that can fail answers: kStepOk, or the number of the error it
// failed with (kErrOverflow, kErrInvalidCall, ...). Damaged directories fail
// steps by the thousand, so failures travel as values, not exceptions.
using StepError = int32_t;
inline constexpr StepError kStepOk = 0;

// Runs the steps of one reader. A step that fails shows an OK box,
//   "<description>\r\nin cArchive.<procedure> component at line <line>",
// and the reader goes on with its next step: a corrupt directory is listed
// as far as it can be, never abandoned half way by an exception.
class StepRunner {
 public:
  StepRunner(Platform& platform, const char* procedure) : platform_(platform), procedure_(procedure) {}

  // Runs step(); false when it failed (and was reported). A step either
  // returns a StepError or returns nothing; both kinds may also throw (a
  // listener's failure, an allocation), which is reported the same way:
  // the error state holds the failure while the box shows, and is clear
  // afterwards.
  template <class Step>
  bool Run(int32_t line, Step&& step) {
    try {
      if constexpr (std::is_void_v<std::invoke_result_t<Step&>>) {
        step();
        return true;
      } else {
        const StepError error = step();
        if (error == kStepOk) return true;
        SetError(error, StandardErrorDescription(error));
      }
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
  // The boxes' texts and what they were built from: a damaged directory
  // fails the same few steps with the same errors entry after entry, in
  // turn, so the last few texts are kept, not only the last one.
  struct BoxText {
    int32_t line;
    std::string description;
    std::string text;
  };
  static constexpr size_t kKeptTexts = 16;
  std::vector<BoxText> texts_;
};

// position + delta in 32 bits. Answers kErrOverflow and leaves position as
// it was when the sum leaves the range.
[[nodiscard]] StepError AdvancePosition(int32_t& position, int32_t delta);

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

  // Reads length bytes at position; changed tells whether text() changed.
  // A negative length fails with kErrInvalidCall, as allocating such a
  // buffer would, and leaves text() (and changed) as they were.
  [[nodiscard]] StepError Read(WindowedFile& file, int32_t position, int32_t length, bool& changed);
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
