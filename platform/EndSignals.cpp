#include "platform/EndSignals.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tessaly {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};

std::atomic<int> wakeUp{-1};
static_assert(std::atomic<int>::is_always_lock_free);  // for the handler

void noteSignal(int) {
  const int error = errno;
  const char byte = 0;
  static_cast<void>(!::write(wakeUp.load(), &byte, 1));
  errno = error;
}

void setHandlers(void (*handler)(int), void (*instead)(int)) {
  for (const int number : kSignals) {
    struct sigaction now {};
    if (::sigaction(number, nullptr, &now) != 0 || now.sa_handler != instead) continue;
    struct sigaction wanted {};
    wanted.sa_handler = handler;
    wanted.sa_flags = SA_RESTART | SA_RESETHAND;
    ::sigaction(number, &wanted, nullptr);
  }
}

}  // namespace

EndSignals::EndSignals() {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  reading_ = Channel(ends[0]);
  writing_ = Channel(ends[1]);
  wakeUp = writing_.number();
  setHandlers(&noteSignal, SIG_DFL);
}

EndSignals::~EndSignals() { setHandlers(SIG_DFL, &noteSignal); }

}  // namespace tessaly
