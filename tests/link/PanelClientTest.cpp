#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <vector>

#include "link/PanelClient.h"
#include "tests/link/FakeTransport.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Two operations, to tell observers of one object apart.
struct Listener {
  void first(const std::string& name, const ParameterValue& value) { note("1", name, value); }
  void second(const std::string& name, const ParameterValue& value) { note("2", name, value); }
  void note(const std::string& which, const std::string& name, const ParameterValue& value) {
    log.push_back(which + " " + name + "=" + value.getAsString());
    if (const auto once = std::exchange(inside, nullptr)) once();
  }
  std::vector<std::string> take() { return std::exchange(log, {}); }

  std::vector<std::string> log;
  std::function<void()> inside;  // in the next delivery
};

class PanelClientTest : public testing::Test {
 protected:
  FakePanel panel;
  PanelClient& client = *panel.client;
  Listener listener;
};

TEST_F(PanelClientTest, SubscriptionsAreCachedAndForgottenWithTheConnection) {
  EXPECT_FALSE(client.subscribe("A", &listener, &Listener::first)) << "not connected";
  panel.value("A", "0");
  panel.status(7);  // neither connected nor not connected: subscriptions are taken
  EXPECT_TRUE(client.subscribe("B", &listener, &Listener::first));
  panel.status(kPanelConnected);
  EXPECT_THAT(listener.take(), IsEmpty());
  EXPECT_TRUE(client.subscribe("A", &listener, &Listener::first)) << "an unobserved value is known too";
  EXPECT_THAT(listener.take(), ElementsAre("1 A=0"));
  EXPECT_TRUE(client.subscribe("A", &listener, &Listener::second));
  EXPECT_FALSE(client.subscribe("A", &listener, &Listener::first)) << "already there";
  EXPECT_FALSE(client.subscribe("B", &listener, &Listener::first)) << "already there, nothing has arrived";
  EXPECT_THAT(listener.take(), ElementsAre("2 A=0", "1 A=0", "1 B="));
  EXPECT_TRUE(client.subscribe("B", &listener, &Listener::second)) << "the empty value counts as known";
  EXPECT_THAT(panel.transport->take(), ElementsAre("subscribe B"));
  listener.take();
  panel.value("A", "5");
  EXPECT_THAT(listener.take(), ElementsAre("1 A=5", "2 A=5")) << "one delivery each, in order";

  panel.status(kPanelNotConnected);
  panel.value("B", "6");
  panel.status(kPanelConnected);
  EXPECT_TRUE(client.subscribe("A", &listener, &Listener::first));
  EXPECT_THAT(panel.transport->take(), ElementsAre("subscribe A"));
  EXPECT_THAT(listener.take(), IsEmpty());
}

TEST_F(PanelClientTest, ARefusedSubscriptionStaysRegistered) {
  panel.status(kPanelConnected);
  panel.transport->refusesSubscriptions = true;
  EXPECT_FALSE(client.subscribe("A", &listener, &Listener::first));
  EXPECT_FALSE(client.subscribe("A", &listener, &Listener::second));
  EXPECT_THAT(panel.transport->take(), ElementsAre("subscribe A", "subscribe A")) << "nothing is known yet";
  panel.value("A", "1");
  EXPECT_THAT(listener.take(), ElementsAre("1 A=1", "2 A=1"));
}

TEST_F(PanelClientTest, RemovalByNameByNamesAndByOwner) {
  Listener other;
  panel.status(kPanelConnected);
  const auto subscribeAll = [&] {
    for (const char* name : {"A", "B", "C"}) {
      client.subscribe(name, &listener, &Listener::first);
      client.subscribe(name, &listener, &Listener::second);
    }
    client.subscribe("A", &other, &Listener::first);
    listener.take();
    other.take();
  };
  const auto valuesOfAll = [&] {
    for (const char* name : {"A", "B", "C"}) panel.value(name, "x");
    std::vector<std::string> all = listener.take();
    for (const std::string& line : other.take()) all.push_back("other " + line);
    return all;
  };
  subscribeAll();
  client.unsubscribe("A", &listener, &Listener::first);
  EXPECT_THAT(valuesOfAll(), ElementsAre("2 A=x", "1 B=x", "2 B=x", "1 C=x", "2 C=x", "other 1 A=x"));
  client.unsubscribe(std::vector<std::string>{"B", "C", "unknown"}, &listener, &Listener::second);
  EXPECT_THAT(valuesOfAll(), ElementsAre("2 A=x", "1 B=x", "1 C=x", "other 1 A=x"));
  client.unsubscribeOwner(&listener);
  EXPECT_THAT(valuesOfAll(), ElementsAre("other 1 A=x"));
  panel.transport->take();
  EXPECT_TRUE(client.subscribe("C", &listener, &Listener::first));
  EXPECT_THAT(listener.take(), ElementsAre("1 C=x")) << "still known";
  EXPECT_THAT(panel.transport->take(), IsEmpty());
}

TEST_F(PanelClientTest, AnObserverMayUseTheClientOnTheSubscribingThread) {
  panel.status(kPanelConnected);
  panel.value("A", "1");
  listener.inside = [&] {
    client.subscribe("B", &listener, &Listener::second);
    client.unsubscribeOwner(&listener);
  };
  EXPECT_TRUE(client.subscribe("A", &listener, &Listener::first));
  panel.value("A", "2");
  panel.value("B", "2");
  EXPECT_THAT(listener.take(), ElementsAre("1 A=1"));
}

TEST_F(PanelClientTest, UnsubscribingWaitsForADeliveryAndThenKeepsSubscribersOut) {
  panel.status(kPanelConnected);
  client.subscribe("A", &listener, &Listener::first);
  std::promise<void> entered;
  std::promise<void> leave;
  listener.inside = [&] {
    entered.set_value();
    leave.get_future().wait();
  };
  std::thread library([&] { panel.value("A", "1"); });
  entered.get_future().wait();
  EXPECT_TRUE(client.subscribe("B", &listener, &Listener::first)) << "a subscriber waits for no delivery";
  auto unsubscribed = std::async(std::launch::async, [&] { client.unsubscribeOwner(&listener); });
  // Until it stands before the delivery: then whoever subscribes waits, too.
  std::vector<std::future<void>> subscribed;
  const auto waits = [&](int number) {
    subscribed.push_back(std::async(std::launch::async, [this, name = "C" + std::to_string(number)] {
      client.subscribe(name, &listener, &Listener::first);
    }));
    return subscribed.back().wait_for(std::chrono::milliseconds(50)) == std::future_status::timeout;
  };
  bool waited = false;
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  for (int number = 0; !waited && std::chrono::steady_clock::now() < end; ++number) waited = waits(number);
  EXPECT_TRUE(waited);
  EXPECT_EQ(unsubscribed.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
  panel.status(7);  // a status waits for neither
  leave.set_value();
  library.join();
  unsubscribed.wait();
  for (const auto& one : subscribed) one.wait();
}

TEST_F(PanelClientTest, ConnectAndDisconnectGoByTheStatus) {
  EXPECT_TRUE(client.disconnect());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  EXPECT_TRUE(client.connect("10.0.0.7"));
  EXPECT_TRUE(client.connect("10.0.0.8"));
  panel.transport->letGo(false);
  EXPECT_FALSE(client.connect("10.0.0.9"));
  EXPECT_TRUE(client.state() == kPanelNotConnected && client.host() == "10.0.0.8") << "it stood last";
  EXPECT_THAT(panel.transport->take(),
              ElementsAre("connect 10.0.0.7:56662", "disconnect", "connect 10.0.0.8:56662", "disconnect",
                          "connect 10.0.0.9:56662"));
  const auto yes = [] { return true; };
  const auto no = [] { return false; };
  panel.transport->letGo(true);
  EXPECT_FALSE(client.connect("10.0.0.1", no, yes));
  EXPECT_FALSE(client.connect("10.0.0.2", yes, no));
  EXPECT_THAT(panel.transport->take(), ElementsAre("connect 10.0.0.2:56662", "disconnect"));
}

TEST_F(PanelClientTest, TriggersAndStatusListeners) {
  struct Recorder : StatusListener {
    void connectionStatusChanged(int status) override { seen.push_back(status); }
    std::vector<int> seen;
  } recorder;
  client.addStatusListener(recorder);
  panel.status(kPanelConnected);
  client.observeTrigger("T", &listener, &Listener::first);
  client.triggerValueReceived("T", ParameterValue("1"));
  EXPECT_THAT(listener.take(), ElementsAre("1 T=1"));
  client.subscribe("T", &listener, &Listener::second);
  EXPECT_THAT(listener.take(), IsEmpty()) << "a trigger is not remembered";
  panel.status(kPanelNotConnected);
  client.triggerValueReceived("T", ParameterValue("2"));
  EXPECT_THAT(listener.take(), IsEmpty());
  EXPECT_THAT(recorder.seen, ElementsAre(kPanelConnected, kPanelNotConnected));
}

TEST_F(PanelClientTest, VerboseWritesALineForEachCallAndValue) {
  ParameterList parameters;
  parameters.addString("REG", "007");
  testing::internal::CaptureStdout();
  panel.value("quiet", "1");
  client.setVerbose(true);
  panel.value("PANEL.WP1.MFDCOUNT", "2");
  client.triggerValueReceived("T", ParameterValue("on"));
  client.callFunction("PANEL.MACRO1.DELETE", parameters);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "SID: PANEL.WP1.MFDCOUNT value: 2\ntrigger: T value: on\nFID: PANEL.MACRO1.DELETE " +
                parameters.toString() + "\n");
}

// For the thread sanitizer, and for owners that die right after they have unsubscribed.
TEST_F(PanelClientTest, SurvivesAStorm) {
  struct Counter {
    void received(const std::string&, const ParameterValue& value) { sum += value.getAsString().size(); }
    std::atomic<std::size_t> sum{0};
  };
  constexpr int kRounds = 100;
  const auto nameOf = [](int i) { return "V" + std::to_string(i % 7); };
  std::atomic<int> busy{3};
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) {
        const auto counter = std::make_unique<Counter>();
        for (int k = 0; k < 7; ++k) client.subscribe(nameOf(k), counter.get(), &Counter::received);
        client.unsubscribe(nameOf(round), counter.get(), &Counter::received);
        client.callFunction("F", ParameterList());
        client.unsubscribeOwner(counter.get());
      }
      --busy;
    });
  }
  for (int i = 0; i < 2; ++i) {
    threads.emplace_back([&] {
      for (int k = 0; busy > 0; ++k) {
        panel.value(nameOf(k), std::to_string(k));
        std::this_thread::yield();  // the gate is not fair
      }
    });
  }
  threads.emplace_back([&] {
    for (int k = 0; busy > 0; ++k) panel.status(k % 2);
  });
  for (std::thread& thread : threads) thread.join();
  panel.status(kPanelConnected);
  EXPECT_TRUE(client.subscribe("after the storm", &listener, &Listener::first));
}

}  // namespace
}  // namespace tessaly
