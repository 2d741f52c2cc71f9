#include "fuzz_input.h"

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

// Whether text is valid UTF-8; remembers the last text checked, since a
// damaged directory repeats the same long name thousands of times.
class Utf8Check {
 public:
  bool operator()(std::string_view text) {
    if (text == last_) return true;
    if (!IsValidUtf8(text)) return false;
    last_.assign(text);
    return true;
  }

 private:
  std::string last_;
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
