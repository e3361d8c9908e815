#include "bench/Counting.h"

#include <cstdio>
#include <string_view>
#include <vector>

namespace tessaly::bench {
namespace {

std::vector<Pair>& countedPairs() {
  static std::vector<Pair> pairs;
  return pairs;
}

}  // namespace

void keepCounted(const Pair& pair) { countedPairs().push_back(pair); }

// The tool switches its counting on here, by name.
[[gnu::noinline]] void countedRun(const std::function<void()>& side) { side(); }

namespace {

int runSide(std::string_view side, std::string_view name) {
  for (const Pair& pair : countedPairs()) {
    if (pair.name != name) continue;
    const std::function<void()>& run = side == "limit" ? pair.limit : pair.measured;
    if (pair.prepare) pair.prepare();
    if (pair.reset) pair.reset();
    run();
    if (pair.reset) pair.reset();
    countedRun(run);
    return 0;
  }
  std::fprintf(stderr, "no line of this name\n");
  return 2;
}

}  // namespace

bool runCounted(int argc, char** argv, int& result) {
  const std::string_view option = argc > 1 ? argv[1] : "";
  if (option == "--counted") {
    for (const Pair& pair : countedPairs()) std::printf("%s\n", pair.name.c_str());
    result = 0;
    return true;
  }
  if (option != "--count" || argc != 4) return false;
  result = runSide(argv[2], argv[3]);
  return true;
}

}  // namespace tessaly::bench
