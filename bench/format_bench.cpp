// Cost of the column text routines per call, over a million varied inputs
// each (a large folder listing formats this many values per column).
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "nxfv/columns/formatting.h"
#include "nxfv/platform/date.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

constexpr int64_t kCalls = 1000000;

template <class T, class Make>
std::vector<T> Inputs(Make make) {
  std::mt19937_64 rng(42);
  std::vector<T> v;
  v.reserve(kCalls);
  for (int64_t i = 0; i < kCalls; ++i) v.push_back(make(rng));
  return v;
}

const std::vector<double>& Sizes() {
  static const auto v = Inputs<double>([](std::mt19937_64& r) {
    return static_cast<double>(r() >> (r() % 60));  // all magnitudes, 0 to 2^64
  });
  return v;
}

const std::vector<double>& Dates() {
  static const auto v = Inputs<double>([](std::mt19937_64& r) {
    return DateSerial(1980, 1, 1) + static_cast<double>(r() % (50ULL * 365 * 86400)) / 86400.0;
  });
  return v;
}

const std::vector<uint32_t>& Attributes() {
  static const auto v = Inputs<uint32_t>([](std::mt19937_64& r) { return static_cast<uint32_t>(r()); });
  return v;
}

template <class Input, class Fn>
void Run(benchmark::State& state, const std::vector<Input>& inputs, Fn fn) {
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(fn(inputs[i]));
    if (++i == inputs.size()) i = 0;
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_SizeText(benchmark::State& state) {
  SimulatedPlatform p;
  const LocaleFormats& f = p.Locale().Formats();
  Run(state, Sizes(), [&](double b) { return SizeText(f, b); });
}

void BM_SizeTextThroughPlatform(benchmark::State& state) {
  SimulatedPlatform p;
  Run(state, Sizes(), [&](double b) { return SizeText(p, b); });
}

void BM_GroupedNumberText(benchmark::State& state) {
  SimulatedPlatform p;
  const LocaleFormats& f = p.Locale().Formats();
  Run(state, Sizes(), [&](double b) { return GroupedNumberText(f, b); });
}

void BM_DateText(benchmark::State& state) {
  SimulatedPlatform p;
  const LocaleFormats& f = p.Locale().Formats();
  Run(state, Dates(), [&](double d) { return DateText(f, d); });
}

void BM_TimeText(benchmark::State& state) {
  SimulatedPlatform p;
  const LocaleFormats& f = p.Locale().Formats();
  Run(state, Dates(), [&](double d) { return TimeText(f, d); });
}

void BM_DateTimeText(benchmark::State& state) {
  SimulatedPlatform p;
  const LocaleFormats& f = p.Locale().Formats();
  Run(state, Dates(), [&](double d) { return DateTimeText(f, d); });
}

void BM_ParseDateTimeText(benchmark::State& state) {
  SimulatedPlatform p;
  const LocaleFormats& f = p.Locale().Formats();
  static const std::vector<std::string> texts = [&] {
    std::vector<std::string> t;
    t.reserve(Dates().size());
    for (double d : Dates()) t.push_back(DateTimeText(f, d));
    return t;
  }();
  Run(state, texts, [&](const std::string& s) { return DateTextSecondsSince1980(f, s); });
}

void BM_GetAttrString(benchmark::State& state) {
  Run(state, Attributes(), [](uint32_t a) { return GetAttrString(a); });
}

void BM_CrcText(benchmark::State& state) {
  Run(state, Attributes(), [](uint32_t c) { return CrcText(static_cast<int32_t>(c)); });
}

void BM_NiceCase(benchmark::State& state) {
  SimulatedPlatform p;
  static const std::vector<std::string> names = {"README.TXT", "readme.txt", "ReadMe.txt", "setup.exe",
                                                 "ÄRGER.DOC", "Projekt Übersicht.xlsx"};
  static const auto picks = Inputs<std::string>([](std::mt19937_64& r) { return names[r() % names.size()]; });
  Run(state, picks, [&](const std::string& n) { return NiceCase(p, n); });
}

BENCHMARK(BM_SizeText)->Iterations(kCalls);
BENCHMARK(BM_SizeTextThroughPlatform)->Iterations(kCalls);
BENCHMARK(BM_GroupedNumberText)->Iterations(kCalls);
BENCHMARK(BM_DateText)->Iterations(kCalls);
BENCHMARK(BM_TimeText)->Iterations(kCalls);
BENCHMARK(BM_DateTimeText)->Iterations(kCalls);
BENCHMARK(BM_ParseDateTimeText)->Iterations(kCalls);
BENCHMARK(BM_GetAttrString)->Iterations(kCalls);
BENCHMARK(BM_CrcText)->Iterations(kCalls);
BENCHMARK(BM_NiceCase)->Iterations(kCalls);

}  // namespace
}  // namespace nxfv

BENCHMARK_MAIN();
