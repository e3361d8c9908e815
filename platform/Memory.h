#pragma once

namespace tessaly {

// Small pieces of memory join their neighbours as soon as they are freed, for the whole program. The C
// library would collect them in lists and join them all at the next large request, long after the processor's
// cache has lost them: a fifth of the time of loading a large document. At the start of a program.
void joinFreedMemoryAtOnce();

// Gives the memory that has been freed back to the system, where the C library keeps it otherwise. For a
// thread that nobody waits for: some milliseconds for each 100 MB.
void releaseFreedMemory();

}  // namespace tessaly
