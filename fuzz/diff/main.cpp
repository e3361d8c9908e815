#include <cstdio>
#include <cstdlib>

#include "fuzz/diff/MacroPairs.h"

// tessaly-diff-pairs [PAIRS [FIRST]]: random pairs of macros, and of rows across the words of the alignment,
// against plain comparisons. Each is made from its number alone.
int main(int count, char** words) {
  const unsigned long pairs = count > 1 ? std::strtoul(words[1], nullptr, 10) : 100'000;
  const unsigned long first = count > 2 ? std::strtoul(words[2], nullptr, 10) : 0;
  for (unsigned long number = first; number < first + pairs; ++number) {
    std::string wrong = tessaly::MacroPairs(static_cast<unsigned>(number)).check();
    if (wrong.empty() && number % 10 == 0)
      wrong = tessaly::MacroPairs(static_cast<unsigned>(number)).checkAlignment(300);
    if (wrong.empty()) continue;
    std::printf("%lu: %s\n", number, wrong.c_str());
    return EXIT_FAILURE;
  }
  std::printf("%lu pairs: no difference missed\n", pairs);
  return EXIT_SUCCESS;
}
