#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/Descriptor.h"
#include "platform/FilePolicy.h"

// The others build upon the first.
// clang-format off
#include <windows.h>
#include <aclapi.h>
#include <bcrypt.h>
#include <shellapi.h>
// clang-format on

// Paths and open files of this system, for the twins in this room.
namespace tessaly {

// As the system takes it whatever its length, "\\?\C:\..." or "\\?\UNC\server\...": in this spelling a device
// name is a name like any other. Empty for a path that names nothing.
[[nodiscard]] std::wstring widePath(const std::filesystem::path& path);

[[nodiscard]] std::string utf8Of(std::wstring_view text);   // half a character becomes U+FFFD
[[nodiscard]] std::wstring wideOf(std::string_view utf8);   // as above
[[nodiscard]] std::string variableOf(const wchar_t* name);  // of the environment; empty without one

// The number that the C library has for what the system reports.
[[nodiscard]] int errorNumber(DWORD code = ::GetLastError());

// True when the entry leads elsewhere: a link or a junction, not a file that a cloud keeps.
[[nodiscard]] bool isLink(const WIN32_FIND_DATAW& entry);
// The entry itself, by its name on the disk; false with the system's error when there is none.
[[nodiscard]] bool findEntry(const std::wstring& path, WIN32_FIND_DATAW& entry);

struct Opening {
  DWORD access = GENERIC_READ;
  DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  DWORD creation = OPEN_EXISTING;
  DWORD flags = 0;
};
// Not open, with its reason in errno, when it fails. No child process inherits it.
[[nodiscard]] Descriptor openFile(const std::filesystem::path& path, const Opening& opening);
[[nodiscard]] HANDLE handleOf(const Descriptor& file);

// What `openFile` has opened is a file on a disk; errno tells what it is otherwise.
[[nodiscard]] bool isDiskFile(const Descriptor& file, FilePolicy policy);

}  // namespace tessaly
