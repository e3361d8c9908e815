#include "platform/Channel.h"

#include <sys/socket.h>
#include <unistd.h>

namespace tessaly {

Channel::~Channel() {
  if (isOpen()) ::close(number_);
}

std::pair<Channel, Channel> Channel::pair() {
  int ends[2];
  // A socket, unlike a pipe, tells of a gone reader by an error and not by a signal.
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return {};
  return {Channel(ends[0]), Channel(ends[1])};
}

void cutChannel(int number) { ::shutdown(number, SHUT_RDWR); }

}  // namespace tessaly
