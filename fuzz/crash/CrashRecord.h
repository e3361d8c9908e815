#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "fuzz/crash/CrashSite.h"

namespace tessaly {

// What the worker is at, in memory that both processes map: it outlives the worker.
struct CrashRecord {
  static constexpr int kBetweenSteps = -1;

  std::atomic<int> only{-1};             // a CrashStep when nothing else is to be done
  std::atomic<int> step{kBetweenSteps};  // a CrashStep while one runs
  std::atomic<int> pending{0};           // the generation that it writes
  std::atomic<int> started{0};           // steps of the present worker
  std::atomic<int> failed{0};            // steps that did not report done
  std::atomic<int> generation{0};        // the last one given out
  std::array<std::atomic<int>, kCrashSteps.size()> committed{};
  std::array<std::atomic<std::int64_t>, kCrashSteps.size()> microseconds{};  // a step took, on average
};

}  // namespace tessaly
