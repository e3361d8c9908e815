#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

#include "platform/OpenFileWindows.h"
#include "platform/PendingFile.h"
#include "platform/SiteRoot.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"
#include "platform/WayBack.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

// A file that was just written is looked at by whatever guards or indexes the disk, and cannot be replaced
// then.
constexpr int kReplacings = 20;
constexpr std::chrono::milliseconds kBetweenReplacings{25};
constexpr DWORD kMostAtOnce = DWORD{1} << 30;  // bytes
// What a user may have set on a file, and keeps.
constexpr DWORD kKept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                        FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

bool isFolder(const WIN32_FIND_DATAW& entry) {
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Where a link leads in the end; empty when that is nothing.
fs::path endOf(const Descriptor& file) {
  std::wstring path(MAX_PATH, L'\0');
  for (int attempt = 0; attempt < 2; ++attempt) {
    const DWORD size = ::GetFinalPathNameByHandleW(handleOf(file), path.data(),
                                                   static_cast<DWORD>(path.size()), FILE_NAME_NORMALIZED);
    const bool whole = size < path.size();
    path.resize(size);
    if (whole) break;
  }
  return path;
}

// Some file systems have nothing to flush.
bool flush(const Descriptor& file) {
  if (::FlushFileBuffers(handleOf(file)) != 0) return true;
  const DWORD error = ::GetLastError();
  errno = errorNumber(error);
  return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ||
         error == ERROR_CALL_NOT_IMPLEMENTED;
}

// Who may do what with the old file goes over to the new one. Where that is not to be had the new one keeps
// what its folder gives it: a drive of the network may let its users write and not decide about that.
void takeOverAccess(const std::string& file, const std::string& old) {
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR whole = nullptr;
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  std::wstring name = widePath(hostPath(old)), newName = widePath(hostPath(file));
  if (::GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list,
                              nullptr, &whole) != ERROR_SUCCESS)
    return;
  if (list != nullptr && ::GetSecurityDescriptorControl(whole, &control, &revision) != 0) {
    const SECURITY_INFORMATION inherits = (control & SE_DACL_PROTECTED) != 0
                                              ? PROTECTED_DACL_SECURITY_INFORMATION
                                              : UNPROTECTED_DACL_SECURITY_INFORMATION;
    ::SetNamedSecurityInfoW(newName.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inherits, nullptr,
                            nullptr, list, nullptr);
  }
  ::LocalFree(whole);
}

// Atomic, and on the disk when it returns. 0, or the error number.
int replace(const fs::path& temporary, const fs::path& target) {
  const std::wstring from = widePath(temporary), to = widePath(target);
  for (int attempt = 0;; ++attempt) {
    if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
      return 0;
    const int error = errorNumber();
    if (error != EACCES && error != EBUSY) return error;
    // The system says "access denied" of a file that somebody has open.
    const bool busy = error == EBUSY || (!openFile(target, {.access = DELETE}).isOpen() && errno == EBUSY);
    if (!busy || attempt == kReplacings) return busy ? EBUSY : error;
    std::this_thread::sleep_for(kBetweenReplacings);
  }
}

}  // namespace

Expected<fs::path> PendingFile::destination(const fs::path& target, FilePolicy policy) {
  if (target.empty() || !target.has_filename()) return inTheWay();
  WIN32_FIND_DATAW entry{};
  if (!findEntry(widePath(target), entry)) return target;
  if (!isLink(entry)) return isFolder(entry) ? Expected<fs::path>(inTheWay()) : target;
  // So is a link to nothing.
  if (!policy.followsLinks) return isFolder(entry) ? Expected<fs::path>(inTheWay()) : target;
  const Descriptor file = openFile(target, {.access = FILE_READ_ATTRIBUTES});
  if (!file.isOpen()) return target;
  if (!isDiskFile(file, policy)) return inTheWay();
  return endOf(file);
}

std::string PendingFile::temporaryName() {
  static std::atomic<unsigned> count{0};
  LARGE_INTEGER now{};
  ::QueryPerformanceCounter(&now);
  return std::string(kTemporaryStart) +
         format("%lx-%lx-%x", ::GetCurrentProcessId(), static_cast<unsigned long>(now.LowPart), count++) +
         std::string(kTemporaryEnd);
}

// The system writes names through when it moves a file (MOVEFILE_WRITE_THROUGH), and keeps a journal of those
// of new folders; a folder cannot be flushed by itself.
Outcome flushFolder(const std::string&, std::string_view) { return {}; }

// Removes the temporary files whose writers are gone: nobody has them open.
void PendingFile::sweep(const std::string& folder) {
  WIN32_FIND_DATAW entry{};
  const fs::path place = hostPath(folder);
  const std::wstring pattern =
      widePath(place / (std::string(kTemporaryStart) + '*' + std::string(kTemporaryEnd)));
  const HANDLE search = ::FindFirstFileW(pattern.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::string name = utf8Of(entry.cFileName);
    // A short name of the file may have been found.
    if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd) || isFolder(entry) ||
        isLink(entry))
      continue;
    static_cast<void>(openFile(
        place / entry.cFileName,
        {.access = DELETE, .sharing = 0, .flags = FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_DELETE_ON_CLOSE}));
  } while (::FindNextFileW(search, &entry) != 0);
  ::FindClose(search);
}

// From the file that is about to be replaced; a write-protected one fails.
void PendingFile::takeOverMode() {
  WIN32_FIND_DATAW old{};
  if (!policy_.keepsMode || !findEntry(widePath(hostPath(target_)), old) || isFolder(old) || isLink(old))
    return;
  if ((old.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) {
    fail({Failure::Kind::kWriteProtected, "cannot be written: the file is write-protected"});
    return;
  }
  if (!file_.isOpen()) return;
  takeOverAccess(temporary_, target_);
  FILE_BASIC_INFO basic{};
  basic.FileAttributes = (old.dwFileAttributes & kKept) | FILE_ATTRIBUTE_NORMAL;
  if (basic.FileAttributes != FILE_ATTRIBUTE_NORMAL) basic.FileAttributes &= ~DWORD{FILE_ATTRIBUTE_NORMAL};
  basic.CreationTime.LowPart = old.ftCreationTime.dwLowDateTime;
  basic.CreationTime.HighPart = static_cast<LONG>(old.ftCreationTime.dwHighDateTime);
  ::SetFileInformationByHandle(handleOf(file_), FileBasicInfo, &basic, sizeof basic);
}

// Nobody else may write to it; a living writer's cannot be removed, because whoever removes leftovers shares
// nothing.
bool PendingFile::open() {
  temporary_ = (hostPath(folder_) / temporaryName()).string();
  file_ = openFile(hostPath(temporary_), {.access = GENERIC_WRITE | DELETE,
                                          .sharing = FILE_SHARE_READ | FILE_SHARE_DELETE,
                                          .creation = CREATE_NEW,
                                          .flags = FILE_ATTRIBUTE_NORMAL});
  if (file_.isOpen()) return true;
  const int error = errno;
  temporary_.clear();
  errno = error;
  return false;
}

bool PendingFile::write(std::string_view bytes) {
  while (good() && !bytes.empty()) {
    const DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kMostAtOnce));
    DWORD written = 0;
    if (::WriteFile(handleOf(file_), bytes.data(), wanted, &written, nullptr) != 0 && written > 0) {
      bytes.remove_prefix(written);
    } else {
      fail(written == 0 && ::GetLastError() == ERROR_SUCCESS ? ENOSPC : errorNumber(), "written");
      discard();
    }
  }
  return good();
}

// While it is open, so that nobody takes it for a leftover.
void PendingFile::putInPlace() {
  WayBack::Change change(policy_.keepsMode);
  if (!change.allowed())
    fail(cancelledFailure());
  else if (const int error = replace(hostPath(temporary_), hostPath(target_)))
    fail(error, "put in place");
  else
    change.done();
}

Outcome PendingFile::commit(Sync) {
  if (!good()) return failure_ ? *failure_ : systemFailure(EBADF, "written");
  takeOverMode();
  if (!failure_ && !flush(file_)) fail(errno, "flushed to the disk");
  if (!failure_) putInPlace();
  if (failure_) {
    discard();
    return *failure_;
  }
  temporary_.clear();
  file_ = Descriptor();
  return {};
}

void PendingFile::discard() {
  file_ = Descriptor();
  if (!temporary_.empty()) ::DeleteFileW(widePath(hostPath(temporary_)).c_str());
  temporary_.clear();
}

}  // namespace tessaly
