#include "model/StepsFile.h"

#include <algorithm>
#include <utility>

#include "platform/Files.h"

namespace tessaly {
namespace {

constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;
constexpr std::size_t kLargest = 96 * kMegabyte;  // of a file; a whole row is smaller
// What has gone from the row stays in the file until it is this many times as large.
constexpr std::size_t kMostTimes = 4;

// "recovery\paneA.steps" gives "recovery\paneA-damaged.steps".
std::string damagedPath(const std::string& path) {
  std::string damaged = path;
  return damaged.insert(path.rfind('.'), "-damaged");
}

}  // namespace

void StepsFile::begin(const std::optional<MacroPlace>& place, const ContentCheck& held) {
  const bool goesOn = place_ && place && samePlace(root_, *place_, *place) && row_.check() == held;
  if (goesOn) return;
  end();
  place_ = place;
  row_ = EditHistory(held);
  if (place_) takeUp(held);
}

void StepsFile::follow(const MacroPlace& place) {
  if (place_ && samePlace(root_, *place_, place)) return;
  place_ = place;
  size_ = 0;
  if (row_.size() > 0) write(StepsSaved{});
}

void StepsFile::end() {
  if (place_) static_cast<void>(removeFile(root_, path_));
  place_.reset();
  row_ = EditHistory();
  announced_.reset();
  size_ = 0;
}

void StepsFile::takeUp(const ContentCheck& held) {
  const auto text = readOwnFile(root_, path_, kLargest);
  if (!text) {
    const Failure::Kind why = text.failure().kind;
    if (why != Failure::Kind::kMissing)
      putAside(why == Failure::Kind::kTooLarge ? StepsFault::kTooLarge : StepsFault::kUnreadable);
    return;
  }
  auto head = readStepsHead(*text);
  if (const auto* fault = std::get_if<StepsFault>(&head)) {
    putAside(*fault);
    return;
  }
  auto& found = *std::get_if<StepsHead>(&head);
  if (!samePlace(root_, found.place, *place_)) {
    static_cast<void>(removeFile(root_, path_));
    return;
  }
  auto read = readSteps(std::move(found), *text, held);
  if (!read) {
    putAside(StepsFault::kOtherBytes);
    return;
  }
  row_ = std::move(read->row);
  size_ = read->end;
}

void StepsFile::putAside(StepsFault fault) {
  if (!moveOwnFile(root_, path_, damagedPath(path_))) static_cast<void>(removeFile(root_, path_));
  trouble_ = StepsTrouble{fault};
}

void StepsFile::announce(StepsChange change) {
  if (place_) write(change);
  announced_ = std::move(change);
}

void StepsFile::settle(bool done) {
  auto change = std::exchange(announced_, std::nullopt);
  if (!change) return;
  // What has not happened is overwritten by the next record, and passed over by a start before that.
  if (done)
    make(row_, *std::move(change));
  else if (size_ > 0)
    size_ -= lastSize_;
}

void StepsFile::writeSaved(const std::optional<ContentCheck>& saved) {
  if (size_ > 0) write(StepsSaved{saved});
}

// Behind what is there, or the whole row with it.
void StepsFile::write(const StepsChange& change) {
  const std::string record = stepsRecord(change);
  lastSize_ = record.size();
  const std::size_t most = std::min(kLargest, kMostTimes * row_.weight() + kMegabyte);
  if (size_ > 0 && size_ + record.size() <= most && appendToOwnFile(root_, path_, size_, record)) {
    size_ += record.size();
    return;
  }
  const std::string whole = stepsText(*place_, row_) + record;
  const std::string folder = path_.substr(0, path_.rfind('\\'));
  const bool written = whole.size() <= kLargest && makeOwnFolder(root_.resolve(folder)).done() &&
                       writeOwnFile(root_, path_, whole).written();
  size_ = written ? whole.size() : 0;
  if (written) return;
  static_cast<void>(removeFile(root_, path_));
  trouble_ = StepsTrouble{};
}

}  // namespace tessaly
