#include "xctl/Socket.h"

// As many as a panel has editors: the system's own number is too small, and counts only sockets.
#define FD_SETSIZE 1024
// The others build upon the first.
// clang-format off
#include <winsock2.h>
#include <ws2tcpip.h>
#include <mstcpip.h>
// clang-format on

#include <memory>
#include <system_error>
#include <utility>

#include "xctl/NumericAddress.h"

// Not in every version of the system's headers.
#ifndef TCP_KEEPCNT
#define TCP_KEEPCNT 16
#endif
#ifndef TCP_MAXRT
#define TCP_MAXRT 5
#endif

namespace tessaly {
namespace {

constexpr int kBacklog = 64;  // connections that wait to be accepted

// The handles of this system have 32 bits that count.
SOCKET systemSocket(int handle) { return static_cast<SOCKET>(handle); }
SOCKET systemSocket(const Socket& socket) { return systemSocket(socket.handle()); }
Socket ownSocket(SOCKET socket) { return Socket(socket == INVALID_SOCKET ? -1 : static_cast<int>(socket)); }

// Without them every other call fails.
void startSockets() {
  static const int refused = [] {
    WSADATA about{};
    return ::WSAStartup(MAKEWORD(2, 2), &about);
  }();
  static_cast<void>(refused);
}

template <typename Value>
void setOption(const Socket& socket, int level, int option, const Value& value) {
  ::setsockopt(systemSocket(socket), level, option, reinterpret_cast<const char*>(&value), sizeof value);
}

void prepare(const Socket& socket) {
  u_long nonBlocking = 1;
  ::ioctlsocket(systemSocket(socket), static_cast<long>(FIONBIO), &nonBlocking);
  ::SetHandleInformation(reinterpret_cast<HANDLE>(systemSocket(socket)), HANDLE_FLAG_INHERIT, 0);
}

Socket newSocket(const addrinfo& address) {
  Socket socket = ownSocket(::socket(address.ai_family, SOCK_STREAM, 0));
  if (socket.valid()) prepare(socket);
  return socket;
}

void sendAtOnce(const Socket& socket) { setOption(socket, IPPROTO_TCP, TCP_NODELAY, DWORD{1}); }

// A line without traffic is looked at every few seconds; either way it is given up after kLossSeconds.
constexpr ULONG kIdleMilliseconds = 4'000, kProbeMilliseconds = 2'000;
constexpr DWORD kProbes = 4, kLossSeconds = 10;

void noticeLoss(const Socket& socket) {
  tcp_keepalive probing{1, kIdleMilliseconds, kProbeMilliseconds};
  DWORD unused = 0;
  ::WSAIoctl(systemSocket(socket), SIO_KEEPALIVE_VALS, &probing, sizeof probing, nullptr, 0, &unused, nullptr,
             nullptr);
  setOption(socket, IPPROTO_TCP, TCP_KEEPCNT, kProbes);
  setOption(socket, IPPROTO_TCP, TCP_MAXRT, kLossSeconds);
}

bool wouldBlock() {
  const int error = ::WSAGetLastError();
  return error == WSAEWOULDBLOCK || error == WSAEINTR;
}

}  // namespace

void Socket::close() {
  if (handle_ >= 0) ::closesocket(systemSocket(handle_));
  handle_ = -1;
}

Socket Socket::beginConnect(const std::string& host, std::uint16_t port) {
  startSockets();
  const AddressList address = numericAddress(host, port);
  if (!address) return {};
  Socket socket = newSocket(*address);
  if (!socket.valid()) return {};
  sendAtOnce(socket);
  noticeLoss(socket);
  if (::connect(systemSocket(socket), address->ai_addr, static_cast<int>(address->ai_addrlen)) != 0 &&
      ::WSAGetLastError() != WSAEWOULDBLOCK)
    return {};
  return socket;
}

Socket Socket::listen(const std::string& address, std::uint16_t port, std::string& reason) {
  startSockets();
  const AddressList found = numericAddress(address, port);
  if (!found) {
    reason = "\"" + address + "\" is no numeric address";
    return {};
  }
  Socket socket = newSocket(*found);
  // What lets a program listen again at once elsewhere would here let it listen beside another one.
  if (socket.valid()) setOption(socket, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, DWORD{1});
  if (!socket.valid() ||
      ::bind(systemSocket(socket), found->ai_addr, static_cast<int>(found->ai_addrlen)) != 0 ||
      ::listen(systemSocket(socket), kBacklog) != 0) {
    const int error = ::WSAGetLastError();
    reason = error == WSAEADDRINUSE ? "Address already in use" : std::system_category().message(error);
    return {};
  }
  return socket;
}

bool Socket::connected() const {
  int error = 0;
  int size = sizeof error;
  return ::getsockopt(systemSocket(handle_), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size) ==
             0 &&
         error == 0;
}

std::uint16_t Socket::port() const {
  sockaddr_storage address{};
  int size = sizeof address;
  if (::getsockname(systemSocket(handle_), reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
  // At the same place in the addresses of both versions.
  return ::ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
}

Socket Socket::accept() const {
  Socket accepted = ownSocket(::accept(systemSocket(handle_), nullptr, nullptr));
  if (!accepted.valid()) return accepted;
  prepare(accepted);
  sendAtOnce(accepted);
  return accepted;
}

Socket::Transfer Socket::receive(std::span<char> buffer, std::size_t& count) const {
  const int received = ::recv(systemSocket(handle_), buffer.data(), static_cast<int>(buffer.size()), 0);
  count = received > 0 ? static_cast<std::size_t>(received) : 0;
  if (received > 0) return Transfer::kDone;
  return received < 0 && wouldBlock() ? Transfer::kAgain : Transfer::kClosed;
}

Socket::Transfer Socket::send(std::string_view bytes, std::size_t& count) const {
  const int sent = ::send(systemSocket(handle_), bytes.data(), static_cast<int>(bytes.size()), 0);
  count = sent > 0 ? static_cast<std::size_t>(sent) : 0;
  if (sent >= 0) return Transfer::kDone;
  return wouldBlock() ? Transfer::kAgain : Transfer::kClosed;
}

void Socket::finishSending() const { ::shutdown(systemSocket(handle_), SD_SEND); }

// Only newer versions of the system tell; what is not known has not arrived.
bool Socket::hasUnconfirmed() const {
#ifdef SIO_TCP_INFO
  TCP_INFO_v0 told{};
  DWORD version = 0, size = 0;
  if (::WSAIoctl(systemSocket(handle_), SIO_TCP_INFO, &version, sizeof version, &told, sizeof told, &size,
                 nullptr, nullptr) == 0)
    return told.BytesInFlight > 0;
#endif
  return true;
}

void Socket::closeAndForget() {
  setOption(*this, SOL_SOCKET, SO_LINGER, linger{1, 0});
  close();
}

// Local sockets have no pairs here; one that is not connected with the other end is another program's.
WakeUp::WakeUp() {
  std::string reason;
  const Socket listening = Socket::listen("127.0.0.1", 0, reason);
  if (!listening.valid()) return;
  Socket writer = Socket::beginConnect("127.0.0.1", listening.port());
  Watch asked{.socket = &listening};
  if (!writer.valid() || !waitFor({&asked, 1}, 1000)) return;
  Socket reader = listening.accept();
  sockaddr_in peer{};
  int size = sizeof peer;
  if (!reader.valid() ||
      ::getpeername(systemSocket(reader), reinterpret_cast<sockaddr*>(&peer), &size) != 0 ||
      ::ntohs(peer.sin_port) != writer.port())
    return;
  reader_ = std::move(reader);
  writer_ = std::move(writer);
}

bool waitFor(std::span<Watch> watches, int timeoutMs) {
  struct Sets {
    fd_set reading, writing, broken;
  };
  const auto sets = std::make_unique<Sets>();
  FD_ZERO(&sets->reading);
  FD_ZERO(&sets->writing);
  FD_ZERO(&sets->broken);
  for (const Watch& watch : watches) {
    const SOCKET socket = systemSocket(*watch.socket);
    if (watch.forRead) FD_SET(socket, &sets->reading);
    if (watch.forWrite) FD_SET(socket, &sets->writing);
    FD_SET(socket, &sets->broken);  // also a connection that could not be made
  }
  timeval time{timeoutMs / 1000, timeoutMs % 1000 * 1000};
  if (::select(0, &sets->reading, &sets->writing, &sets->broken, timeoutMs < 0 ? nullptr : &time) < 0)
    return false;
  for (Watch& watch : watches) {
    const SOCKET socket = systemSocket(*watch.socket);
    const bool broken = FD_ISSET(socket, &sets->broken) != 0;
    watch.readable = broken || FD_ISSET(socket, &sets->reading) != 0;
    watch.writable = broken || FD_ISSET(socket, &sets->writing) != 0;
  }
  return true;
}

}  // namespace tessaly
