#include "review/Tries.h"

namespace tessaly {

bool Tries::again(int tried) {
  if (tried >= rules_.most) return false;
  std::unique_lock guard(mutex_);
  if (tried > 0) changed_.wait_for(guard, rules_.pause, [this] { return cancelled_; });
  return !cancelled_;
}

void Tries::cancel() {
  const std::scoped_lock guard(mutex_);
  cancelled_ = true;
  changed_.notify_all();
}

bool Tries::cancelled() const {
  const std::scoped_lock guard(mutex_);
  return cancelled_;
}

}  // namespace tessaly
