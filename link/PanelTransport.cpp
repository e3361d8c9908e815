#include "link/PanelTransport.h"

#include "platform/HostAddress.h"

namespace tessaly {
namespace {

class LibraryTransport final : public PanelTransport {
 public:
  bool connect(const std::string& host, std::uint16_t port, IXCTLClient* client) override {
    return connection_.connect(decimalAddress(host), port, client);
  }
  void disconnect() override { connection_.disconnect(); }
  bool subscribe(const std::string& name) override { return connection_.subscribe(name); }
  bool callFunctionId(const std::string& functionId, const ParameterList& parameters) override {
    return connection_.callFunctionId(functionId, parameters);
  }
#ifdef TESSALY_OPEN_XCTL
  std::string endReason() override { return connection_.endReason(); }
#endif

 private:
  XCTLConnection connection_{kXctlTransportTcp};
};

}  // namespace

std::unique_ptr<PanelTransport> makeLibraryTransport() { return std::make_unique<LibraryTransport>(); }

}  // namespace tessaly
