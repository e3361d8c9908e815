#include <array>
#include <cstdio>
#include <cstdlib>

#include "dictionary/InterfaceFile.h"
#include "tests/support/BuildPaths.h"
#include "tests/support/PlantedFaults.h"

// tessaly-planted-faults [FAULTS [FIRST]]: faults planted one by one in the macros of the sample site, and
// how many of them a check finds under the right rule. Each is made of its number alone.
int main(int count, char** words) {
  using namespace tessaly;
  const unsigned long faults = count > 1 ? std::strtoul(words[1], nullptr, 10) : 1'000;
  const unsigned long first = count > 2 ? std::strtoul(words[2], nullptr, 10) : 0;
  const SiteRoot root{sourcePath("site")};
  FunctionDictionary dictionary;
  loadFunctionDictionary(root, dictionary, {});
  DecodingLists lists(root);
  PlantedFaults planted(root, "c:\\programme\\RV48\\appli", dictionary, lists);
  std::array<unsigned long, kCheckRules> made{}, missed{};
  unsigned long all = 0, allMissed = 0;
  for (unsigned long number = first; all < faults; ++number) {
    const auto result = planted.plant(static_cast<unsigned>(number));
    if (!result) continue;
    const auto rule = static_cast<std::size_t>(result->rule);
    ++made[rule];
    ++all;
    if (result->found) continue;
    ++missed[rule];
    ++allMissed;
    std::printf("%lu: %s missed, command %s\n", number, infoOf(result->rule).name.data(),
                result->where.c_str());
  }
  for (std::size_t rule = 0; rule < kCheckRules; ++rule)
    std::printf("%-18s %5lu planted, %lu missed\n", checkRules()[rule].name.data(), made[rule], missed[rule]);
  const double share = 100.0 * static_cast<double>(all - allMissed) / static_cast<double>(all);
  std::printf("%lu faults: %.2f %% found under the right rule\n", all, share);
  return share >= 99 ? EXIT_SUCCESS : EXIT_FAILURE;
}
