#include "bench/Table.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include "bench/Counting.h"
#include "bench/TableReporter.h"

namespace tessaly::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kShortestSample = 1e-3;   // seconds
constexpr std::size_t kFewestSamples = 5;  // of each side
constexpr std::size_t kMostSamples = 101;

bool quickRun = false;
Clock::time_point sampleStart;

double timeOf(const std::function<void()>& side, std::size_t runs) {
  sampleStart = Clock::now();
  for (std::size_t run = 0; run < runs; ++run) side();
  return std::chrono::duration<double>(Clock::now() - sampleStart).count() / static_cast<double>(runs);
}

double median(std::vector<double>& samples) {
  const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
  std::nth_element(samples.begin(), middle, samples.end());
  return *middle;
}

struct Side {
  const std::function<void()>& run;
  const std::function<void()>& reset;
  std::size_t runs = 1;
  std::vector<double> samples;

  double sample() {
    if (reset) reset();
    samples.push_back(timeOf(run, runs));
    return samples.back();
  }

  // One run to warm up, and one that tells how many runs make a sample.
  double calibrate() {
    sample();
    const double once = std::max(sample(), 1e-9);
    if (!reset && once < kShortestSample) runs = static_cast<std::size_t>(kShortestSample / once) + 1;
    samples.clear();
    return once * static_cast<double>(runs);
  }
};

void report(benchmark::State& state, const Figures& figures, double goal, const std::string& unit) {
  state.counters["measured"] = figures.measured;
  state.counters["limit"] = figures.limit;
  state.counters["goal"] = goal;
  state.SetLabel(unit);
}

void comparePair(benchmark::State& state, const Pair& pair) {
  if (pair.prepare) pair.prepare();
  Side measured{pair.measured, pair.reset, 1, {}};
  Side limit{pair.limit, pair.reset, 1, {}};
  const double round = limit.calibrate() + measured.calibrate();
  const double budget = quickRun ? 0.6 : 3.0;  // seconds for the samples
  const auto fitting = static_cast<std::size_t>(budget / round);
  const std::size_t samples = std::clamp(fitting, quickRun ? std::size_t{3} : kFewestSamples, kMostSamples);
  for (auto _ : state) {
    for (std::size_t sample = 0; sample < samples; ++sample) {
      Side& first = sample % 2 == 0 ? limit : measured;
      Side& second = sample % 2 == 0 ? measured : limit;
      first.sample();
      second.sample();
    }
  }
  report(state,
         {(median(measured.samples) - pair.measuredWait) / pair.measuredItems,
          median(limit.samples) / pair.limitItems},
         pair.goal, kSeconds);
}

}  // namespace

void timeFromHere() { sampleStart = Clock::now(); }

double secondsOf(const std::function<void()>& run) {
  std::vector<double> samples;
  for (std::size_t sample = 0; sample < kFewestSamples; ++sample) samples.push_back(timeOf(run, 1));
  return median(samples);
}

bool addPair(Pair pair) {
  if (pair.oneThread) keepCounted(pair);
  const std::string name = pair.name;
  benchmark::RegisterBenchmark(name.c_str(), [pair = std::move(pair)](benchmark::State& state) {
    comparePair(state, pair);
  })->Iterations(1);
  return true;
}

bool addFigure(Figure figure) {
  const std::string name = figure.name;
  benchmark::RegisterBenchmark(name.c_str(), [figure = std::move(figure)](benchmark::State& state) {
    Figures taken;
    for (auto _ : state) taken = figure.take();
    report(state, taken, figure.goal, figure.unit);
  })->Iterations(1);
  return true;
}

bool quick() { return quickRun; }

void setQuick(bool on) { quickRun = on; }

const std::filesystem::path& scratchFolder() {
  struct Scratch {
    std::filesystem::path path;
    Scratch() {
      std::string pattern = (std::filesystem::temp_directory_path() / "tessaly-bench-XXXXXX").string();
      if (mkdtemp(pattern.data()) == nullptr) {
        std::perror(pattern.c_str());
        std::exit(1);
      }
      path = pattern;
    }
    ~Scratch() {
      std::error_code ignored;
      std::filesystem::remove_all(path, ignored);
    }
  };
  static const Scratch scratch;
  return scratch.path;
}

void keep(const void* result) { benchmark::DoNotOptimize(result); }

}  // namespace tessaly::bench
