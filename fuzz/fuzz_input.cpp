#include "fuzz_input.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "nxfv/archive/archive_reader.h"
#include "nxfv/platform/sim/simulated_platform.h"
#include "nxfv/platform/utf8.h"

namespace nxfv::fuzz {

namespace {

[[noreturn]] void Broken(const char* what) {
  std::fprintf(stderr, "broken promise: %s\n", what);
  std::abort();
}

// Whether text is valid UTF-8. A damaged directory repeats one long name
// thousands of times, and the reader hands out the same buffer for it each
// time; comparing 64 KB per entry in full cost four times the reader's own
// work. So a text at the same address with the same size and the same bytes
// at both ends and in the middle is taken as the text checked before.
class Utf8Check {
 public:
  bool operator()(std::string_view text) {
    if (text.data() == lastData_ && text.size() == lastSize_ && SameSample(text)) return true;
    if (!IsValidUtf8(text)) return false;
    lastData_ = text.data();
    lastSize_ = text.size();
    for (int part = 0; part < 3; ++part) {
      const std::string_view piece = Piece(text, part);
      std::copy(piece.begin(), piece.end(), sample_[part]);
    }
    return true;
  }

 private:
  static constexpr size_t kPiece = 32;
  // The start, middle and end of a text (the whole of a short one in part 0).
  static std::string_view Piece(std::string_view text, int part) {
    if (text.size() <= 3 * kPiece) return part == 0 ? text.substr(0, kPiece * 3) : std::string_view();
    const size_t at[] = {0, text.size() / 2, text.size() - kPiece};
    return text.substr(at[part], kPiece);
  }
  bool SameSample(std::string_view text) const {
    for (int part = 0; part < 3; ++part) {
      const std::string_view piece = Piece(text, part);
      if (!std::equal(piece.begin(), piece.end(), sample_[part])) return false;
    }
    return true;
  }

  const char* lastData_ = nullptr;
  size_t lastSize_ = 0;
  char sample_[3][3 * kPiece] = {};
};

class Checker : public cArchiveEvents {
 public:
  int32_t events = 0;
  Utf8Check name, path, comment;
  void FileFound(int32_t Index, int32_t Total, std::string_view FileName, std::string_view ArchiveExt,
                 double Modified, int32_t, int32_t, int32_t, int32_t, std::string_view Path, int32_t, int32_t,
                 std::string_view Comments) override {
    ++events;
    if (Index != events || Index > Total || Total > 32767) Broken("Index/Total out of range");
    if (!name(FileName) || !path(Path) || !comment(Comments)) Broken("text is not UTF-8");
    if (ArchiveExt.empty()) Broken("ArchiveExt lost");
    if (Modified != Modified) Broken("Modified is NaN");
  }
};

// One platform for the whole process: building one per input cost more
// than most inputs take to list. Its boxes are only counted, so that the
// millions a campaign shows do not pile up.
SimulatedPlatform& SharedPlatform() {
  static SimulatedPlatform* platform = [] {
    auto* p = new SimulatedPlatform;  // never destroyed: inputs run until exit
    p->SimBoxes().KeepRecords(false);
    return p;
  }();
  return *platform;
}

}  // namespace

void ListInput(const uint8_t* data, size_t size, const std::string& ext) {
  if (size > kMaxInput) size = kMaxInput;
  SimulatedPlatform& platform = SharedPlatform();
  const std::string path = "C:\\fuzz." + ext;
  // Replaces the previous input: each run sees its own bytes only.
  platform.SimFiles().AddFileWithContent(path, std::string(reinterpret_cast<const char*>(data), size));
  cArchive reader(platform);
  Checker checker;
  reader.SetListener(&checker);
  reader.ArchiveName = path;
  reader.ArchiveExt = ext;
  reader.FileCount = -99999;
  reader.GetInfo();
  if (checker.events > 0 && checker.events != reader.FileCount) Broken("events differ from FileCount");
  if (reader.FileCount > 32767) Broken("FileCount above 32767");
}

}  // namespace nxfv::fuzz
