#pragma once

#include <string>
#include <vector>

#include "platform/SiteRoot.h"

namespace tessaly {

// The clip names of "C:\Programme\RV48\bin\MPoolList.txt", one a line: CRs trimmed, blank lines skipped;
// empty without the file. Bytes as the file has them.
[[nodiscard]] std::vector<std::string> clipNames(const SiteRoot& root);

}  // namespace tessaly
