#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "link/PanelClient.h"

namespace tessaly {

// A protocol library that records its calls, connects when the test lets it, and reports status 1 at
// disconnect.
class FakeTransport : public PanelTransport {
 public:
  bool connect(const std::string& host, std::uint16_t port, IXCTLClient* client) override {
    std::unique_lock guard(mutex_);
    client_ = client;
    calls_.push_back("connect " + host + ":" + std::to_string(port));
    changed_.notify_all();
    changed_.wait(guard, [this] { return !held_; });
    const bool answer = accepts_;
    guard.unlock();
    if (answer) client->connectionStatusChanged(kPanelConnected);
    return answer;
  }
  void disconnect() override {
    record("disconnect");
    if (!statusIsLate) client_->connectionStatusChanged(kPanelNotConnected);
  }
  bool subscribe(const std::string& name) override {
    record("subscribe " + name);
    return !refusesSubscriptions;
  }
  bool callFunctionId(const std::string& functionId, const ParameterList& parameters) override {
    record("call " + functionId + "(" + parameters.toString() + ")");
    return true;
  }

  // From now on connect blocks, until let go with an answer.
  void hold() {
    const std::scoped_lock guard(mutex_);
    held_ = true;
  }
  void letGo(bool accepts) {
    const std::scoped_lock guard(mutex_);
    held_ = false;
    accepts_ = accepts;
    changed_.notify_all();
  }
  // Waits for a call that has not been taken yet, and forgets it and all before it. One that does not come is
  // a failure.
  void await(const std::string& call) {
    std::unique_lock guard(mutex_);
    auto found = calls_.end();
    const auto came = [&] { return (found = std::find(calls_.begin(), calls_.end(), call)) != calls_.end(); };
    if (changed_.wait_for(guard, std::chrono::seconds(10), came))
      calls_.erase(calls_.begin(), found + 1);
    else
      ADD_FAILURE() << "no " << call;
  }
  std::vector<std::string> take() {
    const std::scoped_lock guard(mutex_);
    return std::exchange(calls_, {});
  }

  bool statusIsLate = false;
  bool refusesSubscriptions = false;

 private:
  void record(std::string call) {
    const std::scoped_lock guard(mutex_);
    calls_.push_back(std::move(call));
    changed_.notify_all();
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::string> calls_;
  bool held_ = false;
  bool accepts_ = true;
  IXCTLClient* client_ = nullptr;
};

// A client over a FakeTransport. As in the program it lives until the process ends: an abandoned worker may
// still be on its way out of it.
struct FakePanel {
  FakePanel() {
    auto fake = std::make_unique<FakeTransport>();
    transport = fake.get();
    static auto* kept = new std::vector<std::unique_ptr<PanelClient>>;
    kept->push_back(std::make_unique<PanelClient>(std::move(fake)));
    client = kept->back().get();
  }
  void status(int number) { client->connectionStatusChanged(number); }
  void value(const std::string& name, const std::string& text) {
    client->subscribedValueReceived(name, ParameterValue(text));
  }

  FakeTransport* transport = nullptr;
  PanelClient* client = nullptr;
};

}  // namespace tessaly
