#include "platform/RaiseSocket.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr int kWaiting = 8;  // starts that may stand in line
constexpr char kAnswer = '!';

struct Address {
  sockaddr_un bytes{};
  socklen_t size = 0;  // 0 for none
};

// A name that begins with a zero byte stands in no folder. The folder's own number tells roots apart, however
// they are spelled.
Address addressOf(const SiteRoot& root) {
  Address address;
  struct stat status {};
  if (::stat(root.path().c_str(), &status) != 0) return address;
  const std::string name =
      format("tessaly-raise-%lu-%lx-%lx", static_cast<unsigned long>(::geteuid()),
             static_cast<unsigned long>(status.st_dev), static_cast<unsigned long>(status.st_ino));
  address.bytes.sun_family = AF_UNIX;
  std::memcpy(address.bytes.sun_path + 1, name.data(), name.size());
  address.size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  return address;
}

const sockaddr* generic(const Address& address) { return reinterpret_cast<const sockaddr*>(&address.bytes); }

Channel localSocket() { return Channel(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)); }

// Anybody on the machine can take a name or knock at it.
bool isSameUser(const Channel& connected) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(connected.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
         peer.uid == ::geteuid();
}

}  // namespace

RaiseSocket::RaiseSocket(const SiteRoot& root) {
  const Address address = addressOf(root);
  Channel socket = localSocket();
  if (address.size == 0 || !socket.isOpen() || ::bind(socket.number(), generic(address), address.size) != 0 ||
      ::listen(socket.number(), kWaiting) != 0)
    return;
  listening_ = std::move(socket);
}

bool RaiseSocket::answer() const {
  bool asked = false;
  while (true) {
    const Channel peer(::accept4(listening_.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!peer.isOpen()) return asked;
    if (isSameUser(peer)) asked = ::send(peer.number(), &kAnswer, 1, MSG_NOSIGNAL) == 1 || asked;
  }
}

bool askToRaise(const SiteRoot& root, std::chrono::milliseconds patience) {
  const Address address = addressOf(root);
  const Channel socket = localSocket();
  if (address.size == 0 || !socket.isOpen()) return false;
  if (::connect(socket.number(), generic(address), address.size) != 0 || !isSameUser(socket)) return false;
  pollfd answer{socket.number(), POLLIN, 0};
  char byte = 0;
  return ::poll(&answer, 1, static_cast<int>(patience.count())) == 1 &&
         ::recv(socket.number(), &byte, 1, 0) == 1 && byte == kAnswer;
}

}  // namespace tessaly
