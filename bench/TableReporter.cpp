#include "bench/TableReporter.h"

#include <cstdio>
#include <string>

#include "bench/Table.h"

namespace tessaly::bench {
namespace {

constexpr const char* kLine = "%-72s %12s %12s %7s %7s  %s\n";

std::string text(int digits, double value, const char* unit = "") {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.*f%s", digits, value, unit);
  return buffer;
}

std::string figure(double value, const std::string& unit) {
  if (unit != kSeconds) return text(1, value, " ") + unit;
  if (value >= 1) return text(2, value, " s");
  if (value >= 1e-3) return text(2, value * 1e3, " ms");
  return value >= 1e-6 ? text(2, value * 1e6, " us") : text(1, value * 1e9, " ns");
}

// The name as registered, without what the library appends ("/iterations:1").
std::string plainName(const benchmark::BenchmarkReporter::Run& run) { return run.run_name.function_name; }

}  // namespace

bool TableReporter::ReportContext(const Context& context) {
  std::printf("%d processors at %.0f MHz", context.cpu_info.num_cpus,
              context.cpu_info.cycles_per_second / 1e6);
#ifndef NDEBUG
  std::printf("; built for debugging, so the figures say little");
#endif
  std::printf("\n");
  std::printf(kLine, "name", "measured", "limit", "ratio", "goal", "holds");
  return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    ++lines_;
    if (run.error_occurred) {
      std::printf("%-72s %s\n", plainName(run).c_str(), run.error_message.c_str());
      continue;
    }
    const double measured = run.counters.at("measured");
    const double limit = run.counters.at("limit");
    const double goal = run.counters.at("goal");
    const bool holds = measured <= limit * goal;
    if (holds) ++holding_;
    std::printf(kLine, plainName(run).c_str(), figure(measured, run.report_label).c_str(),
                figure(limit, run.report_label).c_str(), text(2, measured / limit).c_str(),
                text(2, goal).c_str(), holds ? "yes" : "NO");
  }
  std::fflush(stdout);
}

void TableReporter::Finalize() { std::printf("%zu of %zu goals hold\n", holding_, lines_); }

}  // namespace tessaly::bench
