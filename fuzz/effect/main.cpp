#include <cstdio>
#include <cstdlib>

#include "fuzz/effect/RandomMacros.h"

// tessaly-effect-macros [MACROS [FIRST]]: random macros over the sample dictionary, carried out by the
// simulated panel, against what is told of their effect; every twentieth one step by step. Each is made from
// its number alone.
int main(int count, char** words) {
  const unsigned long macros = count > 1 ? std::strtoul(words[1], nullptr, 10) : 100'000;
  const unsigned long first = count > 2 ? std::strtoul(words[2], nullptr, 10) : 0;
  const tessaly::SampleDictionary sample;
  tessaly::RandomMacros::Seen seen;
  for (unsigned long number = first; number < first + macros; ++number) {
    const bool stepByStep = number % 20 == 0;
    const std::string wrong =
        tessaly::RandomMacros(sample, static_cast<unsigned>(number)).check(stepByStep, seen);
    if (wrong.empty()) continue;
    std::printf("%lu: %s\n", number, wrong.c_str());
    return EXIT_FAILURE;
  }
  std::printf(
      "%lu macros, as the panel carries them out: %zu commands set, %zu step, %zu act, %zu cannot be told\n",
      macros, seen.sets, seen.steps, seen.acts, seen.untold);
  return EXIT_SUCCESS;
}
