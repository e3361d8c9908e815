#include "cli/PanelLine.h"

#include <algorithm>
#include <utility>

#include "model/MacroFile.h"
#include "platform/MacroNumber.h"

namespace tessaly {
namespace {

constexpr std::size_t kMostWaiting = 100'000;               // values
constexpr std::chrono::milliseconds kLookAtTheStatus{100};  // how soon a lost connection is noticed

}  // namespace

std::string PanelPlace::control() const {
  return controlPort == kPanelPort ? address : address + ":" + std::to_string(controlPort);
}

PanelLine::PanelLine(const SiteRoot& root, MacroKeeper& keeper, PanelPlace place)
    : place_(std::move(place)), macros_(client_, root, ftpTransfers(place_.ftpPort), &readsAsMacro) {
  macros_.keepIn(keeper);
  xctlInit();
}

PanelLine::~PanelLine() {
  client_.unsubscribeOwner(this);
  client_.disconnect();
}

std::optional<PanelLine::Value> PanelLine::next(std::chrono::milliseconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  std::unique_lock guard(mutex_);
  while (values_.empty()) {
    const auto now = std::chrono::steady_clock::now();
    if (!connected() || now >= deadline) return std::nullopt;
    changed_.wait_until(guard, std::min(deadline, now + kLookAtTheStatus));
  }
  Value value = std::move(values_.front());
  values_.pop_front();
  return value;
}

std::string PanelLine::get(int workplace, int number, const std::string& file) {
  const TransferOutcome outcome =
      macros_.download(place_.address, workplace, MacroNumber::textOf(number), file);
  return outcome.done() && !outcome.unflushed() ? std::string() : outcome.describe();
}

TransferOutcome PanelLine::put(int workplace, int number, const std::string& file) {
  return macros_.upload(place_.address, workplace, MacroNumber::textOf(number), file, MacroChange::kCopy);
}

bool PanelLine::remove(int workplace, int number) {
  const std::string text = MacroNumber::textOf(number);
  const PanelMacros::Deletion deletion = macros_.remove(place_.address, workplace, text);
  // Nobody can be asked; the session tells what was not kept.
  if (deletion.kept) return deletion.asked;
  return macros_.remove(place_.address, workplace, text, PanelMacros::OldContent::kLost).asked;
}

bool PanelLine::rename(int workplace, int number, const std::string& name) {
  return macros_.rename(place_.address, workplace, MacroNumber::textOf(number), name);
}

bool PanelLine::run(int workplace, int number) {
  return macros_.run(place_.address, workplace, MacroNumber::textOf(number));
}

void PanelLine::received(const std::string& name, const ParameterValue& value) {
  const std::scoped_lock guard(mutex_);
  if (values_.size() == kMostWaiting) values_.pop_front();
  values_.push_back({name, value.getAsString()});
  changed_.notify_one();
}

}  // namespace tessaly
