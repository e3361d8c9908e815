#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "xctl/XctlLib.h"

namespace tessaly {

// What PanelClient asks of the protocol library, so that a test can stand in for it. The operations are those
// of XCTLConnection, with its promises about threads.
class PanelTransport {
 public:
  virtual ~PanelTransport() = default;
  virtual bool connect(const std::string& host, std::uint16_t port, IXCTLClient* client) = 0;
  virtual void disconnect() = 0;
  virtual bool subscribe(const std::string& name) = 0;
  virtual bool callFunctionId(const std::string& functionId, const ParameterList& parameters) = 0;
  // Why the last connection ended by itself, as the end of a sentence; empty when that is not known.
  [[nodiscard]] virtual std::string endReason() { return {}; }
};

// The library's own connection, over TCP.
[[nodiscard]] std::unique_ptr<PanelTransport> makeLibraryTransport();

}  // namespace tessaly
