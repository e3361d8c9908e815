#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/FtpClient.h"

namespace tessaly {

inline constexpr std::uint16_t kFtpPort = 21;

// The way to the panel's files, of one operation or of several in a row. As FtpClient, which it is outside of
// tests.
class MacroTransfer {
 public:
  virtual ~MacroTransfer() = default;
  [[nodiscard]] virtual FtpClient::Result get(const std::string& remotePath, std::string& bytes,
                                              std::chrono::seconds patience) = 0;
  [[nodiscard]] virtual FtpClient::Result put(std::string_view bytes, const std::string& remotePath) = 0;
  virtual void cancel() = 0;  // from another thread; later transfers fail at once
};

// A way to the host of a panel address.
using MacroTransferFactory = std::function<std::unique_ptr<MacroTransfer>(const std::string& host)>;

// By FTP with the panel's login. A port in the address is that of the control service and is left out.
[[nodiscard]] MacroTransferFactory ftpTransfers(
    std::uint16_t port = kFtpPort, FtpClient::Connections connections = FtpClient::Connections::kOneEach);

// What a panel holds under a number once something was sent there.
enum class PanelHolds {
  kAsBefore,   // nothing was written
  kNew,        // read back, each byte
  kNewUnread,  // taken by the panel, which does not let it be read
  kOld,        // put back and read back; nothing where there was nothing
  kUnknown
};

// What became of an operation that moves files.
struct TransferOutcome {
  FtpClient::Result transfer = FtpClient::Result::kDone;
  bool upload = false;     // the last thing tried was sending
  bool announced = false;  // what was sent is there, and the panel was told to read its macros again
  std::string detail{};    // why it is no macro, or how it was put
  PanelHolds holds = PanelHolds::kAsBefore;
  FtpClient::Result reading = FtpClient::Result::kDone;  // what was sent back, the last time

  [[nodiscard]] bool done() const { return transfer == FtpClient::Result::kDone && (!upload || announced); }
  // It is on this disk, but may not survive a power cut, as `detail` says.
  [[nodiscard]] bool unflushed() const { return done() && !detail.empty(); }
  // The new macro is there, whether or not the panel could be told so.
  [[nodiscard]] bool sent() const { return holds == PanelHolds::kNew || holds == PanelHolds::kNewUnread; }
  // One line for standard error. The window has it in its user's language.
  [[nodiscard]] std::string describe() const;
};

}  // namespace tessaly
