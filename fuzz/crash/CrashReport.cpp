#include "fuzz/crash/CrashReport.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace tessaly {
namespace {

// Each folder may hold what the last kill in it left: the next write there removes it.
constexpr int kMostInAFolder = 1;

}  // namespace

void CrashReport::wrong(const std::string& text) {
  ++wrongs_;
  std::fprintf(stderr, "WRONG: %s\n", text.c_str());
}

// The count of leftovers.
int CrashReport::lookAtFiles() {
  int leftovers = 0;
  std::set<std::string> folders;
  for (const CrashStepRow& row : kCrashSteps) {
    const auto index = static_cast<std::size_t>(row.step);
    const std::string file = CrashSite::path(row.step);
    const auto generation = site_.generation(row.step);
    const bool running = record_.step == static_cast<int>(row.step);
    if (!generation) {
      wrong(file + " is no whole file");
    } else if (*generation != record_.committed[index] && !(running && *generation == record_.pending)) {
      wrong(file + " holds generation " + std::to_string(*generation) + " in place of " +
            std::to_string(record_.committed[index]));
    }
    if (running) {
      ++counts_[index].kills;
      ++(generation == record_.committed[index] ? counts_[index].old : counts_[index].fresh);
    }
    if (generation) record_.committed[index] = *generation;
    if (!folders.insert(file.substr(0, file.find_last_of('\\'))).second) continue;
    const CrashSite::Strays strays = site_.strays(row.step);
    leftovers += strays.temporary;
    if (strays.temporary > kMostInAFolder) wrong("temporary files pile up beside " + file);
    if (strays.unknown > 0) wrong("an unknown file beside " + file);
  }
  mostLeftovers_ = std::max(mostLeftovers_, leftovers);
  return leftovers;
}

void CrashReport::lookAtKilled() {
  if (record_.step == CrashRecord::kBetweenSteps) ++between_;
  static_cast<void>(lookAtFiles());
  if (record_.failed > 0) wrong("a step failed");
}

void CrashReport::lookAtFinished() {
  if (lookAtFiles() > 0) wrong("temporary files are left after a run that nobody killed");
  if (record_.failed > 0) wrong("a step failed");
}

void CrashReport::print() const {
  std::printf("%-16s %8s %8s %8s %12s\n", "killed in", "kills", "old", "new", "average ms");
  int kills = between_;
  for (const CrashStepRow& row : kCrashSteps) {
    const auto index = static_cast<std::size_t>(row.step);
    const Count& count = counts_[index];
    kills += count.kills;
    std::printf("%-16s %8d %8d %8d %12.1f\n", row.name, count.kills, count.old, count.fresh,
                static_cast<double>(record_.microseconds[index]) / 1000.0);
  }
  std::printf("%-16s %8d\n", "between two", between_);
  std::printf("%d kills, %d wrongs; %d temporary files at once at most, none after the next whole run\n",
              kills, wrongs_, mostLeftovers_);
}

}  // namespace tessaly
