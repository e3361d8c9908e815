#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <QObject>

#include "platform/Outcome.h"
#include "widgets/PostTo.h"

namespace tessaly {

// Runs one job at a time on a thread of its own, and hands what it finds to the GUI thread while it works, as
// much at a time as has come together. Belongs to the GUI thread, which waits for the job when this goes.
template <class Result>
class ReviewWork : public QObject {
 public:
  struct Progress {
    std::size_t done = 0;
    std::size_t of = 0;
  };

  // The job's side.
  class Report {
   public:
    Report(ReviewWork& work, std::stop_token stop) : work_(work), stop_(std::move(stop)) {}
    void add(Result result) {
      work_.change([&] { work_.found_.push_back(std::move(result)); });
    }
    void progress(std::size_t done, std::size_t of) {
      work_.change([&] { work_.progress_ = {done, of}; });
    }
    [[nodiscard]] const std::stop_token& stop() const { return stop_; }

   private:
    ReviewWork& work_;
    const std::stop_token stop_;
  };
  using Job = std::function<Outcome(Report& report)>;

  // `take` is called with what was found since, `end` once with what became of the job.
  ReviewWork(std::function<void(std::vector<Result> found, Progress progress)> take,
             std::function<void(const Outcome& outcome)> end)
      : take_(std::move(take)), end_(std::move(end)) {}
  ~ReviewWork() override { thread_ = {}; }  // asks it to stop, and waits

  // In place of the job that is under way, of which nothing is told any more; begins once that has ended.
  void start(Job job) {
    if (!running()) return begin(std::move(job));
    replaced_ = true;
    next_ = std::move(job);
    thread_.request_stop();
  }
  // The job ends soon, and tells so.
  void cancel() {
    next_ = {};
    thread_.request_stop();
  }
  [[nodiscard]] bool running() const { return thread_.joinable(); }

 private:
  void begin(Job job) {
    progress_ = {};  // nobody else is there
    try {
      thread_ = std::jthread([this, job = std::move(job)](const std::stop_token& stop) {
        Report report(*this, stop);
        Outcome outcome = job(report);
        change([&] { outcome_ = std::move(outcome); });
      });
    } catch (const std::system_error& failure) {
      end_(Failure{Failure::Kind::kNoMemory, failure.what()});
    }
  }

  template <class Change>
  void change(Change change) {
    const std::lock_guard guard(mutex_);
    change();
    if (std::exchange(told_, true)) return;
    post_([this] { deliver(); });
  }

  void deliver() {
    std::vector<Result> found;
    std::optional<Outcome> outcome;
    Progress progress;
    {
      const std::lock_guard guard(mutex_);
      told_ = false;
      found.swap(found_);
      outcome.swap(outcome_);
      progress = progress_;
    }
    if (!replaced_) take_(std::move(found), progress);
    if (!outcome) return;
    thread_ = {};
    if (!std::exchange(replaced_, false)) return end_(*outcome);
    if (Job next = std::exchange(next_, {}))
      begin(std::move(next));
    else
      end_(Failure{Failure::Kind::kCancelled, "cancelled"});
  }

  const Post post_ = postTo(this);
  const std::function<void(std::vector<Result>, Progress)> take_;
  const std::function<void(const Outcome&)> end_;
  std::mutex mutex_;  // guards what follows, up to the thread
  std::vector<Result> found_;
  Progress progress_;
  std::optional<Outcome> outcome_;
  bool told_ = false;      // a delivery is under way
  bool replaced_ = false;  // the job that is under way, by the next one
  Job next_;
  std::jthread thread_;
};

}  // namespace tessaly
