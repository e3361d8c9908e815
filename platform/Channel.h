#pragma once

#include <utility>

namespace tessaly {

// Owns one end of a channel to another program or thread, which can be waited for and watched: a socket,
// whose number is of another kind than that of a file where the system tells the two apart. -1 when there is
// none.
class Channel {
 public:
  Channel() = default;
  explicit Channel(int number) : number_(number) {}
  Channel(Channel&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Channel& operator=(Channel&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Channel();

  [[nodiscard]] int number() const { return number_; }
  [[nodiscard]] bool isOpen() const { return number_ >= 0; }

  // Two ends that are connected with each other, which no child process inherits; neither is open when that
  // fails.
  [[nodiscard]] static std::pair<Channel, Channel> pair();

 private:
  int number_ = -1;
};

// Ends a connection that somebody else owns and will close: whoever waits on it returns.
void cutChannel(int number);

}  // namespace tessaly
