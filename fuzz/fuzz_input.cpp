#include "fuzz_input.h"

#include <cstdio>
#include <cstdlib>

#include "nxfv/archive/archive_reader.h"
#include "nxfv/platform/sim/simulated_platform.h"
#include "nxfv/platform/utf8.h"

namespace nxfv::fuzz {

namespace {

[[noreturn]] void Broken(const char* what) {
  std::fprintf(stderr, "broken promise: %s\n", what);
  std::abort();
}

// Whether text is valid UTF-8; remembers the last text checked, since a
// damaged directory repeats the same long name thousands of times.
class Utf8Check {
 public:
  bool operator()(const std::string& text) {
    if (text == last_) return true;
    if (!IsValidUtf8(text)) return false;
    last_ = text;
    return true;
  }

 private:
  std::string last_;
};

class Checker : public cArchiveEvents {
 public:
  int32_t events = 0;
  Utf8Check name, path, comment;
  void FileFound(int32_t Index, int32_t Total, std::string FileName, std::string ArchiveExt, double Modified,
                 int32_t, int32_t, int32_t, int32_t, std::string Path, int32_t, int32_t,
                 std::string Comments) override {
    ++events;
    if (Index != events || Index > Total || Total > 32767) Broken("Index/Total out of range");
    if (!name(FileName) || !path(Path) || !comment(Comments)) Broken("text is not UTF-8");
    if (ArchiveExt.empty()) Broken("ArchiveExt lost");
    if (Modified != Modified) Broken("Modified is NaN");
  }
};

}  // namespace

void ListInput(const uint8_t* data, size_t size, const std::string& ext) {
  if (size > kMaxInput) size = kMaxInput;
  SimulatedPlatform platform;
  platform.SimFiles().AddFileWithContent("C:\\fuzz." + ext, std::string(reinterpret_cast<const char*>(data), size));
  cArchive reader(platform);
  Checker checker;
  reader.SetListener(&checker);
  reader.ArchiveName = "C:\\fuzz." + ext;
  reader.ArchiveExt = ext;
  reader.FileCount = -99999;
  reader.GetInfo();
  if (checker.events > 0 && checker.events != reader.FileCount) Broken("events differ from FileCount");
  if (reader.FileCount > 32767) Broken("FileCount above 32767");
}

}  // namespace nxfv::fuzz
