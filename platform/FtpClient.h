#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tessaly {

// One FTP transfer after another, each on a connection of its own or all on one: passive mode (the address in
// the server's reply is ignored in favour of the peer's), binary, connect time-out 5 s, given up when no byte
// moved for 10 s, or when it is slower, those 10 s aside, than 100 kB a minute. Blocking: call it from a
// worker thread when a person waits. Never throws. Thread-safe across objects.
class FtpClient {
 public:
  struct Login {
    std::string user;
    std::string secret;  // never printed
  };

  enum class Result {
    kDone,
    kRefusedLogin,
    kNotFound,
    kUnreachable,
    kStalled,
    kTooSlow,
    kCut,         // also for another size than the panel had announced
    kPanelError,  // reply 451: the panel broke off for a reason of its own
    kFull,
    kLocalFile,   // cannot be read or written; told by who has the file
    kUnreadable,  // the file came whole, and is not what was wanted; as above
    kAltered,     // the panel stored something else than what was sent; as above
    kCancelled,
    kNoLibrary,  // libcurl is loaded by the first transfer
    kFailed
  };

  static constexpr std::chrono::seconds kPatience{10};  // without a byte

  enum class Connections {
    kOneEach,  // a new one for every transfer
    kKept      // for many in a row: one, for as long as it serves and this object lives
  };

  // Host is a numeric address or a name; port 21 unless a simulated panel listens elsewhere.
  FtpClient(const std::string& host, std::uint16_t port, Login login,
            Connections connections = Connections::kOneEach);
  ~FtpClient();
  FtpClient(const FtpClient&) = delete;
  FtpClient& operator=(const FtpClient&) = delete;

  // Fetches a remote file (absolute path) whole, as far as the server told its size; else `bytes` is what
  // came. `patience` is how long it may bring nothing.
  [[nodiscard]] Result get(const std::string& remotePath, std::string& bytes,
                           std::chrono::seconds patience = kPatience);

  // Sends a file. Missing remote folders are not made.
  [[nodiscard]] Result put(std::string_view bytes, const std::string& remotePath);

  // Ends a running transfer from another thread within a second; later transfers of this object fail at once.
  void cancel();

  // One line for the status strip, such as "the panel refused the login".
  [[nodiscard]] static const char* describe(Result result);

 private:
  class Line;

  template <class Use>
  [[nodiscard]] Result run(const std::string& remotePath, std::chrono::seconds patience, const Use& use);

  std::string host_;
  std::uint16_t port_;
  Login login_;
  Connections connections_;
  std::unique_ptr<Line> line_;  // that is kept; else none
  std::atomic<bool> cancelled_{false};
};

}  // namespace tessaly
