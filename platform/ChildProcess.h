#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Channel.h"

namespace tessaly {

// A program run beside this one and talked to in lines over its standard input and output. Its input ends
// when this object or this process is gone, however that came about, so a child that watches its input never
// outlives us. One thread reads; any thread writes.
class ChildProcess {
 public:
  ChildProcess() = default;
  ~ChildProcess() { stop(); }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // `command` is the program's path and its arguments. False when it cannot be run or runs already.
  [[nodiscard]] bool start(const std::vector<std::string>& command);
  [[nodiscard]] bool running() const { return pid_ > 0; }

  // `line` without its end. False when the child is gone.
  [[nodiscard]] bool writeLine(std::string_view line);

  // The next line without its end; nothing when the child has closed its output or `timeoutMs` (below 0:
  // none) has passed. Lines above 64 KB count as the end.
  [[nodiscard]] std::optional<std::string> readLine(int timeoutMs = -1);

  // Ends the child's input and waits for the child; one that does not end within 2 s is killed. A waiting
  // `readLine` returns then.
  void stop();

 private:
  // Runs the program with `channel` as its standard input and output; -1 when it cannot be run.
  static int spawn(const std::vector<std::string>& command, const Channel& channel);
  bool receive(int timeoutMs);  // what has come, at least a byte, goes to `received_`

  std::mutex mutex_;  // of the writers
  Channel channel_;
  int pid_ = -1;
  std::string received_;
};

}  // namespace tessaly
