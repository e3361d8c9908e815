#pragma once

#include <chrono>
#include <memory>

#include "platform/Channel.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// How a second start asks the window that works with a site to come to the front: a local socket that is no
// file, named after the user and the root's folder. Only the same user's programs are listened to and
// believed.
class RaiseSocket {
 public:
  // Listens, where the system lets it.
  explicit RaiseSocket(const SiteRoot& root);

  // To be watched; readable when somebody asks. -1 when nobody can.
  [[nodiscard]] int descriptor() const { return listening_.number(); }

  // Answers whoever asks now; true when the window is to come to the front. Does not wait.
  [[nodiscard]] bool answer() const;

 private:
  Channel listening_;
  std::shared_ptr<void> door_;  // what tells others of it, where such a socket has no name
};

// True when a program of this user works with the site and has answered within the time.
[[nodiscard]] bool askToRaise(const SiteRoot& root, std::chrono::milliseconds patience);

}  // namespace tessaly
