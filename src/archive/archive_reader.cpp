#include "nxfv/archive/archive_reader.h"

#include <limits>

#include "nxfv/archive/reader_steps.h"

namespace nxfv {

namespace archive_detail {

void StepRunner::Report(int32_t line) {
  const std::string& description = CurrentError().description;
  const std::string* text = nullptr;
  for (const BoxText& kept : texts_) {
    if (kept.line == line && kept.description == description) {
      text = &kept.text;
      break;
    }
  }
  if (!text) {
    if (texts_.size() == kKeptTexts) texts_.erase(texts_.begin());
    texts_.push_back({line, description,
                      description + "\r\n" + "in cArchive." + procedure_ + " component " + "at line " +
                          std::to_string(line)});
    text = &texts_.back().text;
  }
  static const std::string title = kArchiveBoxTitle;
  platform_.MessageBox().Show(*text, kMbOkOnly, title);
  // Going on with the next step starts from a clean error state.
  ClearError();
}

StepError AdvancePosition(int32_t& position, int32_t delta) {
  const int64_t sum = static_cast<int64_t>(position) + delta;
  if (sum > std::numeric_limits<int32_t>::max() || sum < std::numeric_limits<int32_t>::min()) return kErrOverflow;
  position = static_cast<int32_t>(sum);
  return kStepOk;
}

size_t ReadRecord(WindowedFile& file, int32_t position, std::span<uint8_t> buffer) {
  if (position < 0 || buffer.empty()) return 0;
  return file.ReadAt(static_cast<uint64_t>(position), buffer.data(), buffer.size());
}

StepError TextFieldReader::Read(WindowedFile& file, int32_t position, int32_t length, bool& changed) {
  if (length < 0) return kErrInvalidCall;
  changed = false;
  const size_t n = static_cast<size_t>(length);
  if (!(zeros_ && bytes_.size() == n)) bytes_.assign(n, 0);
  const size_t got = ReadRecord(file, position, bytes_);
  if (got == 0 && zeros_ && decoded_ && decodedBytes_.size() == n) return kStepOk;  // zeros again
  zeros_ = got == 0;
  if (decoded_ && bytes_ == decodedBytes_) return kStepOk;
  decodedBytes_ = bytes_;
  std::string text = DecodeArchiveText(bytes_, codePage_);
  decoded_ = true;
  if (text == text_) return kStepOk;
  text_ = std::move(text);
  changed = true;
  return kStepOk;
}

}  // namespace archive_detail

cArchive::cArchive(PlatformRef platform) : platform_(platform ? std::move(platform) : ActivePlatformRef()) {}

// Non-owning: the aliasing constructor with an empty owner.
cArchive::cArchive(Platform& platform) : platform_(PlatformRef(), &platform) {}

void cArchive::GetInfo() {
  try {
    if (ArchiveExt == "cab" || ArchiveExt == ".cab") {
      GetCab();
    } else if (ArchiveExt == "zip" || ArchiveExt == ".zip") {
      GetZip();
    }
  } catch (const std::exception& e) {
    // The readers trap every step; this only guards their set-up.
    RecordException(e);
  } catch (...) {
    RecordUnknownException();
  }
}

int32_t cArchive::ChangeVolProc(const std::string& sArcName, int32_t lMode) {
  (void)sArcName;
  (void)lMode;
  return 1;
}

int32_t cArchive::ProcessDataProc(int32_t lAddr, int32_t lSize) {
  (void)lAddr;
  (void)lSize;
  return 1;
}

int32_t cArchive::NotificationReceipt(int32_t wParam, int32_t lParam) {
  if (listener_) listener_->noti(wParam, lParam);
  return 0;
}

}  // namespace nxfv
