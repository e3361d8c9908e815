#include "platform/WayBack.h"

namespace tessaly {
namespace {

thread_local WayBack* ours = nullptr;

}  // namespace

WayBack::Walk::Walk(WayBack& way) { ours = &way; }

WayBack::Walk::~Walk() { ours = nullptr; }

WayBack::Change::Change(bool users) : way_(ours), users_(users) {
  if (way_ == nullptr) return;
  const std::scoped_lock guard(way_->mutex_);
  allowed_ = !way_->givenUp_;
  way_->changing_ = allowed_ && users_;
}

WayBack::Change::~Change() {
  if (way_ == nullptr) return;
  const std::scoped_lock guard(way_->mutex_);
  way_->changing_ = false;
  way_->changed_ |= done_ && users_;
}

bool WayBack::givenUp() {
  if (ours == nullptr) return false;
  const std::scoped_lock guard(ours->mutex_);
  return ours->givenUp_;
}

WayBack::Left WayBack::giveUp() {
  const std::scoped_lock guard(mutex_);
  givenUp_ = true;
  if (changed_) return Left::kChanged;
  return changing_ ? Left::kUnknown : Left::kAsBefore;
}

}  // namespace tessaly
