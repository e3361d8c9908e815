#include "platform/Memory.h"

#include <cstdlib>  // whose C library it is

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tessaly {

#ifdef __GLIBC__

void setUpMemory() { mallopt(M_MXFAST, 0); }

void takeMemoryInLargeSteps() {
  constexpr int kStep = 64 * 1024 * 1024;  // bytes, the most that the heap of a thread has in one piece
  mallopt(M_TOP_PAD, kStep);
}

void releaseFreedMemory() { malloc_trim(0); }

#else

void setUpMemory() {}

void takeMemoryInLargeSteps() {}

void releaseFreedMemory() {}

#endif

}  // namespace tessaly
