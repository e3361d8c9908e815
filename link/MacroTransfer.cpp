#include "link/MacroTransfer.h"

namespace tessaly {
namespace {

using Result = FtpClient::Result;

constexpr const char* kFtpUser = "target";
constexpr const char* kFtpSecret = "vintrosa";

class FtpTransfer final : public MacroTransfer {
 public:
  FtpTransfer(const std::string& host, std::uint16_t port, FtpClient::Connections connections)
      : client_(host, port, {kFtpUser, kFtpSecret}, connections) {}

  Result get(const std::string& remotePath, std::string& bytes, std::chrono::seconds patience) override {
    return client_.get(remotePath, bytes, patience);
  }
  Result put(std::string_view bytes, const std::string& remotePath) override {
    return client_.put(bytes, remotePath);
  }
  void cancel() override { client_.cancel(); }

 private:
  FtpClient client_;
};

}  // namespace

MacroTransferFactory ftpTransfers(std::uint16_t port, FtpClient::Connections connections) {
  return [port, connections](const std::string& address) {
    return std::make_unique<FtpTransfer>(address.substr(0, address.find(':')), port, connections);
  };
}

std::string TransferOutcome::describe() const {
  std::string text = FtpClient::describe(transfer);
  if (!detail.empty()) text = unflushed() ? "the macro " + detail : text + " (" + detail + ")";
  const std::string unannounced =
      announced ? "" : "the macro was sent, but the panel could not be told to read it";
  switch (holds) {
    case PanelHolds::kAsBefore:
      return text;
    case PanelHolds::kNew:
      return announced ? "verified" : unannounced;
    case PanelHolds::kNewUnread:
      return (announced ? "" : unannounced + "; ") + "not verified: " + FtpClient::describe(reading);
    case PanelHolds::kOld:
      return text + "; the panel holds again what it held before, verified";
    case PanelHolds::kUnknown:
      return text + "; what the panel holds now is unknown: " + FtpClient::describe(reading);
  }
  return text;
}

}  // namespace tessaly
