#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

#include "link/PanelClient.h"
#include "link/PanelMacros.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// Where a panel's two services listen.
struct PanelPlace {
  std::string address;
  std::uint16_t controlPort = kPanelPort;
  std::uint16_t ftpPort = 0;

  [[nodiscard]] std::string control() const;  // the address, with the port if it is not the usual one
};

// The program's connection to a panel, ended with the object. What arrives on the library's thread waits for
// the one thread that uses the object.
class PanelLine {
 public:
  struct Value {
    std::string name;
    std::string text;
  };

  // What is overwritten or deleted on the panel goes to the keeper first.
  PanelLine(const SiteRoot& root, MacroKeeper& keeper, PanelPlace place);
  ~PanelLine();
  PanelLine(const PanelLine&) = delete;
  PanelLine& operator=(const PanelLine&) = delete;

  // Blocks until connected.
  [[nodiscard]] bool open() { return client_.connect(place_.control()); }
  [[nodiscard]] bool connected() const { return client_.state() == kPanelConnected; }

  void subscribe(const std::string& name) { client_.subscribe(name, this, &PanelLine::received); }

  // The values in the order of arrival. Nothing when none came in time or the connection has ended. Of very
  // many that nobody fetched, the oldest are dropped.
  [[nodiscard]] std::optional<Value> next(std::chrono::milliseconds patience);

  // Fetching needs no open line. The result of `get` is empty, or the reason why it failed.
  [[nodiscard]] std::string get(int workplace, int number, const std::string& file);
  [[nodiscard]] TransferOutcome put(int workplace, int number, const std::string& file);
  // False when the panel could not be asked.
  [[nodiscard]] bool remove(int workplace, int number);
  [[nodiscard]] bool rename(int workplace, int number, const std::string& name);
  [[nodiscard]] bool run(int workplace, int number);

 private:
  void received(const std::string& name, const ParameterValue& value);

  PanelPlace place_;
  std::mutex mutex_;  // over values_
  std::condition_variable changed_;
  std::deque<Value> values_;
  PanelClient client_;
  PanelMacros macros_;
};

}  // namespace tessaly
