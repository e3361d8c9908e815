#include "link/PanelQuestions.h"

#include <algorithm>
#include <utility>

#include "platform/ThreadAnnotations.h"

namespace tessaly {
namespace {

constexpr std::size_t kAtOnce = 1000;  // questions between two looks at other things; some milliseconds

}  // namespace

// Where answers wait. Posted steps hold on to it, not to the asker, so that one that comes late finds nobody.
class PanelQuestions::Inbox : public std::enable_shared_from_this<Inbox> {
 public:
  Inbox(PanelQuestions& asker, Post post) : asker_(&asker), post_(std::move(post)) {}

  // Any thread.
  void arrived(const std::string& name, const ParameterValue& value) {
    {
      const MutexLock guard(mutex_);
      const auto [place, isNew] = places_.try_emplace(name, waiting_.size());
      if (isNew)
        waiting_.push_back({name, value.getAsString()});
      else
        waiting_[place->second].value = value.getAsString();
      if (std::exchange(posted_, true)) return;
    }
    post([](PanelQuestions& asker) { asker.take(asker.inbox_->empty()); });
  }

  // Runs a step on the asker's thread if there still is an asker. Any thread.
  void post(void (*step)(PanelQuestions& asker)) {
    post_([weak = weak_from_this(), step] {
      const auto inbox = weak.lock();
      if (inbox && inbox->asker_ != nullptr) step(*inbox->asker_);
    });
  }

  std::vector<PanelAnswer> empty() {
    const MutexLock guard(mutex_);
    posted_ = false;
    places_.clear();
    return std::exchange(waiting_, {});
  }

  void leave() { asker_ = nullptr; }  // on the asker's thread

 private:
  PanelQuestions* asker_;
  const Post post_;
  Mutex mutex_;
  std::vector<PanelAnswer> waiting_ GUARDED_BY(mutex_);
  std::unordered_map<std::string, std::size_t> places_ GUARDED_BY(mutex_);  // in waiting_, by name
  bool posted_ GUARDED_BY(mutex_) = false;  // a step that empties it is on its way
};

PanelQuestions::PanelQuestions(PanelClient& client, Post post, Taker taker)
    : client_(client), taker_(std::move(taker)), inbox_(std::make_shared<Inbox>(*this, std::move(post))) {}

PanelQuestions::~PanelQuestions() {
  cancel();
  inbox_->leave();
}

void PanelQuestions::ask(const std::vector<std::string>& names) {
  const bool asking = !unasked_.empty();
  std::vector<std::string> added;
  for (const std::string& name : names)
    if (answered_.try_emplace(name, false).second) added.push_back(name);
  missing_ += added.size();
  unasked_.insert(unasked_.begin(), added.rbegin(), added.rend());
  if (!asking) askSome();
}

void PanelQuestions::askSome() {
  for (std::size_t asked = 0; asked < kAtOnce && !unasked_.empty(); ++asked) {
    const std::string name = std::move(unasked_.back());
    unasked_.pop_back();
    // Refused or not, the answer either comes or does not.
    client_.subscribe(name, inbox_.get(), &Inbox::arrived);
  }
  if (!unasked_.empty()) inbox_->post([](PanelQuestions& asker) { asker.askSome(); });
}

void PanelQuestions::take(std::vector<PanelAnswer> answers) {
  for (const PanelAnswer& answer : answers)
    if (!std::exchange(answered_.at(answer.name), true)) --missing_;
  const Taker taker = taker_;  // outlives this object, if that is what it ends
  if (!answers.empty()) taker(answers);
}

void PanelQuestions::cancel() {
  client_.unsubscribeOwner(inbox_.get());
  static_cast<void>(inbox_->empty());
  answered_.clear();
  unasked_.clear();
  missing_ = 0;
}

}  // namespace tessaly
