#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// TCP sockets that never block and a descriptor to wake a waiting thread. All that depends on the operating
// system's sockets stands in Socket.cpp; a build for another system replaces that file.
namespace tessaly {

// Owns one descriptor, which no child process inherits. Used by one thread at a time.
class Socket {
 public:
  enum class Transfer { kDone, kAgain, kClosed };  // bytes moved; none possible now; the peer is gone

  Socket() = default;
  explicit Socket(int handle) : handle_(handle) {}
  ~Socket() { close(); }
  Socket(Socket&& other) noexcept : handle_(other.release()) {}
  Socket& operator=(Socket&& other) noexcept;

  // Starts connecting; wait until writable, then ask `connected`. `host` is a numeric address or "localhost":
  // other names are not looked up, since a look-up cannot be bounded in time. Not valid when refused at once.
  // A peer that is silent is asked for a sign of life, and one that acknowledges nothing for 10 s counts as
  // gone: at the latest 15 s after its last sign the socket has an error, whether or not anything waited to
  // be sent.
  [[nodiscard]] static Socket beginConnect(const std::string& host, std::uint16_t port);

  // Listens on a numeric address; port 0 takes any free one. Not valid on failure, `reason` then says why.
  [[nodiscard]] static Socket listen(const std::string& address, std::uint16_t port, std::string& reason);

  [[nodiscard]] bool valid() const { return handle_ >= 0; }
  [[nodiscard]] int handle() const { return handle_; }
  [[nodiscard]] bool connected() const;      // a begun connect has succeeded
  [[nodiscard]] std::uint16_t port() const;  // of this end; 0 when unknown
  [[nodiscard]] Socket accept() const;       // not valid when nobody waits
  [[nodiscard]] Transfer receive(std::span<char> buffer, std::size_t& count) const;
  [[nodiscard]] Transfer send(std::string_view bytes, std::size_t& count) const;
  void finishSending() const;  // the peer reads the end of the stream; receiving goes on
  // Sent, but not known to have arrived.
  [[nodiscard]] bool hasUnconfirmed() const;
  void close();
  // Closes, and what has not arrived yet never will: left to itself the system would go on trying behind the
  // back of whoever has given up.
  void closeAndForget();

 private:
  int release();

  int handle_ = -1;
};

// Makes a wait of another thread return. Any thread may call `wake`.
class WakeUp {
 public:
  WakeUp();
  [[nodiscard]] bool valid() const { return reader_.valid() && writer_.valid(); }
  void wake() const;
  void clear() const;
  [[nodiscard]] const Socket& socket() const { return reader_; }

 private:
  Socket reader_, writer_;
};

// What to wait for on one socket, and what was found. A socket with an error or a gone peer is found both
// readable and writable.
struct Watch {
  const Socket* socket = nullptr;
  bool forRead = true, forWrite = false;
  bool readable = false, writable = false;
};

// Waits until a watched event or the time-out (ms; below 0 none). False when the wait itself failed.
[[nodiscard]] bool waitFor(std::span<Watch> watches, int timeoutMs);

}  // namespace tessaly
