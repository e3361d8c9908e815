#include "platform/Processors.h"

#include <cstdlib>  // whose C library it is

#ifdef __GLIBC__
#include <sched.h>
#endif

namespace tessaly {

#ifdef __GLIBC__

int processorNow() { return ::sched_getcpu(); }

// Left alone by the kernel where that was the only one.
void leaveProcessor(int processor) {
  cpu_set_t ours;
  if (processor < 0 || ::sched_getaffinity(0, sizeof ours, &ours) != 0) return;
  CPU_CLR(static_cast<std::size_t>(processor), &ours);
  ::sched_setaffinity(0, sizeof ours, &ours);
}

#else

int processorNow() { return -1; }

void leaveProcessor(int) {}

#endif

}  // namespace tessaly
