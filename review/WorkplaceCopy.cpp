#include "review/WorkplaceCopy.h"

#include <utility>

namespace tessaly {
namespace {

Failure cancelledFailure() { return {Failure::Kind::kCancelled, "was cancelled"}; }

MacroBatch::Row failedRow(Failure why) {
  MacroBatch::Row row;
  row.state = MacroBatch::Row::State::kAsBefore;
  row.why = std::move(why);
  return row;
}

}  // namespace

WorkplaceCopy::WorkplaceCopy(const SiteRoot& root, MakeShelf from, MakeShelf to, std::string title,
                             std::vector<Wanted> wanted)
    : history_(root),
      from_(std::move(from)),
      to_(std::move(to)),
      title_(std::move(title)),
      wanted_(std::move(wanted)),
      places_(root, history_, [this](const MacroPlace&) { return target_.get(); }) {}

bool WorkplaceCopy::isCancelled() {
  const std::scoped_lock guard(mutex_);
  return cancelled_;
}

// A panel is read before anything is written, so that no macro that is sent stands for one that is not there.
Outcome WorkplaceCopy::readAll(const Progress& progress) {
  std::vector<BatchItem> items;
  rows_.clear();
  for (std::size_t i = 0; i < wanted_.size(); ++i) {
    if (isCancelled()) return cancelledFailure();
    auto bytes = source_->read(wanted_[i].number);
    if (bytes && HeldContent::asRead(bytes) == wanted_[i].from) {
      rows_.push_back(i);
      items.push_back({target_->place(wanted_[i].number), *std::move(bytes), wanted_[i].to});
      continue;
    }
    progress(i, failedRow(bytes ? Failure{Failure::Kind::kChanged, "has been changed since it was compared"}
                                : bytes.failure()));
  }
  const std::scoped_lock guard(mutex_);
  batch_ = std::make_unique<MacroBatch>(places_, title_, MacroChange::kCopy, MacroBatch::Mode::kAsManyAsGo,
                                        std::move(items));
  return {};
}

Outcome WorkplaceCopy::run(const Progress& progress) {
  Outcome ran = runOnce(progress);
  // A cancel counts for the run that it was meant for, also when it came before that had begun.
  const std::scoped_lock guard(mutex_);
  cancelled_ = false;
  return ran;
}

Outcome WorkplaceCopy::runOnce(const Progress& progress) {
  {
    const std::scoped_lock guard(mutex_);
    source_ = from_();
    target_ = to_();
  }
  traces_.clear();
  if (Outcome able = target_->writable(); !able) return able;
  if (!batch_) {
    if (Outcome read = readAll(progress); !read) return read;
  }
  if (isCancelled()) return cancelledFailure();
  return batch_->run([&](std::size_t index, const MacroBatch::Row& row) {
    if (row.done()) traces_.push_back(traceOf(batch_->items()[index], row));
    progress(rows_[index], row);
  });
}

void WorkplaceCopy::cancel() {
  const std::scoped_lock guard(mutex_);
  cancelled_ = true;
  if (source_) source_->cancel();
  if (batch_) batch_->cancel();
}

}  // namespace tessaly
