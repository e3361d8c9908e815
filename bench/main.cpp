#include <benchmark/benchmark.h>
#include <cstdio>
#include <string_view>
#include <vector>

#include "bench/Counting.h"
#include "bench/TableReporter.h"
#include "platform/Memory.h"

// tessaly-bench --counted | --count measured|limit NAME
// tessaly-bench [--quick] [options of the benchmark library, e.g. --benchmark_filter=REGEX]
int main(int argc, char** argv) {
  tessaly::setUpMemory();  // as the programs do
  int result = 0;
  if (tessaly::bench::runCounted(argc, argv, result)) return result;
  std::vector<char*> arguments;
  for (int i = 0; i < argc; ++i) {
    if (i > 0 && std::string_view(argv[i]) == "--quick") {
      tessaly::bench::setQuick(true);
    } else {
      // The library ends the program with its own help.
      if (std::string_view(argv[i]) == "--help")
        std::puts("tessaly-bench [--quick] [options of the library:]");
      arguments.push_back(argv[i]);
    }
  }
  int count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  tessaly::bench::TableReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
