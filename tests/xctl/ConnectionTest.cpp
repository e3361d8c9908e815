#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <stdexcept>

#include "ScriptedPeer.h"
#include "xctl/Session.h"

namespace tessaly {
namespace {

using Events = std::vector<std::string>;

std::string hello() { return helloLine("test"); }
std::string value(const std::string& name, const std::string& text) {
  return valueLine(kValueMethod, name, text);
}

// To who asks for one.
void sendTwoValues(ScriptedPeer& self, const Socket& socket) {
  self.send(socket, hello());
  self.readLine(socket);
  self.send(socket, value("A", "1") + value("A", "2"));
  self.drain(socket);
}

TEST(Connection, HostilePeerEndsItWithStatusOneAReasonAndNothingElse) {
  struct Case {
    const char* what;
    std::string bytes;
    bool connects;
    Events events;
    const char* reason = "the panel does not speak the protocol";
  };
  const Events ended = {"status 0", "status 1"};
  const Events oneValue = {"status 0", "value A=1", "status 1"};
  constexpr const char* kEndless = "the panel sent a line without end";
  const std::string gone = "the panel is gone";
  const std::vector<Case> table = {
      {"closed at once", "", false, {}, "the panel is gone"},
      {"garbage for a greeting", "220 FTP ready\r\n", false, {}},
      {"value before the greeting", value("A", "0") + hello() + value("A", "1") + "x\n", true, oneValue},
      {"garbage", hello() + std::string(1, '\0') + "\xff\xfe\n", true, ended},
      {"half a line", hello() + value("A", "1") + value("A", "2").substr(0, 40), true, oneValue,
       "the panel is gone"},
      {"no UTF-8",
       hello() + "{\"jsonrpc\":\"2.0\",\"method\":\"value\",\"params\":{\"name\":\"\xfc\",\"value\":\"\"}}\n",
       true, ended},
      {"endless line", hello() + std::string(kLongestLine + 1, ' '), true, ended, kEndless},
      {"endless greeting", std::string(4 * kLongestLine, '{'), false, {}, kEndless},
      {"value that nobody asked for", hello() + value("B", "1") + value("A", "1") + "x\n", true, oneValue},
      {"longest value", hello() + value("A", "1") + value("B", std::string(kLongestValue, 'v')) + "x\n", true,
       oneValue},
      {"too long a value", hello() + value("B", std::string(kLongestValue + 1, 'v')) + value("A", "1"), true,
       ended, "the panel sent a value of more than 64 kB"},
      {"abyss", hello() + std::string(kLongestLine / 2, '[') + "\n" + value("A", "1"), true, ended},
      {"objects to ignore",
       hello() + hello() + "[]\n7\n{\"jsonrpc\":\"2.0\",\"result\":1,\"id\":1}\n" +
           "{\"jsonrpc\":\"2.0\",\"method\":\"value\"}\n{\"jsonrpc\":\"2.0\",\"method\":\"nod\",\"params\":{}"
           "}\n" +
           "{\"jsonrpc\":\"2.0\",\"method\":\"value\",\"params\":{\"name\":\"A\",\"value\":3}}\n" +
           value("A", "1") + "x\n",
       true, oneValue},
      {"trigger",
       hello() + valueLine(kTriggerMethod, "T", "9") + "x\n",
       true,
       {"status 0", "trigger T=9", "status 1"}},
  };
  for (const Case& entry : table) {
    SCOPED_TRACE(entry.what);
    Recorder recorder;
    XCTLConnection connection(kXctlTransportTcp);
    std::promise<void> connected, left;
    ScriptedPeer peer([&](ScriptedPeer& self, const Socket& socket) {
      // The rest is held back until connect has returned, so that its result does not hang on the order of
      // threads.
      const std::size_t greeting =
          entry.connects ? entry.bytes.find(hello()) + hello().size() : entry.bytes.size();
      if (!self.send(socket, entry.bytes.substr(0, greeting)) || !entry.connects) return;
      connected.get_future().wait();
      self.readLine(socket);  // the subscription: closing with bytes unread would throw away what is sent
      self.send(socket, entry.bytes.substr(greeting));
      while (entry.reason != gone && self.send(socket, "x")) continue;
      left.set_value();
    });
    EXPECT_EQ(connection.connect("127.0.0.1", peer.port(), &recorder), entry.connects);
    EXPECT_EQ(connection.subscribe("A"), entry.connects);
    connected.set_value();
    if (entry.connects) {
      EXPECT_TRUE(recorder.waitFor("status 1"));
      EXPECT_EQ(left.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
    }
    EXPECT_EQ(connection.endReason(), entry.reason);
    EXPECT_FALSE(connection.subscribe("A"));
    connection.disconnect();
    EXPECT_EQ(recorder.events(), entry.events);
  }
}

TEST(Connection, ReportsZeroBeforeConnectReturnsAndCallsOnItsOwnThread) {
  std::promise<Events> heard;
  ScriptedPeer peer([&](ScriptedPeer& self, const Socket& socket) {
    self.send(socket, hello());
    Events lines;
    for (std::string line = self.readLine(socket); !line.empty(); line = self.readLine(socket)) {
      lines.push_back(line + "\n");
      WireMessage message;
      if (parseLine(line, message) == LineKind::kMessage && message.name) {
        self.send(socket, value(*message.name, "caf\xe9"));
      }
    }
    heard.set_value(lines);
  });
  Recorder recorder;
  XCTLConnection connection(kXctlTransportTcp);
  ParameterList parameters;
  parameters.addString("REG", "007");
  EXPECT_FALSE(connection.callFunctionId("F", parameters));
  ASSERT_TRUE(connection.connect("127.0.0.1:" + std::to_string(peer.port()), 1, &recorder));
  EXPECT_EQ(recorder.events(), Events{"status 0"});
  EXPECT_NE(recorder.lastThread(), std::this_thread::get_id());
  EXPECT_TRUE(connection.subscribe("GR\xdcN"));
  EXPECT_FALSE(connection.subscribe(std::string(kLongestLine, 'x')));
  EXPECT_TRUE(recorder.waitFor("value GR\xdcN=café")) << "the name comes back in the bytes that were given";
  EXPECT_TRUE(connection.callFunctionId("F", parameters));
  connection.disconnect();  // what was called just before still arrives
  EXPECT_EQ(heard.get_future().get(), (Events{subscribeLine("GRÜN"), callLine("F", parameters)}));
  EXPECT_EQ(recorder.events().back(), "status 1");
  connection.disconnect();
  EXPECT_EQ(recorder.events().size(), 3U);
}

// Counts what it is given and keeps none of it.
struct Counter : IXCTLClient {
  void triggerValueReceived(const std::string&, const ParameterValue&) override {}
  void subscribedValueReceived(const std::string&, const ParameterValue&) override { ++values; }
  void connectionStatusChanged(int status) override {
    if (status == 1) ended.set_value();
  }
  std::atomic<std::size_t> values{0};
  std::promise<void> ended;
};

TEST(Connection, TheLatestValuesTogetherAreBounded) {
  constexpr std::size_t kFull = kMostValues / kLongestValue;
  const auto nameOf = [](std::size_t i) { return "N" + std::to_string(i); };
  std::promise<void> subscribed;
  ScriptedPeer peer([&](ScriptedPeer& self, const Socket& socket) {
    self.send(socket, hello());
    subscribed.get_future().wait();
    // A value that takes the place of another one of its name takes no more room.
    for (int round = 0; round < 2; ++round)
      for (std::size_t i = 0; i < kFull; ++i)
        self.send(socket, value(nameOf(i), std::string(kLongestValue, 'v')));
    self.send(socket, value(nameOf(kFull), "v"));
    self.drain(socket);
  });
  Counter counter;
  XCTLConnection connection(kXctlTransportTcp);
  ASSERT_TRUE(connection.connect("127.0.0.1", peer.port(), &counter));
  for (std::size_t i = 0; i <= kFull; ++i) ASSERT_TRUE(connection.subscribe(nameOf(i)));
  subscribed.set_value();
  counter.ended.get_future().wait();
  EXPECT_EQ(counter.values, 2 * kFull);
  EXPECT_EQ(connection.endReason(), "the panel sent more than 64 MB of values");
}

TEST(Connection, CallbacksMayDisconnectAndConnectAgain) {
  ScriptedPeer peer(sendTwoValues);
  Recorder first, second;
  XCTLConnection connection(kXctlTransportTcp);
  std::promise<bool> connected;
  first.after = [&](const std::string& event) {
    if (event != "value A=1") return;
    connection.disconnect();
    connected.set_value(connection.connect("127.0.0.1", peer.port(), &second) && connection.subscribe("A"));
  };
  EXPECT_TRUE(connection.connect("127.0.0.1", peer.port(), &first));
  EXPECT_TRUE(connection.subscribe("A"));
  EXPECT_TRUE(connected.get_future().get());
  EXPECT_TRUE(second.waitFor("value A=2"));
  connection.disconnect();
  EXPECT_EQ(first.events(), (Events{"status 0", "value A=1", "status 1"}));
  EXPECT_EQ(second.events(), (Events{"status 0", "value A=1", "value A=2", "status 1"}));
  // A connection that goes meanwhile waits for the callback.
  Recorder third;
  auto going = std::make_unique<XCTLConnection>(kXctlTransportTcp);
  std::promise<void> inside;
  std::atomic<bool> returned{false};
  third.after = [&](const std::string& event) {
    if (event != "value A=1") return;
    going->disconnect();
    inside.set_value();
    std::this_thread::yield();
    returned = true;
  };
  EXPECT_TRUE(going->connect("127.0.0.1", peer.port(), &third));
  EXPECT_TRUE(going->subscribe("A"));
  inside.get_future().wait();
  going.reset();
  EXPECT_TRUE(returned);
}

TEST(Connection, AThrowingClientEndsItsConnectionOnly) {
  ScriptedPeer peer(sendTwoValues);
  Recorder recorder;
  XCTLConnection connection(kXctlTransportTcp);
  recorder.after = [](const std::string& event) {
    if (event != "status 0") throw std::runtime_error(event);
  };
  EXPECT_TRUE(connection.connect("127.0.0.1", peer.port(), &recorder));
  EXPECT_TRUE(connection.subscribe("A"));
  EXPECT_TRUE(recorder.waitFor("status 1"));
}

TEST(Connection, ConnectIsBoundedAndCanBeAbandoned) {
  ScriptedPeer silent([](ScriptedPeer& self, const Socket& socket) { self.drain(socket); });
  Recorder recorder;
  XCTLConnection connection(kXctlTransportTcp);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(connection.connect("127.0.0.1", silent.port(), &recorder));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(7));
  for (const char* host : {"", "panel.example", "1.2.3.4:x", "127.0.0.1:", "300.1.1.1", "10.0.0."}) {
    EXPECT_FALSE(connection.connect(host, silent.port(), &recorder)) << host;
  }
  EXPECT_FALSE(XCTLConnection(kXctlTransportNone).connect("127.0.0.1", silent.port(), &recorder));
  EXPECT_FALSE(connection.connect("127.0.0.1", silent.port(), nullptr));
  EXPECT_TRUE(recorder.events().empty());
}

TEST(Connection, StormFromSeveralThreadsKeepsTheOrderOfStatuses) {
  ScriptedPeer peer([](ScriptedPeer& self, const Socket& socket) {
    std::string burst = hello();
    for (int i = 0; i < 200; ++i) burst += value("A", "x");
    while (self.send(socket, burst)) {
    }
  });
  Recorder recorder;
  {
    XCTLConnection connection(kXctlTransportTcp);
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
      threads.emplace_back([&] {
        while (!stop) (void)connection.subscribe("A"), (void)connection.callFunctionId("F", {});
      });
      threads.emplace_back([&] {
        for (int n = 0; n < 30; ++n) (void)connection.connect("127.0.0.1", peer.port(), &recorder);
      });
      threads.emplace_back([&] {
        while (!stop) connection.disconnect(), std::this_thread::yield();
      });
    }
    threads[1].join();
    threads[4].join();
    stop = true;
    for (std::thread& thread : threads) {
      if (thread.joinable()) thread.join();
    }
  }
  int balance = 0;
  for (const std::string& event : recorder.events()) {
    if (event == "status 0") ++balance;
    if (event == "status 1") --balance;
    ASSERT_TRUE(balance == 0 || balance == 1);
  }
  EXPECT_EQ(balance, 0);
}

}  // namespace
}  // namespace tessaly
