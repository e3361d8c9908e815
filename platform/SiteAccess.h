#pragma once

#include <functional>

#include "platform/Messages.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// What an operation on site files needs: where the files are, and how to report. Observes both; the caller
// owns them and keeps them alive.
struct SiteAccess {
  const SiteRoot& root;
  Messages& messages;
  // Run before a file is overwritten with other content; may be none.
  std::function<void()> beforeChange = {};
};

}  // namespace tessaly
