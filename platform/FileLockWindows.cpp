#include <array>
#include <cerrno>
#include <thread>

#include "platform/FileLock.h"
#include "platform/OpenFileWindows.h"
#include "platform/SystemFailure.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kLookAgain{3};     // while somebody else holds the lock
constexpr std::size_t kLongestText = 64;  // bytes
// Beyond any text: what is locked nobody else may read.
constexpr std::uint64_t kFirstLock = std::uint64_t{1} << 62;

// A lock is one byte of the file, beyond its end.
bool lockByte(const Descriptor& file, std::uint64_t number) {
  const std::uint64_t place = kFirstLock + number % kFirstLock;
  OVERLAPPED at{};
  at.Offset = static_cast<DWORD>(place);
  at.OffsetHigh = static_cast<DWORD>(place >> 32);
  return ::LockFileEx(handleOf(file), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &at) != 0;
}

OVERLAPPED beginning() { return {}; }

}  // namespace

Expected<FileLock> FileLock::take(const std::filesystem::path& file, std::uint64_t number,
                                  milliseconds patience) {
  FileLock lock;
  lock.file_ = openFile(file, {.access = GENERIC_READ | GENERIC_WRITE,
                               .creation = OPEN_ALWAYS,
                               .flags = FILE_FLAG_OPEN_REPARSE_POINT | FILE_ATTRIBUTE_NORMAL});
  if (!lock.file_.isOpen()) return systemFailure(errno, "locked");
  if (!isDiskFile(lock.file_, kOwnFile))
    return Failure{Failure::Kind::kInTheWay, "cannot be locked: not a regular file"};
  const auto latest = steady_clock::now() + patience;
  while (!lockByte(lock.file_, number)) {
    const DWORD error = ::GetLastError();
    if (error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING)
      return systemFailure(errorNumber(error), "locked");
    if (steady_clock::now() >= latest)
      return Failure{Failure::Kind::kInUse, "is being changed by another program"};
    std::this_thread::sleep_for(kLookAgain);
  }
  return lock;
}

std::string FileLock::text() const {
  std::array<char, kLongestText> space;
  OVERLAPPED at = beginning();
  DWORD count = 0;
  if (::ReadFile(handleOf(file_), space.data(), static_cast<DWORD>(space.size()), &count, &at) == 0)
    return {};
  return {space.data(), count};
}

Outcome FileLock::setText(const std::string& text) const {
  OVERLAPPED at = beginning();
  DWORD written = 0;
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(text.size());
  const HANDLE file = handleOf(file_);
  if (::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, &at) != 0 &&
      written == text.size() && ::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) != 0 &&
      ::SetEndOfFile(file) != 0)
    return {};
  return systemFailure(errorNumber(), "written");
}

}  // namespace tessaly
