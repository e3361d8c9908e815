#include "app/CheckMarks.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <system_error>
#include <utility>

#include "windows/FindingText.h"

namespace tessaly {

namespace {

// Longer than what an edit or an opened macro takes until it is painted.
constexpr std::chrono::milliseconds kRest{150};

std::map<int, CommandMark> marksOf(const Findings& findings) {
  std::map<int, CommandMark> marks;
  for (const Finding& finding : findings) {
    if (finding.command < 0) continue;
    CommandMark& mark = marks[finding.command];
    mark.mark = std::max(mark.mark, markOf(finding.severity));
    if (!mark.text.empty()) mark.text += '\n';
    mark.text += findingText(finding).toStdString();
  }
  return marks;
}

}  // namespace

CheckMarks::CheckMarks(const PaneAccesses& panes) : panes_(panes) {
  rest_.setSingleShot(true);
  rest_.setInterval(kRest);
  connect(&rest_, &QTimer::timeout, this, &CheckMarks::hand);
  for (const Pane pane : kPanes)
    connect(&state(pane).copy, &WorkingCopy::changed, this, [this, pane] { look(pane); });
}

void CheckMarks::begin(const CheckContext& context) {
  {
    const std::lock_guard guard(mutex_);
    context_.emplace(context);
  }
  begun_ = true;
  beginWork();
  for (const Pane pane : kPanes) ask(pane);
}

void CheckMarks::lookAtLists() {
  if (!begun_) return;
  {
    const std::lock_guard guard(mutex_);
    listsDue_ = true;
  }
  asked_.notify_one();
}

const Findings* CheckMarks::findings(Pane pane) const {
  const auto& known = found_[index(pane)].findings;
  return known ? &*known : nullptr;
}

void CheckMarks::look(Pane pane) {
  if (begun_ && found_[index(pane)].revision != state(pane).copy.revision()) ask(pane);
}

void CheckMarks::ask(Pane pane) {
  found_[index(pane)] = {state(pane).copy.revision(), std::nullopt};
  due_[index(pane)] = true;
  state(pane).view.commands().rows().setMarks({});
  rest_.start();
  emit found(pane);
}

void CheckMarks::hand() {
  {
    const std::lock_guard guard(mutex_);
    for (const Pane pane : kPanes)
      if (std::exchange(due_[index(pane)], false)) wanted_[index(pane)] = wanted(state(pane).copy);
  }
  beginWork();
  asked_.notify_one();
}

void CheckMarks::beginWork() {
  try {
    if (!worker_.joinable()) worker_ = std::jthread([this](const std::stop_token& stop) { work(stop); });
  } catch (const std::system_error&) {
    rest_.start();  // no thread to be had now
  }
}

std::optional<CheckMarks::Wanted> CheckMarks::wanted(const WorkingCopy& copy) {
  if (copy.content() == WorkingCopy::Content::kMacro) return Wanted{copy.revision(), *copy.macro()};
  if (copy.content() == WorkingCopy::Content::kKeyFile) return Wanted{copy.revision(), copy.keyFile()};
  return std::nullopt;
}

void CheckMarks::take(Pane pane, int revision, Findings findings) {
  if (revision != found_[index(pane)].revision) return;
  state(pane).view.commands().rows().setMarks(marksOf(findings));
  found_[index(pane)].findings = std::move(findings);
  emit found(pane);
}

// On the worker's thread. What was learnt by one check serves the next.
void CheckMarks::work(const std::stop_token& stop) {
  std::optional<MacroCheck> check;
  DecodingLists* lists = nullptr;
  std::uint64_t revision = 0;  // of the lists, when something was last asked for
  while (true) {
    std::optional<Wanted> next;
    Pane pane = Pane::kA;
    {
      std::unique_lock lock(mutex_);
      const auto waiting = [this] { return listsDue_ || wanted_[0].has_value() || wanted_[1].has_value(); };
      if (!asked_.wait(lock, stop, waiting)) return;
      if (context_) {
        check.emplace(*context_);
        lists = &context_->decodingLists;
      }
      context_.reset();
      listsDue_ = false;
      pane = wanted_[0] ? Pane::kA : Pane::kB;
      next.swap(wanted_[index(pane)]);
    }
    if (const std::uint64_t now = lists->revision(); std::exchange(revision, now) != now)
      post_([this] {
        for (const Pane each : kPanes) ask(each);
        emit listsWritten();
      });
    if (!next) continue;
    Findings findings = std::visit([&](const auto& content) { return check->check(content); }, next->content);
    post_([this, pane, content = next->revision, findings = std::move(findings)]() mutable {
      take(pane, content, std::move(findings));
    });
  }
}

}  // namespace tessaly
