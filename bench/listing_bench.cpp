// Listing a very large folder end to end through the control, on the
// simulated platform so that no disk or kernel time is in the figures:
// enumeration, the visibility tests, one item and one row per entry, the
// shown column texts, the sort keys and the sort.
//
// The folders C:\big hold 10,000 and 100,000 entries: about 1% folders,
// twenty extensions (three of them with per-file icons, three unknown to
// the type registry), sizes from empty to beyond 4 GiB, times spread over
// 25 years, a few hidden and system entries, a few numeric names and 8.3
// names for the long ones.
//
// Cases:
//   BM_List/N            the default columns, a fresh control per listing
//   BM_ListAllColumns/N  every column shown, so every text is formatted
//   BM_ResortBySize/N    an already listed view re-sorted by size, descending
//
// Besides the times, each case reports the heap bytes per entry that the
// listed view keeps (glibc's in-use heap after minus before the listing),
// and the program ends with the 100,000 : 10,000 time ratio of each case
// (the listing should scale about linearly: target at most 12x).
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "nxfv/control/file_viewer.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace {

using nxfv::FileViewer;
using nxfv::SimulatedPlatform;

constexpr int32_t kAllColumns = 2047 | 0x1FF800;
constexpr const char* kFolder = "C:\\big";

struct Ext {
  const char* ext;
  const char* typeName;  // nullptr: not in the type registry
};
constexpr Ext kExtensions[] = {
    {"txt", "Text Document"}, {"doc", "Word Document"},   {"pdf", "PDF Document"},  {"jpg", "JPEG Image"},
    {"png", "PNG Image"},     {"mp3", "MP3 Audio"},       {"zip", "ZIP Archive"},   {"exe", "Application"},
    {"dll", "Library"},       {"cpp", "C++ Source"},      {"h", "C Header"},        {"html", "HTML Document"},
    {"xml", "XML Document"},  {"json", "JSON Document"},  {"log", "Log File"},      {"ini", "Settings"},
    {"lnk", "Shortcut"},      {"ico", "Icon"},            {"dat", nullptr},         {"bak", nullptr},
};
constexpr const char* kStems[] = {"report", "IMG_", "track", "Notes ", "backup-", "data", "Rechnung_",
                                  "x",      "setup", "photo", "Projekt ", "build_", "readme", "ÄÖÜ-"};

// 100-ns ticks since 1601 of 2000-01-01 and the span of 25 years.
constexpr uint64_t kYear2000 = 125911584000000000ULL;
constexpr uint64_t kTwentyFiveYears = 25ULL * 365 * 24 * 3600 * 10'000'000ULL;

std::shared_ptr<SimulatedPlatform> MakePlatform(int32_t entries) {
  auto p = std::make_shared<SimulatedPlatform>();
  for (const Ext& e : kExtensions)
    if (e.typeName) p->SimTypes().RegisterType(e.ext, std::string(e.ext) + "file", e.typeName);
  auto& fs = p->SimFiles();
  fs.AddFolder(kFolder);
  std::mt19937_64 rng(0x5eed + static_cast<uint64_t>(entries));
  std::uniform_int_distribution<uint64_t> when(0, kTwentyFiveYears);
  std::uniform_real_distribution<double> logSize(0.0, 33.0);  // up to 2^33 bytes = 8 GiB
  const std::string base = std::string(kFolder) + "\\";
  for (int32_t i = 0; i < entries; ++i) {
    const uint64_t r = rng();
    std::string name;
    if (i % 997 == 500) {
      name = std::to_string(1900 + i);  // numeric names get prefixed keys
    } else {
      name = kStems[r % std::size(kStems)] + std::to_string(i);
    }
    nxfv::FindData* d = nullptr;
    if (i % 100 == 37) {
      d = &fs.AddFolder(base + name);
    } else {
      const Ext& e = kExtensions[(r >> 8) % std::size(kExtensions)];
      name += std::string(".") + e.ext;
      uint32_t attributes = nxfv::kAttrArchive;
      if (i % 500 == 3) attributes |= nxfv::kAttrHidden;
      if (i % 700 == 5) attributes |= nxfv::kAttrSystem;
      if (i % 50 == 7) attributes |= nxfv::kAttrReadOnly;
      const auto size = static_cast<uint64_t>(std::exp2(logSize(rng))) - 1;
      d = &fs.AddFile(base + name, size, attributes);
    }
    d->lastWriteTime = kYear2000 + when(rng);
    d->creationTime = d->lastWriteTime - std::min(d->lastWriteTime - kYear2000, when(rng) / 4);
    d->lastAccessTime = d->lastWriteTime + when(rng) / 8;
    // Long names carry a generated 8.3 name, as NTFS gives them.
    if (name.size() > 12) d->shortName = "ENTRY~" + std::to_string(i % 9 + 1) + ".DAT";
  }
  return p;
}

// One platform per size, built once: building 100,000 entries is not
// part of any case.
std::shared_ptr<SimulatedPlatform> PlatformFor(int32_t entries) {
  static std::map<int32_t, std::shared_ptr<SimulatedPlatform>> made;
  auto& p = made[entries];
  if (!p) p = MakePlatform(entries);
  return p;
}

size_t HeapInUse() { return mallinfo2().uordblks; }

// A listing that went wrong shows an error box or lacks rows; the figures
// would then be meaningless, so the case stops with a message.
bool CheckListed(benchmark::State& state, SimulatedPlatform& p, FileViewer& viewer, int32_t entries) {
  if (!p.SimBoxes().Shown().empty()) {
    state.SkipWithError("the listing showed an error box");
    return false;
  }
  // The default filters show every entry, hidden and system ones included,
  // plus the go-up row.
  if (viewer.ListView1().RowCount() != static_cast<size_t>(entries) + 1) {
    state.SkipWithError("the view does not hold one row per entry");
    return false;
  }
  return true;
}

std::shared_ptr<FileViewer> NewViewer(const std::shared_ptr<SimulatedPlatform>& p, bool allColumns) {
  auto viewer = FileViewer::Create(p);
  if (allColumns) viewer->setViewOptions(kAllColumns);
  return viewer;
}

void RunListing(benchmark::State& state, bool allColumns) {
  const auto entries = static_cast<int32_t>(state.range(0));
  auto p = PlatformFor(entries);
  double heapPerEntry = 0;
  for (auto _ : state) {
    state.PauseTiming();
    p->SimIconList().ClearLookups();  // the simulation records every lookup
    auto viewer = NewViewer(p, allColumns);
    const size_t before = HeapInUse();
    state.ResumeTiming();

    viewer->setCurrentfolder(kFolder);

    state.PauseTiming();
    heapPerEntry = static_cast<double>(HeapInUse() - before) / entries;
    const bool ok = CheckListed(state, *p, *viewer, entries);
    viewer.reset();  // tearing down is not part of the listing
    malloc_trim(0);  // nor is the allocator's deferred clean-up of what it freed
    state.ResumeTiming();
    if (!ok) break;
  }
  state.SetItemsProcessed(state.iterations() * entries);
  state.counters["heapB/entry"] = heapPerEntry;
}

void BM_List(benchmark::State& state) { RunListing(state, false); }
void BM_ListAllColumns(benchmark::State& state) { RunListing(state, true); }

void BM_ResortBySize(benchmark::State& state) {
  const auto entries = static_cast<int32_t>(state.range(0));
  auto p = PlatformFor(entries);
  auto viewer = NewViewer(p, false);
  viewer->setCurrentfolder(kFolder);
  if (!CheckListed(state, *p, *viewer, entries)) return;
  for (auto _ : state) {
    state.PauseTiming();
    viewer->SetSortColumns({{"nam", false}});
    state.ResumeTiming();
    viewer->SetSortColumns({{"siz", true}});
  }
  state.SetItemsProcessed(state.iterations() * entries);
}

BENCHMARK(BM_List)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_ListAllColumns)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_ResortBySize)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// Keeps the real time per iteration of every run so that the scaling
// ratios can be printed at the end.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      // "BM_List/10000/min_time:2.000" is kept as "BM_List/10000".
      std::string name = run.benchmark_name();
      const auto first = name.find('/');
      if (const auto second = name.find('/', first + 1); first != std::string::npos && second != std::string::npos)
        name.resize(second);
      times_[name] = run.GetAdjustedRealTime();
    }
    ConsoleReporter::ReportRuns(runs);
  }

  // Returns false when a ratio is over the target.
  bool PrintRatios() const {
    bool within = true;
    std::printf("\nScaling, time of 100,000 entries over time of 10,000 (target <= 12x):\n");
    for (const char* name : {"BM_List", "BM_ListAllColumns", "BM_ResortBySize"}) {
      const auto small = times_.find(std::string(name) + "/10000");
      const auto large = times_.find(std::string(name) + "/100000");
      if (small == times_.end() || large == times_.end() || small->second <= 0) continue;
      const double ratio = large->second / small->second;
      std::printf("  %-20s %6.2fx  %s\n", name, ratio, ratio <= 12.0 ? "ok" : "OVER TARGET");
      within = within && ratio <= 12.0;
    }
    std::fflush(stdout);
    return within;
  }

 private:
  std::map<std::string, double> times_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintRatios();
  benchmark::Shutdown();
  return 0;
}
