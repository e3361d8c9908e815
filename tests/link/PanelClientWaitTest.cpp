#include <atomic>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <iterator>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

#include "link/PanelClient.h"
#include "tests/link/FakeTransport.h"

namespace tessaly {
namespace {

struct BlockingListener {
  void hear(const std::string&, const ParameterValue&) {
    if (const auto once = std::exchange(inside, nullptr)) once();
  }
  std::function<void()> inside;  // in the next delivery
};

// True once the thread sleeps, in the lock that it waits for.
bool sleeps(pid_t thread) {
  std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
  const std::string line((std::istreambuf_iterator<char>(file)), {});
  return line.find(") S ") != std::string::npos;
}

// A name that is put in the table behind a loss would never be asked for: the next subscriber takes it for
// known.
TEST(PanelClientWaitTest, ALossWhileASubscriberWaitsItsTurnLeavesNoNameUnasked) {
  FakePanel panel;
  PanelClient& client = *panel.client;
  BlockingListener listener;
  panel.status(kPanelConnected);
  panel.value("A", "1");
  std::atomic<pid_t> waiting{0};
  std::atomic<bool> answer{true};
  std::thread subscriber;
  listener.inside = [&] {  // holds the subscribers' lock
    subscriber = std::thread([&] {
      waiting = static_cast<pid_t>(::syscall(SYS_gettid));
      answer = client.subscribe("B", &listener, &BlockingListener::hear);
    });
    while (waiting == 0 || !sleeps(waiting)) std::this_thread::yield();
    panel.status(kPanelNotConnected);
  };
  client.subscribe("A", &listener, &BlockingListener::hear);
  subscriber.join();
  EXPECT_FALSE(answer);
  panel.status(kPanelConnected);
  panel.transport->take();
  EXPECT_TRUE(client.subscribe("B", &listener, &BlockingListener::hear));
  EXPECT_THAT(panel.transport->take(), testing::ElementsAre("subscribe B"));
}

}  // namespace
}  // namespace tessaly
