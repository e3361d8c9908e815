#pragma once

namespace tessaly {

// Gives the memory that has been freed back to the system, where the C library keeps it otherwise. For a
// thread that nobody waits for: some milliseconds for each 100 MB.
void releaseFreedMemory();

}  // namespace tessaly
