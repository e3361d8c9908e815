#include <array>
#include <cerrno>
#include <ctime>
#include <string>

#include "platform/LockRecord.h"
#include "platform/OpenFileWindows.h"
#include "platform/SiteLock.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr const char* kName = ".tessaly.lock";
constexpr int kAttempts = 100;  // of starts that get into each other's way
// The lock is this opening, which lets others read and rename the file, and removes it when its process ends,
// however that comes about. Who finds a file that can be opened like this finds no living process's.
constexpr Opening kHolding{GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, CREATE_NEW,
                           FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE};
constexpr Opening kTrying{GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, OPEN_EXISTING,
                          FILE_FLAG_OPEN_REPARSE_POINT};
constexpr DWORD kEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::int64_t kSecondsBefore1970 = 11'644'473'600, kTicksASecond = 10'000'000;

std::string thisHost() {
  std::array<wchar_t, 256> name{};
  auto size = static_cast<DWORD>(name.size());
  return ::GetComputerNameExW(ComputerNameDnsHostname, name.data(), &size) != 0 ? utf8Of({name.data(), size})
                                                                                : std::string();
}

std::string thisUser() {
  std::array<wchar_t, 257> name{};
  auto size = static_cast<DWORD>(name.size());
  return ::GetUserNameW(name.data(), &size) != 0 && size > 0 ? utf8Of({name.data(), size - 1})
                                                             : std::string();
}

LockHolder readRecord(const Descriptor& file) {
  std::array<char, kLongestLockRecord> bytes{};
  DWORD size = 0;
  FILETIME changed{};
  OVERLAPPED beginning{};
  const HANDLE handle = handleOf(file);
  if (::ReadFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &size, &beginning) == 0) size = 0;
  ::GetFileTime(handle, nullptr, nullptr, &changed);
  const auto ticks =
      static_cast<std::int64_t>(std::uint64_t{changed.dwHighDateTime} << 32 | changed.dwLowDateTime);
  return lockHolder({bytes.data(), size}, ticks / kTicksASecond - kSecondsBefore1970);
}

void writeRecord(const Descriptor& file) {
  const std::string record = lockRecord(
      {thisHost(), thisUser(), static_cast<std::int64_t>(::GetCurrentProcessId()), std::time(nullptr)});
  DWORD written = 0;
  // On a full disk the lock holds all the same; it only does not tell whose it is.
  ::WriteFile(handleOf(file), record.data(), static_cast<DWORD>(record.size()), &written, nullptr);
}

// Once all who have it open have closed it.
bool removed(const Descriptor& file) {
  FILE_DISPOSITION_INFO gone{TRUE};
  return file.isOpen() &&
         ::SetFileInformationByHandle(handleOf(file), FileDispositionInfo, &gone, sizeof gone) != 0;
}

// Gives what stands there a name that the next file written into the folder removes, once nobody has it open.
bool moveAside(const std::string& path) {
  const fs::path place = hostPath(path);
  LARGE_INTEGER now{};
  ::QueryPerformanceCounter(&now);
  const std::string name =
      format(".tessaly-lock-%lx-%lx.tmp", ::GetCurrentProcessId(), static_cast<unsigned long>(now.LowPart));
  return ::MoveFileExW(widePath(place).c_str(), widePath(place.parent_path() / name).c_str(), 0) != 0;
}

}  // namespace

SiteLock::SiteLock(const SiteRoot& root) : path_((root.path() / kName).string()) {}

SiteLock::~SiteLock() = default;  // the file goes with the opening, whatever it is called by now

SiteLock::Claim SiteLock::claim() {
  for (int attempt = 0; attempt < kAttempts; ++attempt)
    if (const auto settled = look()) return *settled;
  return Claim::kInUse;
}

SiteLock::Claim SiteLock::takeOver() {
  WIN32_FIND_DATAW entry{};
  const bool there = findEntry(widePath(hostPath(path_)), entry);
  if (there && (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !isLink(entry))
    return Claim::kNone;
  if (there && !removed(openFile(hostPath(path_), kTrying)) && !moveAside(path_)) return Claim::kNone;
  return claim();
}

// Nothing when somebody else moved in between.
std::optional<SiteLock::Claim> SiteLock::look() {
  const Descriptor file = openFile(hostPath(path_), kTrying);
  const int error = file.isOpen() ? 0 : errno;
  if (error == ENOENT) {
    WIN32_FIND_DATAW folder{};
    const bool there = findEntry(widePath(hostPath(path_).parent_path()), folder);
    return there && (folder.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? create() : Claim::kNone;
  }
  const Descriptor reading =
      openFile(hostPath(path_), {.sharing = kEverything, .flags = FILE_FLAG_OPEN_REPARSE_POINT});
  if (!reading.isOpen()) {
    if (errno == ENOENT) return std::nullopt;
    return error == EBUSY ? Claim::kInUse : Claim::kInTheWay;
  }
  if (!isDiskFile(reading, kOwnFile)) return Claim::kInTheWay;
  holder_ = readRecord(reading);
  if (error == EBUSY) return Claim::kInUse;
  if (!holder_.host.empty() && holder_.host != thisHost()) return Claim::kInUse;
  if (error != 0) return Claim::kNone;
  return removed(file) ? std::nullopt : std::optional(Claim::kNone);
}

std::optional<SiteLock::Claim> SiteLock::create() {
  Descriptor file = openFile(hostPath(path_), kHolding);
  if (!file.isOpen()) return errno == EEXIST || errno == EBUSY ? std::nullopt : std::optional(Claim::kNone);
  writeRecord(file);
  file_ = std::move(file);
  return Claim::kHeld;
}

}  // namespace tessaly
