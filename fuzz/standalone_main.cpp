// Feeds files (or every file of a folder) to the fuzz target when the
// compiler has no libFuzzer: a way to replay a corpus or a crash with gcc.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

void RunFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::vector<char> bytes;
  bytes.reserve(nxfv::fuzz::kMaxInput);
  std::istreambuf_iterator<char> it(in), end;
  for (; it != end && bytes.size() < nxfv::fuzz::kMaxInput; ++it) bytes.push_back(*it);
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path arg(argv[i]);
    if (std::filesystem::is_directory(arg)) {
      for (const auto& entry : std::filesystem::recursive_directory_iterator(arg)) {
        if (entry.is_regular_file()) {
          RunFile(entry.path());
          ++count;
        }
      }
    } else {
      RunFile(arg);
      ++count;
    }
  }
  std::printf("ran %zu inputs\n", count);
  return 0;
}
