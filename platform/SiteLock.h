#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Descriptor.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// Who works with a site, as the lock tells; what it does not tell is empty.
struct LockHolder {
  std::string host, user;  // bytes of whoever wrote the file, at most some hundred
  std::int64_t process = 0;
  std::int64_t since = 0;  // seconds since 1970, UTC
};

// One program a site. The lock is the system's own on the file ".tessaly.lock" in the root, held by a living
// process; what stands in the file only tells who that is. So a file that a dead program left, that came with
// a copy or that is empty holds nobody up. The exception is a record of another host: the site may lie on a
// shared drive that hands on no locks, and only a person knows.
//
// The file is never opened through a link, and nothing is written into one that was there before: it is
// replaced by a new one. One thread.
class SiteLock {
 public:
  explicit SiteLock(const SiteRoot& root);
  ~SiteLock();
  SiteLock(const SiteLock&) = delete;
  SiteLock& operator=(const SiteLock&) = delete;

  enum class Claim {
    kHeld,      // ours until this object goes
    kNone,      // there can be no lock here, as where nobody may write: nothing keeps a second program away
    kInUse,     // by a living process, or as a program on another host has left it: `holder` tells
    kInTheWay,  // what stands there is no lock file
  };
  [[nodiscard]] Claim claim();
  // Puts a lock of ours in the place of what is in use or in the way. kHeld or kNone, or kInUse when somebody
  // else was faster.
  [[nodiscard]] Claim takeOver();

  [[nodiscard]] const LockHolder& holder() const { return holder_; }

 private:
  [[nodiscard]] std::optional<Claim> look();
  [[nodiscard]] std::optional<Claim> create();

  std::string path_;
  Descriptor file_;
  LockHolder holder_;
};

}  // namespace tessaly
