#pragma once

#include <functional>
#include <stop_token>

#include "platform/Outcome.h"
#include "platform/SiteRoot.h"
#include "windows/ReviewScope.h"

namespace tessaly {

// Who takes what a walk over a scope comes upon, in its order.
struct ReviewTaker {
  std::function<void(const OpenContent& open)> open;
  // Another folder or workplace begins.
  std::function<void()> folder;
  // What is stored, or why it could not be read; `file` ends as the name of the file does or would.
  std::function<void(ReviewedPlace place, const std::string& file, Expected<std::string> bytes)> stored;
  std::function<void(std::size_t done, std::size_t of)> progress;
};

// Any thread; blocks. Ends early, and is cancelled, once `stop` is asked for. A failure tells why nothing can
// be read at all, as of a panel that does not answer.
Outcome walkScope(const SiteRoot& root, const ReviewScope& scope, const ReviewTaker& taker,
                  const std::stop_token& stop);

}  // namespace tessaly
