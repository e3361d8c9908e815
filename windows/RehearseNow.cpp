#include "windows/RehearseNow.h"

#include <algorithm>

#include "widgets/PostTo.h"

namespace tessaly {

RehearseNow::RehearseNow(PanelClient& client, std::function<QString()> panel,
                         std::chrono::milliseconds patience)
    : client_(client),
      name_(std::move(panel)),
      questions_(client, postTo(this), [this](const std::vector<PanelAnswer>& answers) { take(answers); }) {
  patience_.setSingleShot(true);
  patience_.setInterval(patience);
  connect(&patience_, &QTimer::timeout, this, [this] {
    settle();
    emit changed();
  });
}

void RehearseNow::want(std::vector<std::string> names) {
  names_ = std::move(names);
  if (connected()) ask();
  emit changed();
}

void RehearseNow::askAgain() {
  if (!connected()) return;
  questions_.cancel();
  ask();
  emit changed();
}

void RehearseNow::look() {
  const QString panel = name_();
  const unsigned connection = client_.connectionNumber();
  if (panel == panel_ && (panel.isEmpty() || connection == connection_)) return;
  const bool had = connected();
  panel_ = panel;
  connection_ = connection;
  questions_.cancel();
  values_.clear();
  if (connected()) {
    ask();
  } else {
    patience_.stop();
    missing_ = names_.size();
    state_ = had ? State::kLost : State::kNoPanel;
  }
  emit changed();
}

void RehearseNow::ask() {
  patience_.start();
  questions_.ask(names_);
  settle();
}

void RehearseNow::take(const std::vector<PanelAnswer>& answers) {
  if (!connected()) return;
  for (const PanelAnswer& answer : answers) {
    // No value is empty: a name that somebody has asked for twice is told so until its value comes.
    if (answer.value.empty())
      values_.erase(answer.name);
    else
      values_[answer.name] = answer.value;
  }
  settle();
  emit changed();
}

void RehearseNow::settle() {
  missing_ = static_cast<std::size_t>(std::count_if(
      names_.begin(), names_.end(), [this](const std::string& name) { return !values_.contains(name); }));
  if (missing_ == 0) patience_.stop();
  state_ = missing_ == 0 ? State::kThere : patience_.isActive() ? State::kAsking : State::kMissing;
}

const std::string* RehearseNow::value(const std::string& name) const {
  const auto known = values_.find(name);
  return known == values_.end() ? nullptr : &known->second;
}

}  // namespace tessaly
