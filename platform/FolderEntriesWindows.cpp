#include <array>
#include <cerrno>
#include <cstring>
#include <string>

#include "platform/FolderEntries.h"
#include "platform/OpenFileWindows.h"
#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

int numberOf(BOOL done) { return done != 0 ? 0 : errorNumber(); }

bool setEnd(HANDLE file, long long end) {
  LARGE_INTEGER place{};
  place.QuadPart = end;
  return ::SetFilePointerEx(file, place, nullptr, FILE_BEGIN) != 0 && ::SetEndOfFile(file) != 0;
}

EntryKind kindOf(const WIN32_FIND_DATAW& entry) {
  if (isLink(entry)) return EntryKind::kLink;
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? EntryKind::kFolder : EntryKind::kFile;
}

// Or of a group that stands for this user, as the administrators' does.
bool standsForThisUser(PSID owner) {
  HANDLE token = nullptr;
  BOOL among = FALSE;
  if (::CheckTokenMembership(nullptr, owner, &among) != 0 && among != FALSE) return true;
  if (::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token) == 0) return false;
  alignas(TOKEN_USER) std::array<char, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
  DWORD size = user.size();
  const bool known = ::GetTokenInformation(token, TokenUser, user.data(), size, &size) != 0;
  ::CloseHandle(token);
  return known && ::EqualSid(owner, reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid) != 0;
}

bool isThisUsers(const fs::path& path) {
  const Descriptor file = openFile(path, {.access = READ_CONTROL, .flags = FILE_FLAG_OPEN_REPARSE_POINT});
  DWORD size = 0;
  ::GetKernelObjectSecurity(handleOf(file), OWNER_SECURITY_INFORMATION, nullptr, 0, &size);
  std::string space(size, '\0');
  PSID owner = nullptr;
  BOOL byDefault = FALSE;
  return file.isOpen() &&
         ::GetKernelObjectSecurity(handleOf(file), OWNER_SECURITY_INFORMATION, space.data(), size, &size) !=
             0 &&
         ::GetSecurityDescriptorOwner(space.data(), &owner, &byDefault) != 0 && owner != nullptr &&
         standsForThisUser(owner);
}

}  // namespace

EntryKind kindAt(const fs::path& path) {
  const Descriptor file = openFile(path, {.access = FILE_READ_ATTRIBUTES});
  if (!file.isOpen()) return EntryKind::kNone;
  if (isDiskFile(file, kUsersFile)) return EntryKind::kFile;
  return ::GetFileType(handleOf(file)) == FILE_TYPE_DISK ? EntryKind::kFolder : EntryKind::kOther;
}

FolderEntry entryAt(const fs::path& path) {
  WIN32_FIND_DATAW entry{};
  if (!findEntry(widePath(path), entry)) return {kindAt(path), false, false};  // the root of a drive
  return {kindOf(entry), (entry.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0, isThisUsers(path)};
}

FileStamp stampAt(const fs::path& path) {
  const Descriptor file = openFile(path, {.access = FILE_READ_ATTRIBUTES});
  BY_HANDLE_FILE_INFORMATION is{};
  if (!file.isOpen() || ::GetFileInformationByHandle(handleOf(file), &is) == 0) return {};
  return {true, std::uint64_t{is.nFileSizeHigh} << 32 | is.nFileSizeLow,
          static_cast<std::int64_t>(std::uint64_t{is.ftLastWriteTime.dwHighDateTime} << 32 |
                                    is.ftLastWriteTime.dwLowDateTime)};
}

Expected<std::vector<std::string>> namesIn(const fs::path& folder, std::string_view suffix) {
  std::vector<std::string> names;
  WIN32_FIND_DATAW entry{};
  const std::wstring pattern = folder.empty() ? std::wstring() : widePath(folder / L"*");
  if (pattern.empty()) return names;
  const HANDLE search = ::FindFirstFileW(pattern.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    const Failure failure = systemFailure(errorNumber(), "read");
    return isNothing(failure) ? Expected(std::move(names)) : Expected<std::vector<std::string>>(failure);
  }
  do {
    const std::wstring_view wide = entry.cFileName;
    const std::string name = utf8Of(wide);
    if (name == "." || name == ".." || !endsWithNoCase(name, suffix)) continue;
    const bool file = kindOf(entry) == EntryKind::kLink ? kindAt(folder / wide) == EntryKind::kFile
                                                        : kindOf(entry) == EntryKind::kFile;
    if (suffix.empty() || file) names.push_back(name);
  } while (::FindNextFileW(search, &entry) != 0);
  const DWORD end = ::GetLastError();
  ::FindClose(search);
  if (end != ERROR_NO_MORE_FILES) return systemFailure(errorNumber(end), "read");
  return names;
}

int makeEntry(const fs::path& folder) {
  return numberOf(::CreateDirectoryW(widePath(folder).c_str(), nullptr));
}

int moveEntry(const fs::path& from, const fs::path& to) {
  const std::wstring here = widePath(from), there = widePath(to);
  if (here.empty() || there.empty()) return ENOENT;
  return numberOf(
      ::MoveFileExW(here.c_str(), there.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

int removeEntry(const fs::path& file) {
  const std::wstring name = widePath(file);
  if (name.empty()) return ENOENT;
  if (::DeleteFileW(name.c_str()) != 0) return 0;
  const DWORD error = ::GetLastError();
  // A program's own file that was given to nobody to write to is still its own.
  const DWORD attributes = ::GetFileAttributesW(name.c_str());
  if (error != ERROR_ACCESS_DENIED || attributes == INVALID_FILE_ATTRIBUTES ||
      (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 || (attributes & FILE_ATTRIBUTE_READONLY) == 0)
    return errorNumber(error);
  return numberOf(::SetFileAttributesW(name.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY}) != 0 &&
                  ::DeleteFileW(name.c_str()) != 0);
}

Outcome appendAt(const fs::path& path, std::size_t size, std::string_view bytes) {
  const Descriptor file =
      openFile(path, {.access = GENERIC_READ | GENERIC_WRITE, .flags = FILE_FLAG_OPEN_REPARSE_POINT});
  if (!file.isOpen()) return systemFailure(errno, "written");
  const HANDLE handle = handleOf(file);
  LARGE_INTEGER now{};
  if (!isDiskFile(file, kOwnFile) || ::GetFileSizeEx(handle, &now) == 0 ||
      static_cast<std::size_t>(now.QuadPart) < size)
    return Failure{Failure::Kind::kChanged, "cannot be written: it is not as it was left"};
  const auto end = static_cast<long long>(size);
  DWORD written = 0;
  if (setEnd(handle, end) &&
      ::WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0 &&
      written == bytes.size() && ::FlushFileBuffers(handle) != 0)
    return {};
  const int error = errorNumber();
  static_cast<void>(setEnd(handle, end));  // its reader knows a part from a whole
  return systemFailure(error, "written");
}

}  // namespace tessaly
