#include "platform/OpenFileWindows.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <io.h>
#include <iterator>
#include <system_error>
#include <utility>

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr std::pair<DWORD, int> kNumbers[] = {{ERROR_FILE_NOT_FOUND, ENOENT},
                                              {ERROR_PATH_NOT_FOUND, ENOENT},
                                              {ERROR_INVALID_DRIVE, ENOENT},
                                              {ERROR_BAD_NETPATH, ENOENT},
                                              {ERROR_BAD_NET_NAME, ENOENT},
                                              {ERROR_DELETE_PENDING, ENOENT},
                                              {ERROR_DIRECTORY, ENOTDIR},
                                              {ERROR_ACCESS_DENIED, EACCES},
                                              {ERROR_PRIVILEGE_NOT_HELD, EACCES},
                                              {ERROR_WRITE_PROTECT, EROFS},
                                              {ERROR_SHARING_VIOLATION, EBUSY},
                                              {ERROR_LOCK_VIOLATION, EBUSY},
                                              {ERROR_USER_MAPPED_FILE, EBUSY},
                                              {ERROR_DISK_FULL, ENOSPC},
                                              {ERROR_HANDLE_DISK_FULL, ENOSPC},
                                              {ERROR_NOT_ENOUGH_QUOTA, ENOSPC},
                                              {ERROR_FILE_TOO_LARGE, EFBIG},
                                              {ERROR_FILE_EXISTS, EEXIST},
                                              {ERROR_ALREADY_EXISTS, EEXIST},
                                              {ERROR_DIR_NOT_EMPTY, ENOTEMPTY},
                                              {ERROR_INVALID_NAME, EINVAL},
                                              {ERROR_BAD_PATHNAME, EINVAL},
                                              {ERROR_FILENAME_EXCED_RANGE, ENAMETOOLONG},
                                              {ERROR_CANT_RESOLVE_FILENAME, ELOOP},
                                              {ERROR_NOT_ENOUGH_MEMORY, ENOMEM},
                                              {ERROR_OUTOFMEMORY, ENOMEM}};

constexpr std::wstring_view kVerbatim = L"\\\\?\\", kVerbatimShare = L"\\\\?\\UNC";

}  // namespace

std::wstring widePath(const fs::path& path) {
  std::error_code error;
  fs::path whole = path.is_absolute() ? path : fs::current_path(error) / path;
  if (path.empty() || error) return {};
  whole = whole.lexically_normal().make_preferred();
  const std::wstring& plain = whole.native();
  if (plain.starts_with(kVerbatim)) return plain;
  if (plain.starts_with(L"\\\\")) return std::wstring(kVerbatimShare) + plain.substr(1);
  return std::wstring(kVerbatim) + plain;
}

std::string utf8Of(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

std::wstring wideOf(std::string_view utf8) {
  const int length = static_cast<int>(utf8.size());
  const int size = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(size), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, text.data(), size);
  return text;
}

std::string variableOf(const wchar_t* name) {
  const DWORD size = ::GetEnvironmentVariableW(name, nullptr, 0);
  std::wstring value(size, L'\0');
  value.resize(size == 0 ? 0 : ::GetEnvironmentVariableW(name, value.data(), size));
  return utf8Of(value);
}

int errorNumber(DWORD code) {
  for (const auto& [system, number] : kNumbers)
    if (system == code) return number;
  return EIO;
}

bool isLink(const WIN32_FIND_DATAW& entry) {
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         IsReparseTagNameSurrogate(entry.dwReserved0);
}

bool findEntry(const std::wstring& path, WIN32_FIND_DATAW& entry) {
  if (path.empty()) return ::SetLastError(ERROR_FILE_NOT_FOUND), false;
  const HANDLE search = ::FindFirstFileW(path.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return false;
  ::FindClose(search);
  return true;
}

Descriptor openFile(const fs::path& path, const Opening& opening) {
  const std::wstring name = widePath(path);
  const HANDLE handle =
      name.empty() ? INVALID_HANDLE_VALUE
                   : ::CreateFileW(name.c_str(), opening.access, opening.sharing, nullptr, opening.creation,
                                   opening.flags | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    errno = name.empty() ? ENOENT : errorNumber();
    return Descriptor();
  }
  Descriptor file(::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT));
  if (!file.isOpen()) ::CloseHandle(handle);
  return file;
}

HANDLE handleOf(const Descriptor& file) {
  return file.isOpen() ? reinterpret_cast<HANDLE>(::_get_osfhandle(file.number())) : INVALID_HANDLE_VALUE;
}

bool isDiskFile(const Descriptor& file, FilePolicy policy) {
  FILE_ATTRIBUTE_TAG_INFO info{};
  const HANDLE handle = handleOf(file);
  errno = EISDIR;
  if (::GetFileType(handle) != FILE_TYPE_DISK) return false;
  // A file system that tells no tags has none.
  if (::GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &info, sizeof info) == 0) {
    BY_HANDLE_FILE_INFORMATION plain{};
    if (::GetFileInformationByHandle(handle, &plain) == 0) return false;
    info.FileAttributes = plain.dwFileAttributes & ~DWORD{FILE_ATTRIBUTE_REPARSE_POINT};
  }
  if ((info.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return false;
  errno = ELOOP;
  return policy.followsLinks || (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 ||
         !IsReparseTagNameSurrogate(info.ReparseTag);
}

}  // namespace tessaly
