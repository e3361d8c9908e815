#include "platform/SystemFailure.h"

#include <cerrno>
#include <system_error>

namespace tessaly {
namespace {

Failure::Kind kindOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return Failure::Kind::kMissing;
    case EISDIR:
    case ELOOP:
    case EINVAL:
    case ENAMETOOLONG:
    case ENXIO:
      return Failure::Kind::kInTheWay;
    case EACCES:
    case EPERM:
      return Failure::Kind::kNoPermission;
    case EROFS:
      return Failure::Kind::kReadOnlyDisk;
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
      return Failure::Kind::kFull;
    case EFBIG:
      return Failure::Kind::kTooLarge;
    default:
      return Failure::Kind::kDiskError;
  }
}

}  // namespace

Failure systemFailure(int error, std::string_view doing) {
  if (error == ENOMEM) return {Failure::Kind::kNoMemory, "out of memory"};
  if (error == EBUSY)
    return {Failure::Kind::kInUse, "cannot be " + std::string(doing) + ": another program has it open"};
  return {kindOf(error), "cannot be " + std::string(doing) + ": " + std::generic_category().message(error)};
}

}  // namespace tessaly
