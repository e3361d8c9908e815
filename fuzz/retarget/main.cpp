#include <cstdio>
#include <cstdlib>

#include "fuzz/retarget/RetargetModel.h"

// tessaly-retarget-rows [MACROS [FIRST]]: random macros and rules of replacement against a plain model:
// exactly the ticked commands change, and every byte elsewhere stays. Each is made from its number alone.
int main(int count, char** words) {
  const unsigned long macros = count > 1 ? std::strtoul(words[1], nullptr, 10) : 10'000;
  const unsigned long first = count > 2 ? std::strtoul(words[2], nullptr, 10) : 0;
  for (unsigned long number = first; number < first + macros; ++number) {
    const std::string wrong = tessaly::RetargetModel(static_cast<unsigned>(number)).check();
    if (wrong.empty()) continue;
    std::printf("%lu: %s\n", number, wrong.c_str());
    return EXIT_FAILURE;
  }
  std::printf("%lu macros: no other byte changed\n", macros);
  return EXIT_SUCCESS;
}
