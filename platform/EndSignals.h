#pragma once

#include "platform/Channel.h"

namespace tessaly {

// Turns the system's wish that the program ends (SIGTERM, SIGHUP, SIGINT) into a descriptor to be watched, so
// that the program ends in its own time. The first wish is taken; the next one ends the process at once. What
// the process was started to ignore stays ignored. At most one object at a time.
class EndSignals {
 public:
  EndSignals();
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  // Readable once the end is wished for. -1 when there are no descriptors left: signals then do what they
  // did.
  [[nodiscard]] int descriptor() const { return reading_.number(); }

 private:
  Channel reading_, writing_;
};

}  // namespace tessaly
