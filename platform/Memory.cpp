#include "platform/Memory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tessaly {

void setUpMemory() {
#ifdef __GLIBC__
  mallopt(M_ARENA_MAX, 1);
  mallopt(M_MXFAST, 0);
#endif
}

void releaseFreedMemory() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

}  // namespace tessaly
