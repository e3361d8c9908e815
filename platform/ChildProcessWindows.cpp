#include <algorithm>
#include <array>
#include <string>

#include "platform/ChannelWindows.h"
#include "platform/ChildProcess.h"
#include "platform/OpenFileWindows.h"

namespace tessaly {
namespace {

constexpr DWORD kEndTime = 2000;  // ms

HANDLE processOf(int number) { return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(number)); }

// One argument as a program takes it apart again: quotes, and the backslashes before one, are escaped.
std::wstring quoted(const std::wstring& argument) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    if (c == L'"') text.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    text += c;
  }
  return text.append(backslashes, L'\\') + L'"';
}

}  // namespace

int ChildProcess::spawn(const std::vector<std::string>& command, const Channel& channel) {
  std::wstring line;
  for (const std::string& argument : command) line += (line.empty() ? L"" : L" ") + quoted(wideOf(argument));
  const HANDLE end = reinterpret_cast<HANDLE>(socketOf(channel));
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = start.hStdOutput = end;
  start.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION made{};
  ::SetHandleInformation(end, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  if (::CreateProcessW(wideOf(command[0]).c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                       nullptr, nullptr, &start, &made) == 0)
    return -1;
  ::CloseHandle(made.hThread);
  return static_cast<int>(reinterpret_cast<std::intptr_t>(made.hProcess));
}

bool ChildProcess::writeLine(std::string_view line) {
  const std::scoped_lock guard(mutex_);
  const std::string bytes = std::string(line) + "\n";
  for (std::size_t sent = 0; sent < bytes.size();) {
    const int count =
        ::send(socketOf(channel_), bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
    if (count < 0) return false;
    sent += static_cast<std::size_t>(count);
  }
  return true;
}

bool ChildProcess::receive(int timeoutMs) {
  std::array<char, 4096> bytes;
  const int count = waitToRead(channel_, timeoutMs)
                        ? ::recv(socketOf(channel_), bytes.data(), static_cast<int>(bytes.size()), 0)
                        : 0;
  if (count > 0) received_.append(bytes.data(), static_cast<std::size_t>(count));
  return count > 0;
}

void ChildProcess::stop() {
  if (!running()) return;
  ::shutdown(socketOf(channel_), SD_SEND);
  if (::WaitForSingleObject(processOf(pid_), kEndTime) != WAIT_OBJECT_0) {
    ::TerminateProcess(processOf(pid_), 1);
    ::WaitForSingleObject(processOf(pid_), kEndTime);
  }
  ::CloseHandle(processOf(pid_));
  pid_ = -1;  // the channel stays open for a reader, until the next start
}

}  // namespace tessaly
