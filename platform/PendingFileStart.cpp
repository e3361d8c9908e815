#include <cerrno>
#include <utility>

#include "platform/PendingFile.h"
#include "platform/SystemFailure.h"

namespace tessaly {
namespace {

constexpr int kAttempts = 100;  // names tried when others' temporary files are in the way

}  // namespace

PendingFile::PendingFile(const std::filesystem::path& target, FilePolicy policy) : policy_(policy) {
  const auto real = destination(target, policy);
  if (!real) {
    fail(real.failure());
    return;
  }
  target_ = real->string();
  folder_ = real->has_parent_path() ? real->parent_path().string() : ".";
  takeOverMode();
  if (failure_) return;
  if (policy.sweeps) sweep(folder_);
  for (int attempt = 0; attempt < kAttempts && !open(); ++attempt)
    if (errno != EEXIST && errno != EINTR) break;
  if (!file_.isOpen()) fail(errno, "written");
}

void PendingFile::fail(int error, std::string_view doing) { fail(systemFailure(error, doing)); }

void PendingFile::fail(Failure failure) {
  if (!failure_) failure_ = std::move(failure);
}

PendingFile::~PendingFile() { discard(); }

Failure PendingFile::inTheWay() {
  return {Failure::Kind::kInTheWay, "cannot be written: no regular file can stand there"};
}

}  // namespace tessaly
