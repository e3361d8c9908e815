#include "review/WorkplaceCopy.h"

#include <utility>

#include "platform/SystemFailure.h"

namespace tessaly {
namespace {

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
      read_(wanted_.size(), false),
      places_(root, history_, [this](const MacroPlace&) { return target_.get(); }) {}

bool WorkplaceCopy::isCancelled() {
  const std::scoped_lock guard(mutex_);
  return cancelled_;
}

// Shelves of this time.
Outcome WorkplaceCopy::open() {
  {
    const std::scoped_lock guard(mutex_);
    source_ = from_();
    target_ = to_();
  }
  traces_.clear();
  return target_->writable();
}

// A panel is read before anything is written, so that no macro that is sent stands for one that is not there.
Outcome WorkplaceCopy::readMissing() {
  if (known_) return {};
  std::vector<BatchItem> items;
  Part part;
  unread_.clear();
  for (std::size_t i = 0; i < wanted_.size(); ++i) {
    if (read_[i]) continue;
    if (isCancelled()) return cancelledFailure();
    auto bytes = source_->read(wanted_[i].number);
    if (bytes && HeldContent::asRead(bytes) == wanted_[i].from) {
      part.rows.push_back(i);
      items.push_back({target_->place(wanted_[i].number), *std::move(bytes), wanted_[i].to});
      continue;
    }
    unread_.emplace_back(i, bytes ? Failure{Failure::Kind::kChanged, "has been changed since it was compared"}
                                  : bytes.failure());
  }
  known_ = true;
  for (const std::size_t row : part.rows) read_[row] = true;
  if (items.empty()) return {};
  part.batch = std::make_unique<MacroBatch>(places_, title_, MacroChange::kCopy,
                                            MacroBatch::Mode::kAsManyAsGo, std::move(items));
  parts_.push_back(std::move(part));
  fresh_ = true;
  return {};
}

const std::vector<BatchItem>& WorkplaceCopy::fresh() const {
  static const std::vector<BatchItem> kNone;
  return fresh_ ? parts_.back().batch->items() : kNone;
}

Outcome WorkplaceCopy::read() {
  return whole([this] {
    known_ = false;
    Outcome opened = open();
    return opened ? readMissing() : opened;
  });
}

Outcome WorkplaceCopy::run(const Progress& progress) {
  return whole([&]() -> Outcome {
    if (Outcome opened = open(); !opened) return opened;
    if (Outcome read = readMissing(); !read) return read;
    return write(progress);
  });
}

Outcome WorkplaceCopy::whole(const std::function<Outcome()>& work) {
  Outcome done = work();
  // A cancel counts for the run that it was meant for, also when it came before that had begun.
  const std::scoped_lock guard(mutex_);
  cancelled_ = false;
  return done;
}

Outcome WorkplaceCopy::write(const Progress& progress) {
  known_ = fresh_ = false;
  for (const auto& [row, why] : unread_) progress(row, failedRow(why));
  for (const Part& part : parts_) {
    if (!runs(part.batch.get())) return cancelledFailure();
    const Outcome ran = part.batch->run([&](std::size_t index, const MacroBatch::Row& row) {
      if (row.done()) traces_.push_back(traceOf(part.batch->items()[index], row));
      progress(part.rows[index], row);
    });
    static_cast<void>(runs(nullptr));
    if (!ran) return ran;
  }
  return {};
}

// From now on a cancel ends that one; false when there was one already.
bool WorkplaceCopy::runs(MacroBatch* batch) {
  const std::scoped_lock guard(mutex_);
  running_ = cancelled_ ? nullptr : batch;
  return !cancelled_;
}

void WorkplaceCopy::cancel() {
  const std::scoped_lock guard(mutex_);
  cancelled_ = true;
  if (source_) source_->cancel();
  if (running_ != nullptr) running_->cancel();
}

}  // namespace tessaly
