#include <algorithm>
#include <cerrno>
#include <limits>

#include "platform/OpenFileWindows.h"
#include "platform/RegularFile.h"
#include "platform/SystemFailure.h"

namespace tessaly {
namespace {

constexpr DWORD kMostAtOnce = DWORD{1} << 30;  // bytes

bool informationOf(const Descriptor& file, BY_HANDLE_FILE_INFORMATION& information) {
  return ::GetFileInformationByHandle(handleOf(file), &information) != 0;
}

}  // namespace

Expected<RegularFile> RegularFile::open(const std::filesystem::path& path, FilePolicy policy) {
  RegularFile file;
  file.descriptor_ = openFile(path, {.flags = policy.followsLinks ? 0 : DWORD{FILE_FLAG_OPEN_REPARSE_POINT}});
  if (!file.descriptor_.isOpen()) return systemFailure(errno, "opened");
  if (!isDiskFile(file.descriptor_, policy))
    return errno == ELOOP ? systemFailure(ELOOP, "opened")
                          : Failure{Failure::Kind::kInTheWay, "cannot be opened: not a regular file"};
  LARGE_INTEGER size{};
  if (::GetFileSizeEx(handleOf(file.descriptor_), &size) == 0) return systemFailure(errorNumber(), "opened");
  // Whoever asks has a bound far below.
  file.status_.st_size = static_cast<off_t>(
      std::min<long long>(size.QuadPart, std::numeric_limits<decltype(file.status_.st_size)>::max()));
  return file;
}

bool RegularFile::isAt(const std::filesystem::path& path) const {
  const Descriptor other = openFile(path, {.access = 0});
  BY_HANDLE_FILE_INFORMATION here{}, there{};
  return other.isOpen() && informationOf(descriptor_, here) && informationOf(other, there) &&
         here.dwVolumeSerialNumber == there.dwVolumeSerialNumber &&
         here.nFileIndexHigh == there.nFileIndexHigh && here.nFileIndexLow == there.nFileIndexLow;
}

Expected<std::size_t> RegularFile::read(char* space, std::size_t size) const {
  std::size_t count = 0;
  while (count < size) {
    const DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(size - count, kMostAtOnce));
    DWORD got = 0;
    if (::ReadFile(handleOf(descriptor_), space + count, wanted, &got, nullptr) == 0)
      return systemFailure(errorNumber(), "read");
    if (got == 0) break;
    count += got;
  }
  return count;
}

}  // namespace tessaly
