// Rows of edits, undo, redo, saves and starts by chance; each against a model that keeps every content whole.
#include <cstdio>
#include <cstring>
#include <random>

#include "fuzz/steps/StepRow.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr const char* kUsage = "usage: tessaly-step-rows [--rows N] [--seed N]\n";
constexpr std::uint32_t kLongestRow = 48;

int run(int rows, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::size_t steps = 0, acts = 0;
  for (int number = 0; number < rows; ++number) {
    StepRow row(2 + random() % kLongestRow);
    for (std::uint32_t& act : row) act = static_cast<std::uint32_t>(random());
    const StepRowResult result = runStepRow(row);
    steps += result.steps;
    acts += result.done.size();
    if (result.broken.empty()) continue;
    row = shrunk(row);
    const StepRowResult shortest = runStepRow(row);
    std::fprintf(stderr, "broken rule: %s\nrow %d of seed %u, made shorter:", shortest.broken.c_str(), number,
                 seed);
    for (const std::uint32_t act : row) std::fprintf(stderr, " %u", act);
    for (const std::string& what : shortest.done) std::fprintf(stderr, "\n  %s", what.c_str());
    std::fputc('\n', stderr);
    return 1;
  }
  std::printf("%d rows, %zu steps, %zu acts: no rule broken\n", rows, steps, acts);
  return 0;
}

}  // namespace
}  // namespace tessaly

int main(int argc, char** argv) {
  int rows = 1000;
  int seed = 1;
  for (int i = 1; i < argc; i += 2) {
    int* const value = std::strcmp(argv[i], "--rows") == 0   ? &rows
                       : std::strcmp(argv[i], "--seed") == 0 ? &seed
                                                             : nullptr;
    if (value == nullptr || i + 1 == argc) {
      std::fputs(tessaly::kUsage, stderr);
      return 2;
    }
    *value = tessaly::parseInt(argv[i + 1]);
  }
  return tessaly::run(rows, static_cast<std::uint32_t>(seed));
}
