#pragma once

#include <cstddef>
#include <string>

namespace tessaly {

// Stands between this process and the system's fsync, rename and mkdir. A kill shows only what the system has
// been told; what a cut of the power leaves hangs on what was flushed, which is watched here.
class FlushWatch {
 public:
  // From now on, with the `failing`-th flush, counted from 1, failing as a broken disk does; 0 for none.
  static void start(std::size_t failing);
  static void stop();

  [[nodiscard]] static std::size_t flushes();
  // What a cut of the power now, or at any time since the start, could have spoilt; empty when it is nothing.
  [[nodiscard]] static std::string fault();
};

}  // namespace tessaly
