#pragma once

#include "bench/Table.h"

namespace tessaly::bench {

// What a piece costs of many, beside a piece of a tenth as many: with plain growth the same.
template <class Size>
Pair linear(const char* name, void (*run)(Size), Size many, Size few, bool oneThread = false) {
  return {.name = name,
          .measured = [=] { run(many); },
          .limit = [=] { run(few); },
          .goal = 1.3,
          .prepare =
              [=] {
                run(many);
                run(few);
              },
          .measuredItems = static_cast<double>(many),
          .limitItems = static_cast<double>(few),
          .oneThread = oneThread};
}

}  // namespace tessaly::bench
