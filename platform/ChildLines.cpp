#include "platform/ChildProcess.h"

namespace tessaly {
namespace {

constexpr std::size_t kLongestLine = std::size_t{64} * 1024;

}  // namespace

bool ChildProcess::start(const std::vector<std::string>& command) {
  if (command.empty() || running()) return false;
  auto [ours, theirs] = Channel::pair();
  if (!ours.isOpen()) return false;
  pid_ = spawn(command, theirs);
  if (pid_ < 0) return false;
  channel_ = std::move(ours);
  received_.clear();
  return true;
}

std::optional<std::string> ChildProcess::readLine(int timeoutMs) {
  while (received_.size() <= kLongestLine) {
    const std::size_t end = received_.find('\n');
    if (end != std::string::npos) {
      std::string line = received_.substr(0, end);
      received_.erase(0, end + 1);
      return line;
    }
    if (!receive(timeoutMs)) return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace tessaly
