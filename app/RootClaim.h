#pragma once

#include "platform/SiteLock.h"
#include "platform/SiteRoot.h"

namespace tessaly {

enum class RootClaim {
  kOurs,     // this program works with the site
  kRaised,   // another one does, and its window has been asked to come to the front
  kGivenUp,  // the user has been told who does, and leaves the site to them
};

// Takes the lock of the site that this program is to work with. A program of the same user is asked to come
// to the front; any other holder is told in a box, once, and the user says whether to take over. GUI thread.
[[nodiscard]] RootClaim claimSite(SiteLock& lock, const SiteRoot& root);

}  // namespace tessaly
