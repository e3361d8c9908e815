#include "app/ValueUpdate.h"

#include <algorithm>

#include <QThread>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr int kQuietMilliseconds = 500;
constexpr std::string_view kClassicMark = "NCSCOMMAND";
constexpr const char* kNotConnected =
    "Data Update is only possible when you are connected to a Corvane XL Control Panel \n";
constexpr const char* kBusy = "Update is busy... ";
constexpr const char* kUpdateAll =
    "Update ALL macro commands in \"Macro Overview %c\"? \n(To update a single command, first select it)";
constexpr const char* kClassicAndSome =
    "Classic Commands will not be updated \n%d commands do not have a value which can be updated ";
constexpr const char* kClassicOnly = "Classic Commands will not be updated \n";
constexpr const char* kSomeOnly = "%d commands do not have a value which can be updated ";
constexpr const char* kProgress = "%d of %d Commands updated...";

bool isClassic(const MacroCommand& command) { return command.fid.find(kClassicMark) != std::string::npos; }

}  // namespace

ValueUpdate::ValueUpdate(std::array<PaneAccess, kPanes.size()> panes, const FunctionDictionary& dictionary,
                         const PanelConnection& connection, PanelSubscriptions& subscriptions,
                         Messages& messages)
    : panes_(panes),
      dictionary_(dictionary),
      connection_(connection),
      subscriptions_(subscriptions),
      messages_(messages) {
  quiet_.setSingleShot(true);
  quiet_.setInterval(kQuietMilliseconds);
  quiet_.setTimerType(Qt::PreciseTimer);
  connect(&quiet_, &QTimer::timeout, this, &ValueUpdate::finish);
  subscriptions_.onCommandValue(
      [this](const std::string& name, const ParameterValue& value) { arrived(name, value.getAsString()); });
}

void ValueUpdate::start(Pane pane) {
  if (connection_.source(pane) != PaneSource::kPanel || !connection_.connected(pane)) {
    messages_.show(kNotConnected, MessageIcon::kExclamation);
    return;
  }
  if (marker_ != kIdle) {
    messages_.show(kBusy, MessageIcon::kExclamation);
    return;
  }
  marker_ = pane == Pane::kA ? 1 : 2;
  ++update_;
  pane_ = pane;
  PaneState& state = *room().state;
  notedCount_ = state.copy.commandCount();
  state.updatedMarks.assign(static_cast<std::size_t>(notedCount_), false);
  selected_ = state.view.commands().selectedRow();
  dropRegistrations();
  heldRevision_ = state.copy.revision();
  // The marker stays set after this and every later early return, until a macro is selected: users know it
  // so.
  if (selected_ < 0 && !messages_.ask(format(kUpdateAll, state.descriptor.letter), MessageIcon::kQuestion))
    return;
  const std::vector<std::size_t> chosen = chosenCommands();
  toUpdate_ = 0;
  const Survey result = survey(chosen);
  if (result.broken) return;
  if (selected_ < 0) report(result);
  updated_ = 0;
  // A box may have been open meanwhile, and the panel may have taken the macro away behind it.
  if (state.copy.revision() == heldRevision_ && state.copy.hold()) request(chosen);
}

std::vector<std::size_t> ValueUpdate::chosenCommands() {
  const std::size_t count = room().state->copy.commands().size();
  std::vector<std::size_t> chosen;
  if (selected_ >= 0) {
    if (static_cast<std::size_t>(selected_) < count) chosen.push_back(static_cast<std::size_t>(selected_));
    return chosen;
  }
  for (std::size_t i = 0; i < count; ++i) chosen.push_back(i);
  return chosen;
}

ValueUpdate::Survey ValueUpdate::survey(const std::vector<std::size_t>& chosen) {
  Survey result;
  for (const std::size_t i : chosen) {
    const MacroCommand& command = room().state->copy.commands()[i];
    if (isClassic(command)) {
      result.classic = true;
      continue;
    }
    const std::size_t dot = command.fid.find('.');
    if (dot == std::string::npos || dot == 0) {
      result.broken = true;
      return result;
    }
    const auto function = dictionary_.find(command.functionName());
    if (!function || function->incremental())
      ++result.withoutValue;
    else if (selected_ < 0)
      ++toUpdate_;
  }
  return result;
}

void ValueUpdate::report(const Survey& result) {
  if (result.classic && result.withoutValue > 0)
    messages_.show(format(kClassicAndSome, result.withoutValue), MessageIcon::kExclamation);
  else if (result.classic)
    messages_.show(kClassicOnly, MessageIcon::kExclamation);
  else if (result.withoutValue > 0)
    messages_.show(format(kSomeOnly, result.withoutValue), MessageIcon::kExclamation);
}

void ValueUpdate::request(const std::vector<std::size_t>& chosen) {
  const MacroCommands& commands = room().state->copy.commands();
  commandsByFid_.clear();
  for (std::size_t i = static_cast<std::size_t>(std::max(0, selected_)); i < commands.size(); ++i)
    commandsByFid_[commands[i].fid].push_back(i);
  std::unordered_map<std::string, bool> asked;
  for (const std::size_t i : chosen) {
    const MacroCommand& command = commands[i];
    if (isClassic(command)) continue;
    const auto function = dictionary_.find(command.functionName());
    if (!function || function->incremental()) continue;
    std::string name = std::string(command.destination()) + "." + function->sid();
    // A second registration of one name would deliver an empty value.
    if (!asked.emplace(name, true).second) continue;
    registered_.push_back(name);
    static_cast<void>(subscriptions_.subscribeCommandValue(name));
  }
}

void ValueUpdate::arrived(const std::string& name, std::string text) {
  if (QThread::currentThread() == thread()) {
    handle({update_, name, std::move(text)});
    return;
  }
  bool queue = false;
  {
    const std::lock_guard guard(mutex_);
    waiting_.push_back({update_, name, std::move(text)});
    queue = !queued_;
    queued_ = true;
  }
  if (queue) QMetaObject::invokeMethod(this, &ValueUpdate::drain, Qt::QueuedConnection);
}

void ValueUpdate::drain() {
  std::vector<Arrived> values;
  {
    const std::lock_guard guard(mutex_);
    values.swap(waiting_);
    queued_ = false;
  }
  for (const Arrived& value : values) handle(value);
}

void ValueUpdate::handle(const Arrived& value) {
  if (marker_ == kIdle || value.update != update_) return;
  PaneState& state = *room().state;
  if (state.copy.revision() != heldRevision_) {
    // The macro was edited meanwhile: the held document no longer has these edits and must not be saved over
    // them.
    marker_ = kIdle;
    emit said(tr("update ended: the macro was changed meanwhile"));
    return;
  }
  const std::size_t dot = value.name.find('.');
  if (dot == std::string::npos) return;
  const auto function = dictionary_.findBySid(std::string_view(value.name).substr(dot + 1));
  if (!function) return;
  const auto commands = commandsByFid_.find(value.name.substr(0, dot + 1) + std::string(function->name()));
  if (commands == commandsByFid_.end()) return;
  for (const std::size_t command : commands->second) {
    if (setValue(command, value.text)) {
      if (command < state.updatedMarks.size()) state.updatedMarks[command] = true;
      ++updated_;
      state.view.showProgress(QString::fromStdString(format(kProgress, updated_, toUpdate_)));
      quiet_.start();
    }
    if (selected_ >= 0) break;
  }
}

bool ValueUpdate::setValue(std::size_t command, const std::string& text) {
  WorkingCopy& copy = room().state->copy;
  const int number = static_cast<int>(command);
  // Pane B's values go straight into the file, which the end of the update then replaces: users know it so.
  return pane_ == Pane::kA ? copy.setHeldValue(number, text) : copy.setFileValue(number, text);
}

void ValueUpdate::finish() {
  PaneState& state = *room().state;
  if (marker_ != kIdle && connection_.connected(pane_) && state.copy.revision() == heldRevision_) {
    const bool saved = state.copy.saveHeld();
    room().browser->showCommands();
    emit said(saved ? tr("%n commands updated", nullptr, updated_)
                    : tr("the updated values could not be written"));
  }
  marker_ = kIdle;
  notedCount_ = -1;
  state.updatedMarks.clear();
  dropRegistrations();
  emit changed();
}

void ValueUpdate::dropRegistrations() {
  subscriptions_.unsubscribeCommandValues(registered_);
  registered_.clear();
  commandsByFid_.clear();
  quiet_.stop();
}

}  // namespace tessaly
