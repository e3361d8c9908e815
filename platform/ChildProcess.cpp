#include "platform/ChildProcess.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tessaly {
namespace {

constexpr std::chrono::milliseconds kEndTime{2000}, kEndStep{2};

}  // namespace

int ChildProcess::spawn(const std::vector<std::string>& command, const Channel& channel) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  if (posix_spawn_file_actions_init(&actions) != 0) return -1;
  pid_t pid = -1;
  if (posix_spawn_file_actions_adddup2(&actions, channel.number(), STDIN_FILENO) != 0 ||
      posix_spawn_file_actions_adddup2(&actions, channel.number(), STDOUT_FILENO) != 0 ||
      posix_spawn(&pid, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) {
    pid = -1;
  }
  posix_spawn_file_actions_destroy(&actions);
  return pid;
}

bool ChildProcess::writeLine(std::string_view line) {
  const std::scoped_lock guard(mutex_);
  const std::string bytes = std::string(line) + "\n";
  for (std::size_t sent = 0; sent < bytes.size();) {
    const ssize_t count =
        ::send(channel_.number(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) sent += static_cast<std::size_t>(count);
  }
  return true;
}

bool ChildProcess::receive(int timeoutMs) {
  pollfd waiting{channel_.number(), POLLIN, 0};
  int ready = 0;
  do {
    ready = ::poll(&waiting, 1, timeoutMs);
  } while (ready < 0 && errno == EINTR);
  std::array<char, 4096> bytes;
  const ssize_t count = ready > 0 ? ::recv(channel_.number(), bytes.data(), bytes.size(), 0) : 0;
  if (count > 0) received_.append(bytes.data(), static_cast<std::size_t>(count));
  return count > 0;
}

void ChildProcess::stop() {
  if (!running()) return;
  ::shutdown(channel_.number(), SHUT_WR);
  const auto deadline = std::chrono::steady_clock::now() + kEndTime;
  int status = 0;
  while (::waitpid(pid_, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(kEndStep);
    } else {
      ::kill(pid_, SIGKILL);
    }
  }
  pid_ = -1;  // the channel stays open for a reader, until the next start
}

}  // namespace tessaly
