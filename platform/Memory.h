#pragma once

namespace tessaly {

// How the C library keeps memory, for the whole program and at its start. It would collect small freed pieces
// to join them at the next large request, long after the processor's cache has lost them: loading a large
// document takes a fifth less without.
void setUpMemory();

// From now on each new heap is as large as they can be: that of a thread grows page by page, a call of the
// system each, which shows where many megabytes are loaded. What is never used of it costs addresses only.
void takeMemoryInLargeSteps();

// Gives the memory that has been freed back to the system, where the C library keeps it otherwise. For a
// thread that nobody waits for: some milliseconds for each 100 MB.
void releaseFreedMemory();

}  // namespace tessaly
