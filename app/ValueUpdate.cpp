#include "app/ValueUpdate.h"

#include <algorithm>
#include <chrono>
#include <numeric>

#include "app/Browser.h"
#include "app/FailureText.h"
#include "app/PlaceText.h"
#include "app/StepNames.h"
#include "review/ValueQuestion.h"
#include "widgets/DialogText.h"
#include "widgets/PostTo.h"

namespace tessaly {

namespace {

constexpr int kQuietMilliseconds = 500;
constexpr int kPatienceMilliseconds = 300;
constexpr int kAheadMilliseconds = 20;     // until what is being done is looked at again
constexpr int kPrepareMilliseconds = 100;  // without a value
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

}  // namespace

ValueUpdate::ValueUpdate(const PaneAccesses& panes, const FunctionDictionary& dictionary,
                         const PanelConnection& connection, PanelClient& client, Messages& messages,
                         EventGate& gate)
    : panes_(panes),
      dictionary_(dictionary),
      connection_(connection),
      messages_(messages),
      gate_(gate),
      questions_(client, postTo(this), [this](const std::vector<PanelAnswer>& answers) { handle(answers); }) {
  for (QTimer* timer : {&quiet_, &patience_, &ahead_, &afterwards_}) {
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
  }
  quiet_.setInterval(kQuietMilliseconds);
  patience_.setInterval(kPatienceMilliseconds);
  connect(&quiet_, &QTimer::timeout, this, [this] {
    gate_.whenFree("end of the value update", [this] {
      if (!quiet_.isActive()) finish();  // values that came behind the box have begun the wait anew
    });
  });
  connect(&patience_, &QTimer::timeout, this, &ValueUpdate::showWaiting);
  connect(&ahead_, &QTimer::timeout, this, &ValueUpdate::workAhead);
  connect(&afterwards_, &QTimer::timeout, this, [this] {
    if (!busy()) dropQuestions();
  });
  // Queued, so that the last word is not that of whoever has changed the macro.
  for (const PaneAccess& pane : panes_)
    connect(&pane.state->copy, &WorkingCopy::changed, this, &ValueUpdate::look, Qt::QueuedConnection);
}

void ValueUpdate::endBusy() {
  marker_ = kIdle;
  patience_.stop();
  emit waiting({});
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
  if (!values_.values.empty()) drop(gaveWay());
  marker_ = pane == Pane::kA ? 1 : 2;
  pane_ = pane;
  PaneState& state = *room().state;
  marks_.assign(static_cast<std::size_t>(state.copy.commandCount()), false);
  selected_ = state.view.commands().selectedRows();
  dropQuestions();
  heldRevision_ = state.copy.revision();
  // The marker stays set after this and every later early return, until a macro is selected: users know it
  // so.
  if (selected_.empty() &&
      !messages_.ask(format(kUpdateAll, state.descriptor.letter), MessageIcon::kQuestion))
    return;
  const std::vector<std::size_t> chosen = chosenCommands();
  toUpdate_ = 0;
  const Survey result = survey(chosen);
  if (result.broken) return;
  if (!one()) report(result);
  updated_ = 0;
  if (state.copy.revision() == heldRevision_) request(chosen, result.names);
}

std::vector<std::size_t> ValueUpdate::chosenCommands() {
  const std::size_t count = room().state->copy.commands().size();
  std::vector<std::size_t> chosen(selected_.begin(), selected_.end());
  if (selected_.empty()) {
    chosen.resize(count);
    std::iota(chosen.begin(), chosen.end(), 0);
  }
  chosen.erase(std::lower_bound(chosen.begin(), chosen.end(), count), chosen.end());
  return chosen;
}

ValueUpdate::Survey ValueUpdate::survey(const std::vector<std::size_t>& chosen) {
  Survey result;
  for (const std::size_t i : chosen) {
    ValueQuestion question = valueQuestion(room().state->copy.commands()[i], dictionary_);
    if (!question.name.empty()) result.names.push_back(std::move(question.name));
    switch (question.kind) {
      case ValueQuestion::Kind::kClassic:
        result.classic = true;
        break;
      case ValueQuestion::Kind::kNoDestination:
        result.broken = true;
        return result;
      case ValueQuestion::Kind::kNoValue:
        ++result.withoutValue;
        break;
      case ValueQuestion::Kind::kAsked:
        if (!one()) ++toUpdate_;
        break;
    }
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

void ValueUpdate::request(const std::vector<std::size_t>& chosen, const std::vector<std::string>& names) {
  const MacroCommands& commands = room().state->copy.commands();
  commandsByFid_.clear();
  if (one()) {
    // Its value goes to the first of its kind from there on, whichever function that is.
    for (auto i = static_cast<std::size_t>(selected_.front()); i < commands.size(); ++i)
      commandsByFid_[commands[i].fid].push_back(i);
  } else {
    for (const std::size_t i : chosen) commandsByFid_[commands[i].fid].push_back(i);
  }
  if (!names.empty()) patience_.start();
  questions_.ask(names);
}

void ValueUpdate::showWaiting() {
  if (!patience_.isActive() && questions_.missing() > 0 && busy())
    emit waiting(tr("waiting for %n values from the panel", nullptr, static_cast<int>(questions_.missing())));
  else if (questions_.missing() == 0)
    emit waiting({});
}

void ValueUpdate::handle(const std::vector<PanelAnswer>& answers) {
  if (marker_ == kIdle) return;
  if (const QString why = obstacle(); !why.isEmpty()) {
    drop(why);
    return;
  }
  const int before = updated_;
  for (const PanelAnswer& answer : answers) take(answer);
  showWaiting();
  if (updated_ == before) return;
  room().state->view.showProgress(QString::fromStdString(format(kProgress, updated_, toUpdate_)));
  quiet_.start();
  if (pane_ == Pane::kA)
    ahead_.start(kPrepareMilliseconds);
  else if (!ahead_.isActive())
    ahead_.start(0);
}

void ValueUpdate::take(const PanelAnswer& answer) {
  const std::string fid = fidOfValue(answer.name, dictionary_);
  if (fid.empty()) return;
  const auto commands = commandsByFid_.find(fid);
  if (commands == commandsByFid_.end()) return;
  for (const std::size_t command : commands->second) {
    const int number = static_cast<int>(command);
    const std::optional<Macro>& macro = copy().macro();
    if (macro && macro->takerOfValue(number) >= 0) {
      values_.values.emplace_back(number, answer.value);
      if (command < marks_.size()) marks_[command] = true;
      ++updated_;
    }
    if (one()) break;
  }
}

// Pane A's macro is made in the quiet time. Pane B's values go straight into the file, which the end of the
// update then replaces: users know it so.
void ValueUpdate::workAhead() {
  if (!busy() || copy().revision() != heldRevision_) return;
  const bool begun = pane_ == Pane::kA ? prepare() : copy().writeAhead(values_);
  if (!begun) ahead_.start(kAheadMilliseconds);
}

// False, nothing begun, while the one before is still being made.
bool ValueUpdate::prepare() {
  using namespace std::chrono_literals;
  std::future<Expected<Macro>>& changed = prepared_.changed;
  if (changed.valid() && changed.wait_for(0s) == std::future_status::timeout) return false;
  prepared_.values = values_.values.size();
  // Where no thread is to be had, at the end of the update.
  changed = std::async(std::launch::async | std::launch::deferred,
                       [macro = *copy().macro(), values = values_] { return apply(macro, values); });
  return true;
}

// What keeps the values from their commands. A pane that leaves the panel loses its macro, too.
QString ValueUpdate::obstacle() {
  if (!connection_.connected(pane_))
    return tr("update ended: the pane is no longer connected, the values that came are gone");
  // What was asked for belongs to commands that have moved or gone.
  if (copy().revision() != heldRevision_)
    return tr("update ended: the macro was changed meanwhile, the values that came are gone");
  return {};
}

// What was asked for is not waited for once it is of no use.
void ValueUpdate::look() {
  gate_.whenFree("obstacle of the value update", [this] {
    if (!busy() || (questions_.missing() == 0 && values_.values.empty())) return;
    if (const QString why = obstacle(); !why.isEmpty()) drop(why);
  });
}

QString ValueUpdate::gaveWay() {
  return tr("update ended: a macro was chosen meanwhile, the values that came are gone");
}

void ValueUpdate::drop(const QString& why) {
  end();
  emit said({Grade::kWarning, why, placeInWindow(*room().state)});
}

// Without a result.
void ValueUpdate::end() {
  endBusy();
  quiet_.stop();
  ahead_.stop();
  static_cast<void>(copy().restoreFile());
  room().browser->showCount();
  dropQuestions();
}

void ValueUpdate::cancel() {
  if (busy()) drop(tr("update cancelled: the values that came are gone"));
}

bool ValueUpdate::lineLost() {
  if (!busy() || questions_.missing() == 0 || quiet_.isActive()) return false;
  end();
  return true;
}

void ValueUpdate::finish() {
  if (values_.values.empty()) return;  // dropped while this waited
  ahead_.stop();
  if (const QString why = busy() ? obstacle() : gaveWay(); !why.isEmpty()) {
    drop(why);
    return;
  }
  if (pane_ == Pane::kA)
    finishPaneA();
  else
    finishPaneB();
  copy().dropMarks();
  endBusy();
  values_ = {};
  afterwards_.start();
}

void ValueUpdate::finishPaneA() {
  const std::shared_ptr<const MacroCommands> before = copy().sharedCommands();
  const Macro shown = *copy().macro();
  const bool made = prepared_.changed.valid() && prepared_.values == values_.values.size();
  const Outcome done = copy().apply(shown, made ? prepared_.changed.get() : apply(shown, values_),
                                    {updateStepName(updated_)}, marks_);
  if (!done) {
    tellNotDone(done.failure());
    return;
  }
  const MacroCommands& after = copy().commands();
  int changes = 0;
  for (std::size_t i = 0; i < after.size(); ++i)
    if (!(after[i] == (*before)[i])) ++changes;
  emit said({Grade::kDone,
             tr("%n commands updated", nullptr, updated_) + QStringLiteral("; ") +
                 tr("%n of them changed", nullptr, changes),
             placeInWindow(*room().state)});
}

void ValueUpdate::tellNotDone(const Failure& failure) {
  emit said({Grade::kFailure, tr("NOT updated: %1").arg(failureText(failure)), placeInWindow(*room().state)});
}

// The macro from before the first value is written over what the values have made of the file: kept exactly
// so.
void ValueUpdate::finishPaneB() {
  const Outcome done = copy().rewrite({updateStepName(updated_)});
  if (!done) {
    tellNotDone(done.failure());
    return;
  }
  emit said({Grade::kWarning,
             tr("%n values came; pane B shows the state before the update; use pane A, or "
                "\"Capture...\" in the "
                "menu \"Macro\"",
                nullptr, updated_),
             placeInWindow(*room().state)});
}

void ValueUpdate::dropQuestions() {
  questions_.cancel();
  commandsByFid_.clear();
  values_ = {};
  prepared_ = {};
  quiet_.stop();
}

}  // namespace tessaly
