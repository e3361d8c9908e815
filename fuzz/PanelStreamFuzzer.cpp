#include <array>
#include <memory>
#include <thread>
#include <vector>

#include "fuzz/Fuzzing.h"
#include "link/MacroNames.h"
#include "link/PanelClient.h"
#include "link/PanelSubscriptions.h"
#include "xctl/Session.h"

// What a panel may send to the editor: the first byte tells the size of the pieces, and whether a greeting
// stands before the rest. The session reads it from a loopback connection and hands it to the panel client.
namespace tessaly {
namespace {

constexpr int kPatience = 5000;  // ms

class Transport final : public PanelTransport {
 public:
  bool connect(const std::string&, std::uint16_t, IXCTLClient*) override { return true; }
  void disconnect() override {}
  bool subscribe(const std::string& name) override { return session == nullptr || session->subscribe(name); }
  bool callFunctionId(const std::string&, const ParameterList&) override { return true; }

  Session* session = nullptr;  // takes the values of subscribed names only
};

class View final : public MacroNamesView {
 public:
  [[nodiscard]] bool showsPanel(Pane) const override { return true; }
  void rebuildMacros(Pane) override {}
};

class Statuses final : public StatusListener {
 public:
  void connectionStatusChanged(int status) override { seen.push_back(status); }
  std::vector<int> seen;  // of the session's thread, read when it has ended
};

Socket& listener() {
  static std::string reason;
  static Socket socket = Socket::listen("127.0.0.1", 0, reason);
  return socket;
}

Socket acceptEditor() {
  std::array<Watch, 1> watches{Watch{.socket = &listener()}};
  require(waitFor(watches, kPatience) && watches[0].readable, "the session connects");
  return listener().accept();
}

// Sends as far as the session reads.
void sendAll(const Socket& socket, std::string_view bytes, std::size_t piece) {
  while (!bytes.empty()) {
    std::size_t sent = 0;
    const Socket::Transfer result = socket.send(bytes.substr(0, piece), sent);
    if (result == Socket::Transfer::kClosed) return;
    bytes.remove_prefix(sent);
    std::array<Watch, 1> watches{Watch{.socket = &socket, .forRead = false, .forWrite = true}};
    if (result == Socket::Transfer::kAgain && !waitFor(watches, kPatience)) return;
  }
}

void waitForEnd(const Socket& socket) {
  std::array<char, 4096> bytes;
  std::size_t count = 0;
  std::array<Watch, 1> watches{Watch{.socket = &socket}};
  while (socket.receive(bytes, count) != Socket::Transfer::kClosed) {
    require(waitFor(watches, kPatience) && watches[0].readable, "the session ends");
  }
}

void run(FuzzInput input) {
  const std::uint8_t first = input.byte();
  const bool greets = first % 2 == 0;
  const std::string_view stream = input.rest();

  auto owned = std::make_unique<Transport>();
  Transport& transport = *owned;
  PanelClient client(std::move(owned));
  PanelSubscriptions subscriptions(client);
  View view;
  MacroNames names(client, subscriptions, view);
  Statuses statuses;
  client.addStatusListener(statuses);
  Session session(&client);
  transport.session = &session;
  std::thread thread([&session] { session.run("127.0.0.1", listener().port()); });
  {
    Socket panel = acceptEditor();
    if (greets) {
      sendAll(panel, helloLine("fuzzer"), 1000);
      require(session.waitOpen(), "a greeting opens the session");
      names.subscribe(1);
      subscriptions.subscribeWorkplaceCounts();
    }
    sendAll(panel, stream, std::size_t{first} * 8 + 1);
    panel.finishSending();
    waitForEnd(panel);
  }
  thread.join();

  require(statuses.seen.empty() || statuses.seen == std::vector<int>{kPanelConnected, kPanelNotConnected},
          "a session is reported once, and its end once");
  require(!greets || statuses.seen.size() == 2, "an open session is reported");
  require(session.done() && client.state() == kPanelNotConnected, "nothing is connected afterwards");
  require(!client.callFunction("A", {}) || !session.send(subscribeLine("A")), "nothing is sent afterwards");
  for (const Pane pane : kPanes) {
    require(names.names(pane).size() == static_cast<std::size_t>(MacroNumber::kCount),
            "the tables keep their size");
  }
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
