#pragma once

#include "bench/Table.h"

// Counts instead of times: a line whose sides keep to one thread can be run once a side under a tool that
// counts instructions. bench/instructions.sh makes the table.
namespace tessaly::bench {

// Called by addPair for every line of one thread.
void keepCounted(const Pair& pair);

// With "--counted" prints the names of these lines; with "--count measured|limit NAME" runs one side of one
// of them in `countedRun`, after an uncounted run of it. True when the arguments were for it; `result` is
// then the program's.
[[nodiscard]] bool runCounted(int argc, char** argv, int& result);

}  // namespace tessaly::bench
