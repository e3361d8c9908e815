#pragma once

namespace tessaly {

// For a thread that works while the one that has begun it works on: a kernel may start it on the same
// processor and leave it there, though another one has nothing to do.
[[nodiscard]] int processorNow();    // of this thread; negative when nobody knows
void leaveProcessor(int processor);  // this thread: for any other one, where there is another

}  // namespace tessaly
