#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "panelsim/Log.h"
#include "platform/ChildProcess.h"

namespace tessaly {

struct FtpFaults {
  using Count = std::optional<std::size_t>;

  bool refuseLogin = false;
  bool diskFull = false;         // uploads are refused
  bool refuseDownload = false;   // what was uploaded is not given back
  bool stallTransfer = false;    // transfers begin and move no byte
  bool swapAfterUpload = false;  // another editor's macro takes the place of what was uploaded
  bool deadLine = false;         // nothing moves or is answered, and no connection ends
  Count cutAfter = {};           // bytes of a transfer after which its connection breaks
  Count flipByte = {};           // the byte of an upload that is stored wrong; the first one is 0
  Count cutSilent = {};          // bytes of an upload that are stored; the panel says that all are
  Count bytesPerSecond = {};     // of a transfer, at least 1
  Count garbleAfter = {};        // bytes of a download after which nonsense comes
};

// The FTP service of a panel: a server of its own in a child process, with the panel's login and the panel's
// tree as its root folder. Used by one thread at a time.
class FtpService {
 public:
  explicit FtpService(Log log) : log_(std::move(log)) {}
  ~FtpService() { stop(); }

  // Port 0 takes any free one. False, with the reason, when the server cannot be run or the port is taken.
  [[nodiscard]] bool start(const std::string& address, std::uint16_t port, const std::string& treeRoot,
                           const FtpFaults& faults, std::string& reason);
  void stop();
  [[nodiscard]] std::uint16_t port() const { return port_; }

  // In force for transfers and logins that begin after it has returned; false when the server is gone.
  [[nodiscard]] bool setFaults(const FtpFaults& faults);

 private:
  void readEvents();
  [[nodiscard]] bool command(const std::string& line);

  const Log log_;
  std::atomic<std::uint16_t> port_{0};
  ChildProcess child_;
  std::thread reader_;

  std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  std::size_t answers_ = 0;  // commands that the child has answered
};

}  // namespace tessaly
