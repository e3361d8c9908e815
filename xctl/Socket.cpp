#include "xctl/Socket.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/sockios.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "xctl/NumericAddress.h"

namespace tessaly {
namespace {

constexpr int kBacklog = 64;  // connections that wait to be accepted
constexpr int kOn = 1;        // of an option

Socket newSocket(const addrinfo& address) {
  return Socket(::socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

void sendAtOnce(const Socket& socket) {
  ::setsockopt(socket.handle(), IPPROTO_TCP, TCP_NODELAY, &kOn, sizeof kOn);
}

// A line without traffic is looked at every few seconds; either way it is given up after kLossMilliseconds.
constexpr int kIdleSeconds = 4, kProbeSeconds = 2, kProbes = 4;
constexpr unsigned kLossMilliseconds = 10'000;

void noticeLoss(const Socket& socket) {
  ::setsockopt(socket.handle(), SOL_SOCKET, SO_KEEPALIVE, &kOn, sizeof kOn);
  ::setsockopt(socket.handle(), IPPROTO_TCP, TCP_KEEPIDLE, &kIdleSeconds, sizeof kIdleSeconds);
  ::setsockopt(socket.handle(), IPPROTO_TCP, TCP_KEEPINTVL, &kProbeSeconds, sizeof kProbeSeconds);
  ::setsockopt(socket.handle(), IPPROTO_TCP, TCP_KEEPCNT, &kProbes, sizeof kProbes);
  ::setsockopt(socket.handle(), IPPROTO_TCP, TCP_USER_TIMEOUT, &kLossMilliseconds, sizeof kLossMilliseconds);
}

bool wouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR; }

}  // namespace

void Socket::close() {
  if (handle_ >= 0) ::close(handle_);
  handle_ = -1;
}

Socket Socket::beginConnect(const std::string& host, std::uint16_t port) {
  const AddressList address = numericAddress(host, port);
  if (!address) return {};
  Socket socket = newSocket(*address);
  if (!socket.valid()) return {};
  sendAtOnce(socket);
  noticeLoss(socket);
  if (::connect(socket.handle(), address->ai_addr, address->ai_addrlen) != 0 && errno != EINPROGRESS)
    return {};
  return socket;
}

Socket Socket::listen(const std::string& address, std::uint16_t port, std::string& reason) {
  const AddressList found = numericAddress(address, port);
  if (!found) {
    reason = "\"" + address + "\" is no numeric address";
    return {};
  }
  Socket socket = newSocket(*found);
  if (socket.valid()) ::setsockopt(socket.handle(), SOL_SOCKET, SO_REUSEADDR, &kOn, sizeof kOn);
  if (!socket.valid() || ::bind(socket.handle(), found->ai_addr, found->ai_addrlen) != 0 ||
      ::listen(socket.handle(), kBacklog) != 0) {
    reason = std::generic_category().message(errno);
    return {};
  }
  return socket;
}

bool Socket::connected() const {
  int error = 0;
  socklen_t size = sizeof error;
  return ::getsockopt(handle_, SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

std::uint16_t Socket::port() const {
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  if (::getsockname(handle_, reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
  std::array<char, NI_MAXSERV> service{};
  if (::getnameinfo(reinterpret_cast<sockaddr*>(&address), size, nullptr, 0, service.data(), service.size(),
                    NI_NUMERICSERV) != 0) {
    return 0;
  }
  return static_cast<std::uint16_t>(std::strtoul(service.data(), nullptr, 10));
}

Socket Socket::accept() const {
  Socket accepted(::accept4(handle_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (accepted.valid()) sendAtOnce(accepted);
  return accepted;
}

Socket::Transfer Socket::receive(std::span<char> buffer, std::size_t& count) const {
  const ssize_t received = ::recv(handle_, buffer.data(), buffer.size(), 0);
  count = received > 0 ? static_cast<std::size_t>(received) : 0;
  if (received > 0) return Transfer::kDone;
  return received < 0 && wouldBlock() ? Transfer::kAgain : Transfer::kClosed;
}

Socket::Transfer Socket::send(std::string_view bytes, std::size_t& count) const {
  const ssize_t sent = ::send(handle_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  count = sent > 0 ? static_cast<std::size_t>(sent) : 0;
  if (sent >= 0) return Transfer::kDone;
  return wouldBlock() ? Transfer::kAgain : Transfer::kClosed;
}

void Socket::finishSending() const { ::shutdown(handle_, SHUT_WR); }

bool Socket::hasUnconfirmed() const {
  int bytes = 0;
  return ::ioctl(handle_, SIOCOUTQ, &bytes) == 0 && bytes > 0;
}

void Socket::closeAndForget() {
  const linger atOnce{.l_onoff = 1, .l_linger = 0};
  ::setsockopt(handle_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  close();
}

WakeUp::WakeUp() {
  int pair[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, pair) != 0) return;
  reader_ = Socket(pair[0]);
  writer_ = Socket(pair[1]);
}

bool waitFor(std::span<Watch> watches, int timeoutMs) {
  std::vector<pollfd> polled;
  polled.reserve(watches.size());
  for (const Watch& watch : watches) {
    const int events = (watch.forRead ? POLLIN : 0) | (watch.forWrite ? POLLOUT : 0);
    polled.push_back({watch.socket->handle(), static_cast<short>(events), 0});
  }
  if (::poll(polled.data(), polled.size(), timeoutMs) < 0) {
    for (pollfd& entry : polled) entry.revents = 0;
    if (errno != EINTR) return false;
  }
  for (std::size_t i = 0; i < watches.size(); ++i) {
    const bool broken = (polled[i].revents & (POLLERR | POLLHUP | POLLNVAL)) != 0;
    watches[i].readable = broken || (polled[i].revents & POLLIN) != 0;
    watches[i].writable = broken || (polled[i].revents & POLLOUT) != 0;
  }
  return true;
}

}  // namespace tessaly
