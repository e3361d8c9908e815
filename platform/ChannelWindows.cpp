#include "platform/ChannelWindows.h"

#include <ws2tcpip.h>

namespace tessaly {
namespace {

bool socketsAreThere() {
  static const bool there = [] {
    WSADATA about{};
    return ::WSAStartup(MAKEWORD(2, 2), &about) == 0;
  }();
  return there;
}

sockaddr_in here(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = ::htons(port);
  address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  return address;
}

template <typename Call>
std::uint16_t portBy(const Call& call, const Channel& channel) {
  sockaddr_in address{};
  int size = sizeof address;
  return call(socketOf(channel), reinterpret_cast<sockaddr*>(&address), &size) == 0
             ? ::ntohs(address.sin_port)
             : 0;
}

}  // namespace

Channel::~Channel() {
  if (isOpen()) ::closesocket(static_cast<SOCKET>(number_));
}

void cutChannel(int number) { ::shutdown(static_cast<SOCKET>(number), SD_BOTH); }

// Without overlapped operations it can be the input and the output of a program.
Channel newChannel() {
  if (!socketsAreThere()) return Channel();
  const SOCKET socket =
      ::WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0, WSA_FLAG_NO_HANDLE_INHERIT);
  return Channel(socket == INVALID_SOCKET ? -1 : static_cast<int>(socket));
}

Channel listenHere(int waiting, std::uint16_t& port) {
  Channel listening = newChannel();
  const sockaddr_in address = here(0);
  port = 0;
  if (!listening.isOpen() ||
      ::bind(socketOf(listening), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(socketOf(listening), waiting) != 0)
    return Channel();
  port = portBy(::getsockname, listening);
  return listening;
}

Channel connectHere(std::uint16_t port) {
  Channel connected = newChannel();
  const sockaddr_in address = here(port);
  if (!connected.isOpen() ||
      ::connect(socketOf(connected), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    return Channel();
  return connected;
}

bool waitToRead(const Channel& channel, int milliseconds) {
  fd_set waiting;
  FD_ZERO(&waiting);
  FD_SET(socketOf(channel), &waiting);
  timeval time{milliseconds / 1000, milliseconds % 1000 * 1000};
  return ::select(0, &waiting, nullptr, nullptr, milliseconds < 0 ? nullptr : &time) == 1;
}

void setBlocking(const Channel& channel, bool blocking) {
  u_long off = blocking ? 0 : 1;
  ::ioctlsocket(socketOf(channel), static_cast<long>(FIONBIO), &off);
}

std::pair<Channel, Channel> Channel::pair() {
  std::uint16_t port = 0;
  const Channel listening = listenHere(1, port);
  if (!listening.isOpen() || port == 0) return {};
  Channel other = connectHere(port);
  if (!other.isOpen()) return {};
  const SOCKET accepted = ::accept(socketOf(listening), nullptr, nullptr);
  if (accepted == INVALID_SOCKET) return {};
  Channel ours(static_cast<int>(accepted));
  ::SetHandleInformation(reinterpret_cast<HANDLE>(accepted), HANDLE_FLAG_INHERIT, 0);
  // Another program of this computer may have been faster.
  if (portBy(::getpeername, ours) != portBy(::getsockname, other)) return {};
  return {std::move(ours), std::move(other)};
}

}  // namespace tessaly
