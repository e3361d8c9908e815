// What a connection asks of the system, and that it gives all of it back.
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "ScriptedPeer.h"
#include "xctl/Session.h"

namespace tessaly {
namespace {

std::size_t entriesOf(const char* folder) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) count += entry.path().empty() ? 0 : 1;
  return count;
}

// fuzz/cable pulls the cable; this tells at once that somebody has taken the means to notice it away.
TEST(Connection, TheSystemIsAskedToNoticeALossWithinFifteenSeconds) {
  ScriptedPeer peer([](ScriptedPeer& self, const Socket& socket) { self.drain(socket); });
  const Socket socket = Socket::beginConnect("127.0.0.1", peer.port());
  const auto option = [&socket](int level, int name) {
    int value = 0;
    socklen_t size = sizeof value;
    EXPECT_EQ(::getsockopt(socket.handle(), level, name, &value, &size), 0);
    return value;
  };
  EXPECT_EQ(option(SOL_SOCKET, SO_KEEPALIVE), 1);
  EXPECT_LE(option(IPPROTO_TCP, TCP_KEEPIDLE) +
                option(IPPROTO_TCP, TCP_KEEPCNT) * option(IPPROTO_TCP, TCP_KEEPINTVL),
            15);
  EXPECT_GT(option(IPPROTO_TCP, TCP_USER_TIMEOUT), 0);
  EXPECT_LE(option(IPPROTO_TCP, TCP_USER_TIMEOUT), 15'000);
}

// What both ends of a connection, and whoever listens, count on.
TEST(SocketTest, TellsHowMuchWasMovedAndWhyNot) {
  using Transfer = Socket::Transfer;
  std::string reason;
  EXPECT_FALSE(Socket::listen("localhost.example", 0, reason).valid());
  EXPECT_EQ(reason, "\"localhost.example\" is no numeric address");
  const Socket listener = Socket::listen("127.0.0.1", 0, reason);
  EXPECT_FALSE(Socket::listen("127.0.0.1", listener.port(), reason).valid());
  EXPECT_EQ(reason, "Address already in use");
  EXPECT_FALSE(listener.accept().valid());
  Socket near = Socket::beginConnect("127.0.0.1", listener.port());
  std::array<Watch, 2> watches{Watch{.socket = &near, .forRead = false, .forWrite = true},
                               Watch{.socket = &listener}};
  EXPECT_TRUE(waitFor(watches, 10'000));
  EXPECT_TRUE(watches[0].writable && !watches[0].readable && watches[1].readable && near.connected());
  const Socket far = listener.accept();
  std::array<char, 8> bytes{};
  std::size_t count = 9;
  EXPECT_EQ(far.receive(bytes, count), Transfer::kAgain);
  EXPECT_EQ(count, 0U);
  watches = {Watch{.socket = &near}, Watch{.socket = &far}};
  EXPECT_TRUE(waitFor(watches, 0)) << "the time is over, and nothing has failed";
  EXPECT_FALSE(watches[0].readable || watches[1].readable);
  EXPECT_EQ(near.send("abc", count), Transfer::kDone);
  EXPECT_EQ(count, 3U);
  near.finishSending();
  while (far.receive(bytes, count) == Transfer::kAgain) continue;
  EXPECT_EQ(std::string(bytes.data(), count), "abc");
  while (far.receive(bytes, count) == Transfer::kAgain) continue;
  EXPECT_EQ(count, 0U);
  const std::string much(1'000'000, 'x');
  while (far.send(much, count) == Transfer::kDone) continue;
  EXPECT_EQ(count, 0U);
  EXPECT_TRUE(far.hasUnconfirmed());
  near.closeAndForget();
  while (far.send(much, count) == Transfer::kAgain) continue;
  EXPECT_EQ(count, 0U);
  const WakeUp wakeUp;
  std::array<Watch, 1> woken{Watch{.socket = &wakeUp.socket()}};
  for (const bool awake : {true, false}) {
    if (awake) wakeUp.wake();
    EXPECT_TRUE(waitFor(woken, 0));
    EXPECT_EQ(woken[0].readable, awake);
    wakeUp.clear();
  }
}

TEST(Connection, AHundredOfEachLeaveNothingBehind) {
  std::atomic<bool> lose{false}, silent{false};
  std::atomic<int> accepted{0};
  ScriptedPeer peer([&](ScriptedPeer& self, const Socket& socket) {
    ++accepted;
    if (!silent) self.send(socket, helloLine("test"));
    if (!lose) self.drain(socket);
  });
  Recorder recorder;
  XCTLConnection connection(kXctlTransportTcp);
  EXPECT_TRUE(connection.connect("127.0.0.1", peer.port(), &recorder));
  connection.disconnect();
  const std::size_t threads = entriesOf("/proc/self/task"), descriptors = entriesOf("/proc/self/fd");
  for (int i = 0; i < 100; ++i) {
    EXPECT_TRUE(connection.connect("127.0.0.1", peer.port(), &recorder));
    if (i % 2 == 0) connection.disconnect();
  }
  connection.disconnect();
  silent = true;
  for (int i = 0; i < 100; ++i) {
    const int before = accepted;
    auto attempt = std::async(std::launch::async,
                              [&] { return connection.connect("127.0.0.1", peer.port(), &recorder); });
    while (accepted == before) std::this_thread::yield();
    connection.disconnect();
    EXPECT_FALSE(attempt.get());
  }
  silent = false;
  lose = true;
  for (int i = 0; i < 100; ++i) (void)connection.connect("127.0.0.1", peer.port(), &recorder);
  connection.disconnect();
  EXPECT_EQ(entriesOf("/proc/self/fd"), descriptors);
  EXPECT_EQ(entriesOf("/proc/self/task"), threads);
  lose = false;
  EXPECT_TRUE(connection.connect("127.0.0.1", peer.port(), &recorder));
}

TEST(Connection, WhatThePeerDoesNotReadIsBoundedAndForgotten) {
  constexpr int kRead = 100;
  const std::string name(100'000, 'n');
  const std::size_t most = 8 * 1024 * 1024 / subscribeLine(name).size();
  std::promise<void> held, release, closed;
  std::promise<int> end;
  std::atomic<int> read{0};
  ScriptedPeer peer([&](ScriptedPeer& self, const Socket& socket) {
    self.send(socket, helloLine("test"));
    std::vector<char> bytes(1'000'000);
    ssize_t count = 1;
    const auto more = [&] {
      do count = ::recv(socket.handle(), bytes.data(), bytes.size(), 0);
      while (count < 0 && errno == EAGAIN);
      return count > 0;
    };
    while (read < kRead && more())
      read += static_cast<int>(std::count(bytes.begin(), bytes.begin() + count, '\n'));
    self.send(socket, valueLine(kTriggerMethod, "T", ""));
    closed.get_future().wait();
    while (more()) {
    }
    end.set_value(count == 0 ? 0 : errno);
  });
  Recorder recorder;
  recorder.after = [&](const std::string& event) {
    if (event != "trigger T=") return;
    held.set_value();
    release.get_future().wait();
  };
  XCTLConnection connection(kXctlTransportTcp);
  EXPECT_TRUE(connection.connect("127.0.0.1", peer.port(), &recorder));
  for (int i = 0; i < kRead; ++i) {
    const bool sent = connection.subscribe(name);
    EXPECT_TRUE(sent) << "no room for line " << i;
    while (sent && read <= i) std::this_thread::yield();
  }
  // From now on nothing is sent.
  EXPECT_EQ(held.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
  std::size_t queued = 0;
  while (queued <= most && connection.subscribe(name)) ++queued;
  EXPECT_EQ(queued, most);
  release.set_value();
  connection.disconnect();
  EXPECT_EQ(recorder.events().back(), "status 1");
  closed.set_value();
  EXPECT_EQ(end.get_future().get(), ECONNRESET) << "an orderly end comes behind all that was called";
}

}  // namespace
}  // namespace tessaly
