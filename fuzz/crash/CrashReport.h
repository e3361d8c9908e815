#pragma once

#include <array>
#include <string>

#include "fuzz/crash/CrashRecord.h"

namespace tessaly {

// Looks at the whole site after a kill and counts what it finds.
class CrashReport {
 public:
  CrashReport(const CrashSite& site, CrashRecord& record) : site_(site), record_(record) {}

  // Call once nobody writes any more. Accepts what is there as the state that the next worker starts from.
  void lookAtKilled();
  // After a worker that ended by itself: nothing may be left over.
  void lookAtFinished();
  void wrong(const std::string& text);

  [[nodiscard]] bool good() const { return wrongs_ == 0; }
  void print() const;

 private:
  struct Count {
    int kills = 0, old = 0, fresh = 0;  // what the file held afterwards
  };
  [[nodiscard]] int lookAtFiles();

  const CrashSite& site_;
  CrashRecord& record_;
  std::array<Count, kCrashSteps.size()> counts_;
  int between_ = 0;
  int mostLeftovers_ = 0;  // at once, on the whole site
  int wrongs_ = 0;
};

}  // namespace tessaly
