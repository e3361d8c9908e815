#include "editors/ParameterUpdate.h"

#include <algorithm>

namespace tessaly {

namespace {

constexpr int kQuietMilliseconds = 2000;      // a panel that is silent for so long will not answer
constexpr std::size_t kQuestionsAtOnce = 50;  // between two looks at the user's clicks

}  // namespace

ParameterUpdate::ParameterUpdate(PanelClient& client, Taker taker)
    : client_(client), taker_(std::move(taker)) {
  asking_.setInterval(0);
  quiet_.setSingleShot(true);
  quiet_.setInterval(kQuietMilliseconds);
  connect(&asking_, &QTimer::timeout, this, &ParameterUpdate::askSome);
  connect(&quiet_, &QTimer::timeout, this, &ParameterUpdate::end);
}

ParameterUpdate::~ParameterUpdate() { client_.unsubscribeOwner(this); }

void ParameterUpdate::start(const std::vector<Question>& questions, int alreadyDone) {
  client_.unsubscribeOwner(this);
  {
    const std::lock_guard guard(mutex_);
    values_.clear();
  }
  waitingCommands_.clear();
  unasked_.clear();
  for (const Question& question : questions) {
    std::vector<std::size_t>& commands = waitingCommands_[question.name];
    // A second question for one name would be answered with an empty value.
    if (commands.empty()) unasked_.push_back(question.name);
    commands.push_back(question.command);
  }
  std::reverse(unasked_.begin(), unasked_.end());
  done_ = alreadyDone;
  count_ = alreadyDone + static_cast<int>(questions.size());
  running_ = !questions.empty();
  if (!running_) {
    end();
    return;
  }
  asking_.start();
  quiet_.start();
  emit changed();
}

int ParameterUpdate::number() const { return std::min(done_ + 1, count_); }

void ParameterUpdate::askSome() {
  for (std::size_t asked = 0; asked < kQuestionsAtOnce && !unasked_.empty(); ++asked) {
    const std::string name = std::move(unasked_.back());
    unasked_.pop_back();
    // Refused or not, the answer either comes or does not.
    client_.subscribe(name, this, &ParameterUpdate::arrived);
  }
  quiet_.start();
  if (unasked_.empty()) asking_.stop();
}

void ParameterUpdate::arrived(const std::string& name, const ParameterValue& value) {
  bool queue = false;
  {
    const std::lock_guard guard(mutex_);
    queue = values_.empty();
    values_[name] = value.getAsString();
  }
  if (queue) QMetaObject::invokeMethod(this, &ParameterUpdate::drain, Qt::QueuedConnection);
}

void ParameterUpdate::drain() {
  std::unordered_map<std::string, std::string> values;
  {
    const std::lock_guard guard(mutex_);
    values.swap(values_);
  }
  bool taken = false;
  for (const auto& entry : values) {
    const std::string& value = entry.second;
    const auto waiting = waitingCommands_.find(entry.first);
    if (waiting == waitingCommands_.end()) continue;
    const std::size_t answered =
        std::erase_if(waiting->second, [&](std::size_t command) { return taker_(command, value); });
    done_ += static_cast<int>(answered);
    taken = taken || answered > 0;
    if (waiting->second.empty()) waitingCommands_.erase(waiting);
  }
  if (!taken) return;
  if (running_) quiet_.start();
  if (waitingCommands_.empty()) client_.unsubscribeOwner(this);
  if (running_ && waitingCommands_.empty())
    end();
  else
    emit changed();
}

void ParameterUpdate::end() {
  running_ = false;
  asking_.stop();
  quiet_.stop();
  emit changed();
}

}  // namespace tessaly
