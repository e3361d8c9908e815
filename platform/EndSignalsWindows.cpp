#include <atomic>

#include "platform/ChannelWindows.h"
#include "platform/EndSignals.h"

namespace tessaly {
namespace {

constexpr DWORD kEndTime = 5000;  // ms: after it the system ends the process itself

std::atomic<int> wakeUp{-1};

// On a thread of the system's. A second wish ends the process at once.
BOOL WINAPI noteWish(DWORD wish) {
  const int number = wakeUp.exchange(-1);
  if (number < 0) return FALSE;
  const char byte = 0;
  ::send(static_cast<SOCKET>(number), &byte, 1, 0);
  // Of these the process ends with our return.
  if (wish == CTRL_CLOSE_EVENT || wish == CTRL_LOGOFF_EVENT || wish == CTRL_SHUTDOWN_EVENT) ::Sleep(kEndTime);
  return TRUE;
}

}  // namespace

EndSignals::EndSignals() {
  auto [reading, writing] = Channel::pair();
  if (!reading.isOpen()) return;
  reading_ = std::move(reading);
  writing_ = std::move(writing);
  wakeUp = writing_.number();
  ::SetConsoleCtrlHandler(&noteWish, TRUE);
}

EndSignals::~EndSignals() {
  wakeUp = -1;
  ::SetConsoleCtrlHandler(&noteWish, FALSE);
}

}  // namespace tessaly
