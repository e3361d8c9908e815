#pragma once

#include <benchmark/benchmark.h>
#include <cstddef>
#include <vector>

namespace tessaly::bench {

void setQuick(bool on);

// Prints the table, a line as soon as its figures are there, and at the end how many goals hold.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  std::size_t lines_ = 0, holding_ = 0;
};

}  // namespace tessaly::bench
