#include <array>
#include <utility>

#include "xctl/Socket.h"

namespace tessaly {

Socket& Socket::operator=(Socket&& other) noexcept {
  if (this != &other) {
    close();
    handle_ = other.release();
  }
  return *this;
}

int Socket::release() { return std::exchange(handle_, -1); }

void WakeUp::wake() const {
  std::size_t sent = 0;
  (void)writer_.send("w", sent);  // a full buffer already wakes
}

void WakeUp::clear() const {
  std::array<char, 64> bytes;
  std::size_t count = 0;
  while (reader_.receive(bytes, count) == Socket::Transfer::kDone) {
  }
}

}  // namespace tessaly
