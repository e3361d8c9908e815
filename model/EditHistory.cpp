#include "model/EditHistory.h"

#include <algorithm>
#include <utility>

namespace tessaly {
namespace {

constexpr std::size_t kFixedWeight = 384;   // of a step, its record's keys among it
constexpr std::size_t kNumberWeight = 8;    // of a selected command
constexpr std::size_t kNameByteWeight = 3;  // a record may write a byte as "%XX"

// Takes `from` away and puts `to` there; false when something else stands there.
bool replace(std::string& bytes, std::size_t at, const std::string& from, const std::string& to) {
  if (at > bytes.size() || bytes.compare(at, from.size(), from) != 0) return false;
  bytes.replace(at, from.size(), to);
  return true;
}

}  // namespace

ByteChange byteChange(std::string_view before, std::string_view after) {
  const std::size_t shorter = std::min(before.size(), after.size());
  const auto begin =
      std::mismatch(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(shorter), after.begin());
  const auto same = static_cast<std::size_t>(begin.first - before.begin());
  const auto rest = static_cast<std::ptrdiff_t>(shorter - same);
  const auto end = std::mismatch(before.rbegin(), before.rbegin() + rest, after.rbegin());
  const auto sameEnd = static_cast<std::size_t>(end.first - before.rbegin());
  return {same, std::string(before.substr(same, before.size() - same - sameEnd)),
          std::string(after.substr(same, after.size() - same - sameEnd))};
}

std::size_t EditHistory::weight(const EditStep& step) {
  return kFixedWeight + kNameByteWeight * step.name.size() + step.change.removed.size() +
         step.change.added.size() + kNumberWeight * (step.selectedBefore.size() + step.selectedAfter.size());
}

std::vector<int> EditHistory::selectedAt(std::size_t position) const {
  if (position < position_) return steps_[position].selectedBefore;
  return position > position_ ? steps_[position - 1].selectedAfter : std::vector<int>();
}

std::optional<std::string> EditHistory::bytesAt(std::size_t position, std::string now) const {
  for (std::size_t at = position_; at > position; --at) {
    const ByteChange& change = steps_[at - 1].change;
    if (!replace(now, change.at, change.added, change.removed)) return std::nullopt;
  }
  for (std::size_t at = position_; at < position; ++at) {
    const ByteChange& change = steps_[at].change;
    if (!replace(now, change.at, change.removed, change.added)) return std::nullopt;
  }
  return now;
}

void EditHistory::add(EditStep step) {
  dropUndone();
  weight_ += weight(step);
  steps_.push_back(std::move(step));
  position_ = size();
  while (size() > kMostSteps || weight_ > kMostBytes) dropOldest();
}

void EditHistory::dropUndone() {
  for (; size() > position_; steps_.pop_back()) weight_ -= weight(steps_.back());
}

void EditHistory::dropOldest() {
  first_ = steps_.front().after;
  weight_ -= weight(steps_.front());
  steps_.pop_front();
  --position_;
  cut_ = true;
}

}  // namespace tessaly
