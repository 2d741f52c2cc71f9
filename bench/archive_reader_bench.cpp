// cArchive::GetInfo on 32,767-entry archives held by the simulated platform:
// the reader's own cost, without the file system or any output.
#include <benchmark/benchmark.h>

#include <string>

#include "nxfv/archive/archive_reader.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace {

constexpr int kEntries = 32767;

void U16(std::string& o, uint32_t v) {
  o += static_cast<char>(v & 0xFF);
  o += static_cast<char>((v >> 8) & 0xFF);
}
void U32(std::string& o, uint32_t v) {
  U16(o, v & 0xFFFF);
  U16(o, v >> 16);
}
std::string Name(int i) {
  std::string name = "d";
  name += std::to_string(i / 1000);
  name += "/file";
  name += std::to_string(i);
  name += ".txt";
  return name;
}

std::string BigZip() {
  std::string cd;
  for (int i = 1; i <= kEntries; ++i) {
    const std::string name = Name(i);
    cd += "PK\x01\x02";
    U16(cd, 20);
    U16(cd, 20);
    U16(cd, 0);
    U16(cd, 8);
    U16(cd, (10 << 11) | (30 << 5) | (i % 30));
    U16(cd, (44 << 9) | (3 << 5) | 15);
    U32(cd, static_cast<uint32_t>(i) * 2654435761u);
    U32(cd, 100);
    U32(cd, 250);
    U16(cd, static_cast<uint32_t>(name.size()));
    U16(cd, 0);
    U16(cd, 0);
    U16(cd, 0);
    U16(cd, 0);
    U32(cd, 0x20);
    U32(cd, 0);
    cd += name;
  }
  std::string end = "PK\x05\x06";
  U16(end, 0);
  U16(end, 0);
  U16(end, kEntries);
  U16(end, kEntries);
  U32(end, static_cast<uint32_t>(cd.size()));
  U32(end, 0);
  U16(end, 0);
  return cd + end;
}

std::string BigCab() {
  std::string files;
  for (int i = 1; i <= kEntries; ++i) {
    U32(files, 250);
    U32(files, 0);
    U16(files, 0);
    U16(files, (44 << 9) | (3 << 5) | 15);
    U16(files, (10 << 11) | (30 << 5) | (i % 30));
    U16(files, 0x20);
    std::string name = Name(i);
    name[name.find('/')] = '\\';
    files += name;
    files += '\0';
  }
  std::string head = "MSCF";
  U32(head, 0);
  U32(head, static_cast<uint32_t>(44 + files.size()));
  U32(head, 0);
  U32(head, 44);
  U32(head, 0);
  head += "\x03\x01";
  U16(head, 1);
  U16(head, kEntries);
  U16(head, 0);
  U16(head, 0);
  U16(head, 0);
  U32(head, 0);  // the folder: coffCabStart, cCFData, typeCompress
  U16(head, 0);
  U16(head, 1);
  return head + files;
}

class Count : public nxfv::cArchiveEvents {
 public:
  int64_t n = 0;
  void FileFound(int32_t, int32_t, std::string_view FileName, std::string_view, double Modified, int32_t, int32_t,
                 int32_t, int32_t, std::string_view Path, int32_t, int32_t, std::string_view) override {
    n += static_cast<int64_t>(FileName.size() + Path.size()) + (Modified > 0);
  }
};

void ListArchive(benchmark::State& state, const std::string& bytes, const char* ext) {
  nxfv::SimulatedPlatform platform;
  const std::string path = std::string("C:\\big.") + ext;
  platform.SimFiles().AddFileWithContent(path, bytes);
  Count count;
  nxfv::cArchive reader(platform);
  reader.SetListener(&count);
  reader.ArchiveName = path;
  reader.ArchiveExt = ext;
  for (auto _ : state) {
    reader.GetInfo();
    benchmark::DoNotOptimize(count.n);
  }
  state.SetItemsProcessed(state.iterations() * kEntries);
}

void BM_GetInfoZip(benchmark::State& state) { ListArchive(state, BigZip(), "zip"); }
void BM_GetInfoCab(benchmark::State& state) { ListArchive(state, BigCab(), "cab"); }

BENCHMARK(BM_GetInfoZip)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetInfoCab)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
