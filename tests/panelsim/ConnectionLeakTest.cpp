// Many connections of one process, as a long night of work makes them: nothing may be left over.
#include <filesystem>

#include "link/PanelConnection.h"
#include "tests/panelsim/PanelFixture.h"

namespace tessaly {
namespace {

constexpr int kTimes = 100;

class QuietWindow : public PanelConnectionView {
 public:
  void startTimer(Pane, std::chrono::milliseconds) override {}
  void killTimer(Pane) override {}
  void showConnection(Pane, const PaneConnectionDisplay&) override {}
  void rebuildLists(Pane) override {}
  void showDemoListing() override {}
  void rebuildWorkplaces(Pane) override {}
  void postConnected(Pane) override { ++posted; }
  std::atomic<int> posted{0};
};

std::size_t entries(const char* folder) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

class ConnectionLeakTest : public PanelTest {
 protected:
  // Never freed: attempts that were given up may end after the test.
  static PanelClient& lastingClient() {
    static auto* client = new PanelClient;
    return *client;
  }

  PanelClient& client = lastingClient();
  PanelSubscriptions subscriptions{client};
  QuietWindow window;
  PanelConnection connection{client, subscriptions, site.messages, window};

  void press() {
    connection.setTexts(Pane::kA, "c:\\appli", "127.0.0.1:" + std::to_string(panel->controlPort()));
    connection.refresh(Pane::kA);
    connection.connectButton(Pane::kA);
  }
  void connectOnce(int number) {
    press();
    ASSERT_TRUE(soon([this, number] { return window.posted == number; }));
    connection.connectedMessage(Pane::kA);
    ASSERT_TRUE(connection.connected(Pane::kA));
  }
};

TEST_F(ConnectionLeakTest, NothingIsLeftOver) {
  start();
  connection.choosePanel(Pane::kA);
  connectOnce(1);
  connection.connectButton(Pane::kA);
  ASSERT_TRUE(soon([this] { return panel->connections() == 0; }));
  const std::size_t threads = entries("/proc/self/task"), descriptors = entries("/proc/self/fd");

  for (int i = 0; i < kTimes; ++i) {
    connectOnce(2 + i);
    connection.connectButton(Pane::kA);
  }
  for (int i = 0; i < kTimes; ++i) {
    connectOnce(2 + kTimes + i);
    panel->dropConnections();
    ASSERT_TRUE(soon([this] { return client.state() == kPanelNotConnected; }));
    connection.connectButton(Pane::kA);
  }
  PanelFaults silent;
  silent.control.neverAnswer = true;
  ASSERT_TRUE(panel->setFaults(silent));
  for (int i = 0; i < kTimes; ++i) {
    press();
    connection.timeOut(Pane::kA);
  }
  EXPECT_EQ(site.messages.take().size(), static_cast<std::size_t>(kTimes)) << "one box an attempt";
  // The next connection works, and after it all is as it was: the silent connections' own ends, which are in
  // this process, too, go with the line.
  ASSERT_TRUE(panel->setFaults({}));
  connectOnce(2 + 2 * kTimes);
  connection.connectButton(Pane::kA);
  EXPECT_TRUE(soon([&] {
    panel->dropConnections();
    return entries("/proc/self/task") <= threads && entries("/proc/self/fd") <= descriptors;
  })) << entries("/proc/self/task")
      << " threads and " << entries("/proc/self/fd") << " descriptors, before " << threads << " and "
      << descriptors;
}

}  // namespace
}  // namespace tessaly
