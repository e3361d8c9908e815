#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// The panel's control protocol, with exactly the operations that the system uses. The open implementation in
// this folder speaks the protocol of docs/protocol.md; the maker's library can be linked in its place.

// Must be called once before a connection is made; repeating it does nothing. Any thread.
void xctlInit();

enum ETransport : int { kXctlTransportNone = 0, kXctlTransportTcp = 1 };

// A value as the panel sent it; text on the wire.
class ParameterValue {
 public:
  ParameterValue() = default;
  explicit ParameterValue(std::string text) : text_(std::move(text)) {}

  std::string getAsString() const { return text_; }
  // False, `value` untouched, unless the whole text is a decimal integer of 32 bits.
  bool getIntValue(int& value) const;

 private:
  std::string text_;
};

// Named texts of a function call, in the order of adding.
class ParameterList {
 public:
  void addString(const std::string& name, const std::string& value);
  // On the standard output, without an end of line: NAME="value", ...
  void print() const;
  std::string toString() const;  // what print writes

  const std::vector<std::pair<std::string, std::string>>& items() const { return items_; }

 private:
  std::vector<std::pair<std::string, std::string>> items_;
};

// Callbacks, made on the library's own thread with none of its locks held.
class IXCTLClient {
 public:
  virtual void triggerValueReceived(const std::string& name, const ParameterValue& value) = 0;
  virtual void subscribedValueReceived(const std::string& name, const ParameterValue& value) = 0;
  virtual void connectionStatusChanged(int status) = 0;  // 0 connected, 1 not connected
  virtual ~IXCTLClient() = default;
};

// One connection to a panel. Operations may be called from any thread, also from a callback, but for the
// destructor, which ends the connection and must not be called from a callback. An operation that ends a
// connection waits until a running callback has returned (not for the one it is called from), so a callback
// must not wait for its caller.
class XCTLConnection {
 public:
  explicit XCTLConnection(ETransport transport);
  ~XCTLConnection();
  XCTLConnection(const XCTLConnection&) = delete;
  XCTLConnection& operator=(const XCTLConnection&) = delete;

  // Blocks until the panel has greeted us, at most 5 s. Status 0 is reported before it returns true; a
  // connection that does not come about reports nothing. While connected it ends the old connection first. A
  // later connect ends one that is still pending. `host` is a numeric address (names are not looked up, since
  // that cannot be bounded in time), or "address:port" when a panel listens on another port. `client` is
  // called until the connection has ended.
  bool connect(const std::string& host, std::uint16_t port, IXCTLClient* client);

  // Ends the connection, also one that is being made; lines that wait are sent first if the panel takes them
  // at once. Status 1 has been reported when it returns, also when it is called from a callback; nothing is
  // called afterwards.
  void disconnect();

  // Both return at once; false when not connected or when too much waits to be sent (8 MB). True is no
  // promise: what has not arrived when the connection ends is dropped.
  bool subscribe(const std::string& name);
  bool callFunctionId(const std::string& functionId, const ParameterList& parameters);

#ifdef TESSALY_OPEN_XCTL
  // Of this implementation only: why the last connection ended by itself, such as "the panel is gone"; empty
  // when it did not.
  std::string endReason();
#endif

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};
