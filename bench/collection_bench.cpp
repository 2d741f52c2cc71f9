// The keyed collection at the size of a very large folder listing:
// 1,000,000 items added at the end under distinct random 12-character keys,
// each looked up once by key, then 10,000 removed from the middle. The
// baseline does the same inserts, lookups and removals on
// std::unordered_map<std::string, int>.
//
// Time comes from Google Benchmark. Peak memory is measured first, before
// this process has allocated anything large: each case runs once in a
// forked child, whose peak resident size (ru_maxrss) the parent reads; a
// child that only makes the keys gives the share of the keys themselves.
// Pass --no_memory to skip that part.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "nxfv/model/file_collection.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace {

constexpr int kItems = 1'000'000;
constexpr int kRemovals = 10'000;

// Distinct by construction, so that no set of seen keys inflates the
// memory figures: i times an odd constant is a bijection on 60 bits, spread
// over ten characters of six bits each; two more characters are random.
std::vector<std::string> MakeKeys() {
  std::mt19937_64 rng(20240315);
  static const char kAlphabet[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-";
  constexpr uint64_t kMask60 = (uint64_t{1} << 60) - 1;
  std::vector<std::string> keys;
  keys.reserve(kItems);
  for (uint64_t i = 0; i < kItems; ++i) {
    uint64_t bits = (i * 0x9E3779B97F4A7C15ull) & kMask60;
    const uint64_t r = rng();
    std::string k(12, ' ');
    for (size_t c = 0; c < 10; ++c, bits >>= 6) k[c] = kAlphabet[bits & 63];
    k[10] = kAlphabet[r & 63];
    k[11] = kAlphabet[(r >> 6) & 63];
    keys.push_back(std::move(k));
  }
  return keys;
}

const std::vector<std::string>& Keys() {
  static const std::vector<std::string> keys = MakeKeys();
  return keys;
}

// Returns a checksum so the work cannot be optimised away.
int64_t RunCollection(const std::vector<std::string>& keys, nxfv::PlatformRef platform,
                      nxfv::COMPARE_MODE mode = nxfv::COMPARE_MODE::BinaryCompare) {
  auto c = nxfv::NxFileCollection::Create(std::move(platform));
  nxfv::NxFileCollection::Internal in(*c);
  in.SetCompareMode(mode);
  for (int i = 0; i < kItems; ++i) in.Add(nxfv::Variant(int32_t{i}), keys[static_cast<size_t>(i)]);
  int64_t sum = 0;
  for (int i = 0; i < kItems; ++i) sum += in.Find(keys[static_cast<size_t>(i)]).position;
  for (int i = 0; i < kRemovals; ++i) in.Remove(nxfv::Variant(int32_t{kItems / 2}));
  return sum + c->Count();
}

int64_t RunMap(const std::vector<std::string>& keys) {
  std::unordered_map<std::string, int> m;
  for (int i = 0; i < kItems; ++i) m.emplace(keys[static_cast<size_t>(i)], i);
  int64_t sum = 0;
  for (int i = 0; i < kItems; ++i) sum += m.find(keys[static_cast<size_t>(i)])->second;
  // The same items the collection removes: the ones at the middle positions.
  for (int i = 0; i < kRemovals; ++i) m.erase(keys[static_cast<size_t>(kItems / 2 - 1 + i)]);
  return sum + static_cast<int64_t>(m.size());
}

void BM_NxFileCollection(benchmark::State& state) {
  const auto& keys = Keys();
  auto platform = std::make_shared<nxfv::SimulatedPlatform>();
  const auto mode = static_cast<nxfv::COMPARE_MODE>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(RunCollection(keys, platform, mode));
  state.SetItemsProcessed(state.iterations() * kItems);
}
// Argument: the compare mode (0 binary, 1 text).
BENCHMARK(BM_NxFileCollection)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(3.0);

void BM_UnorderedMapBaseline(benchmark::State& state) {
  const auto& keys = Keys();
  for (auto _ : state) benchmark::DoNotOptimize(RunMap(keys));
  state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(BM_UnorderedMapBaseline)->Unit(benchmark::kMillisecond)->MinTime(3.0);

enum class Case { KeysOnly, Collection, Map };

// Peak resident size in KiB of a child that runs one case; -1 on failure.
long PeakKib(Case which) {
  const pid_t pid = fork();
  if (pid < 0) return -1;
  if (pid == 0) {
    const std::vector<std::string> keys = MakeKeys();
    int64_t sum = 0;
    if (which == Case::Collection) sum = RunCollection(keys, std::make_shared<nxfv::SimulatedPlatform>());
    if (which == Case::Map) sum = RunMap(keys);
    benchmark::DoNotOptimize(sum);
    _exit(0);
  }
  int status = 0;
  struct rusage usage {};
  if (wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return -1;
  return usage.ru_maxrss;
}

void ReportMemory() {
  const long keys = PeakKib(Case::KeysOnly);
  const long coll = PeakKib(Case::Collection);
  const long map = PeakKib(Case::Map);
  std::printf("Peak resident memory (KiB): keys only %ld, NxFileCollection %ld, unordered_map %ld\n", keys, coll, map);
  if (keys > 0 && coll > keys && map > keys) {
    std::printf("Above the keys: NxFileCollection %ld, unordered_map %ld, ratio %.2f (whole process %.2f)\n",
                coll - keys, map - keys, static_cast<double>(coll - keys) / static_cast<double>(map - keys),
                static_cast<double>(coll) / static_cast<double>(map));
  }
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  bool memory = true;
  std::vector<char*> rest;
  for (int i = 0; i < argc; ++i) {
    if (std::strcmp(argv[i], "--no_memory") == 0) {
      memory = false;
    } else {
      rest.push_back(argv[i]);
    }
  }
  if (memory) ReportMemory();
  int n = static_cast<int>(rest.size());
  benchmark::Initialize(&n, rest.data());
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
