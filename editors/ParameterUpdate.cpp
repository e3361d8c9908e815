#include "editors/ParameterUpdate.h"

#include <algorithm>

#include "widgets/PostTo.h"

namespace tessaly {

namespace {
constexpr int kQuietMilliseconds = 2000;  // a panel that is silent for so long will not answer
}

ParameterUpdate::ParameterUpdate(PanelClient& client, Taker taker)
    : questions_(client, postTo(this), [this](const std::vector<PanelAnswer>& answers) { take(answers); }),
      taker_(std::move(taker)) {
  quiet_.setSingleShot(true);
  quiet_.setInterval(kQuietMilliseconds);
  connect(&quiet_, &QTimer::timeout, this, &ParameterUpdate::end);
}

void ParameterUpdate::start(const std::vector<Question>& questions, int alreadyDone) {
  questions_.cancel();
  waitingCommands_.clear();
  std::vector<std::string> names;
  for (const Question& question : questions) {
    waitingCommands_[question.name].push_back(question.command);
    names.push_back(question.name);
  }
  done_ = alreadyDone;
  count_ = alreadyDone + static_cast<int>(questions.size());
  running_ = !questions.empty();
  if (!running_) {
    end();
    return;
  }
  questions_.ask(names);
  quiet_.start();
  emit changed();
}

int ParameterUpdate::number() const { return std::min(done_ + 1, count_); }

void ParameterUpdate::take(const std::vector<PanelAnswer>& answers) {
  bool taken = false;
  for (const auto& [name, value] : answers) {
    const auto waiting = waitingCommands_.find(name);
    if (waiting == waitingCommands_.end()) continue;
    const std::size_t answered = std::erase_if(
        waiting->second, [this, &text = value](std::size_t command) { return taker_(command, text); });
    done_ += static_cast<int>(answered);
    taken = taken || answered > 0;
    if (waiting->second.empty()) waitingCommands_.erase(waiting);
  }
  if (!taken) return;
  if (running_) quiet_.start();
  if (waitingCommands_.empty()) questions_.cancel();
  if (running_ && waitingCommands_.empty())
    end();
  else
    emit changed();
}

void ParameterUpdate::end() {
  running_ = false;
  quiet_.stop();
  emit changed();
}

}  // namespace tessaly
