#include "cli/ValueWatch.h"

#include <algorithm>
#include <utility>

namespace tessaly {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

ValueWatch::ValueWatch(std::set<std::string> names, int count, std::optional<milliseconds> patience)
    : silent_(std::move(names)), left_(count), endless_(count == 0) {
  if (patience) end_ = steady_clock::now() + *patience;
}

bool ValueWatch::over() const { return (!endless_ && left_ == 0) || (end_ && steady_clock::now() >= *end_); }

milliseconds ValueWatch::timeLeft(milliseconds most) const {
  return end_ ? std::min(most, std::chrono::ceil<milliseconds>(*end_ - steady_clock::now())) : most;
}

void ValueWatch::count(const std::string& name) {
  silent_.erase(name);
  if (!endless_) --left_;
}

std::string ValueWatch::shortfall() const {
  if (!endless_ && left_ == 0) return {};
  std::string names;
  for (const std::string& name : silent_) names += (names.empty() ? "" : ", ") + name;
  if (!names.empty()) return "no value came of " + names;
  return endless_ ? std::string() : "fewer values came than were asked for";
}

}  // namespace tessaly
