#include "app/CommandRuns.h"

#include <numeric>

#include <QClipboard>
#include <QGuiApplication>

#include "app/CommandClipboard.h"
#include "app/FailureText.h"
#include "app/PlaceText.h"
#include "app/StepNames.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

std::vector<int> run(int first, std::size_t count) {
  std::vector<int> numbers(count);
  std::iota(numbers.begin(), numbers.end(), first);
  return numbers;
}

int size(const std::vector<int>& numbers) { return static_cast<int>(numbers.size()); }

}  // namespace

CommandRuns::CommandRuns(const PaneAccesses& panes) : panes_(panes) {
  for (const Pane pane : kPanes) {
    MacroPane& view = state(pane).view;
    connect(&view, &MacroPane::deleteCommandPressed, this, [this, pane] { remove(pane); });
    connect(&view, &MacroPane::commandActChosen, this,
            [this, pane](CommandAct chosen) { act(pane, chosen); });
    connect(&list(pane), &CommandList::dropped, this,
            [this, pane](const CommandDrop& dropped) { drop(pane, dropped); });
    list(pane).setCarrier([this, pane] { return carry(pane); });
    list(pane).setTaker([this, pane](const QMimeData& carried) { return takes(pane, carried); });
  }
}

void CommandRuns::act(Pane pane, CommandAct act) {
  switch (act) {
    case CommandAct::kCut:
      return cut(pane);
    case CommandAct::kCopy:
      return copy(pane);
    case CommandAct::kPaste:
      return paste(pane);
    case CommandAct::kDuplicate:
      return duplicate(pane);
    case CommandAct::kMoveUp:
      return moveBy(pane, -1);
    case CommandAct::kMoveDown:
      return moveBy(pane, 1);
    case CommandAct::kSelectAll:
      list(pane).setFocus();
      return list(pane).selectAll();
  }
}

std::vector<int> CommandRuns::selected(Pane pane) const {
  return state(pane).copy.commandCount() > 0 ? list(pane).selectedRows() : std::vector<int>();
}

Expected<Macro> CommandRuns::source(Pane pane) const {
  const WorkingCopy& copy = state(pane).copy;
  if (copy.content() == WorkingCopy::Content::kKeyFile) return keyFileMacro(copy.keyFile());
  return copy.macro() ? Expected<Macro>(*copy.macro())
                      : Failure{Failure::Kind::kNoMacro, "there is no macro"};
}

Expected<CommandFragment> CommandRuns::fragment(Pane pane, std::vector<int> numbers) const {
  const auto macro = source(pane);
  return macro ? CommandFragment::of(*macro, std::move(numbers)) : Expected<CommandFragment>(macro.failure());
}

// The text of what no fragment holds goes on from the name of what was read.
QString CommandRuns::reasonOf(Pane pane, const Failure& failure) const {
  return failure.kind == Failure::Kind::kChanged && state(pane).copy.lent()
             ? tr("a transfer is using the macro")
             : failureText(failure);
}

void CommandRuns::tell(Pane pane, const QString& done) {
  emit said({Grade::kDone, done, placeInWindow(state(pane))});
}

void CommandRuns::refuse(Pane pane, const QString& refused, const QString& reason) {
  emit said({Grade::kFailure, QStringLiteral("%1 (%2)").arg(refused, reason), placeInWindow(state(pane))});
}

bool CommandRuns::take(Pane pane, const std::vector<int>& numbers, const std::string& step,
                       const QString& refused) {
  // The line at which they stood stays the selected one.
  const Outcome done = state(pane).copy.apply(RemoveCommands{numbers}, {step, {numbers.front()}});
  if (!done) refuse(pane, refused, reasonOf(pane, done.failure()));
  return done.done();
}

void CommandRuns::remove(Pane pane) {
  const std::vector<int> numbers = selected(pane);
  if (numbers.empty() || !state(pane).editable()) return;
  const QString number = QString::number(numbers.front() + 1);
  const bool one = numbers.size() == 1;
  if (take(pane, numbers, {},
           one ? tr("command %1 NOT deleted").arg(number)
               : tr("%n commands NOT deleted", nullptr, size(numbers))))
    tell(pane,
         one ? tr("command %1 deleted").arg(number) : tr("%n commands deleted", nullptr, size(numbers)));
}

bool CommandRuns::insert(Pane pane, const Expected<CommandFragment>& commands, int before,
                         const std::string& step, const QString& refused) {
  WorkingCopy& copy = state(pane).copy;
  if (!commands) {
    refuse(pane, refused, reasonOf(pane, commands.failure()));
    return false;
  }
  const auto mode =
      before >= 0 && before < copy.commandCount() ? InsertMode::kAtPosition : InsertMode::kAppend;
  const std::vector<int> numbers = run(insertedAt(*copy.macro(), before, mode), commands->size());
  const Outcome done = copy.apply(InsertFragment{*commands, before, mode}, {step, numbers});
  if (done)
    list(pane).bringIntoSight(numbers);
  else
    refuse(pane, refused, reasonOf(pane, done.failure()));
  return done.done();
}

void CommandRuns::copy(Pane pane) {
  const std::vector<int> numbers = selected(pane);
  if (numbers.empty()) return;
  const auto commands = fragment(pane, numbers);
  if (!commands) {
    refuse(pane, tr("NOT copied"), reasonOf(pane, commands.failure()));
    return;
  }
  QGuiApplication::clipboard()->setMimeData(mimeData(*commands).release());
  tell(pane, tr("%n commands copied", nullptr, size(numbers)));
}

void CommandRuns::cut(Pane pane) {
  const std::vector<int> numbers = selected(pane);
  if (numbers.empty() || !state(pane).editable()) return;
  const auto commands = fragment(pane, numbers);
  if (!commands) {
    refuse(pane, tr("NOT cut"), reasonOf(pane, commands.failure()));
    return;
  }
  if (!take(pane, numbers, cutStepName(size(numbers)), tr("NOT cut"))) return;
  QGuiApplication::clipboard()->setMimeData(mimeData(*commands).release());
  tell(pane, tr("%n commands cut", nullptr, size(numbers)));
}

void CommandRuns::paste(Pane pane) {
  if (!state(pane).editable()) return;
  const auto commands = commandsIn(QGuiApplication::clipboard()->mimeData());
  const int count = commands ? static_cast<int>(commands->size()) : 0;
  const std::vector<int> numbers = selected(pane);
  if (insert(pane, commands, numbers.empty() ? -1 : numbers.front(), pasteStepName(count), tr("NOT pasted")))
    tell(pane, tr("%n commands pasted", nullptr, count));
}

void CommandRuns::duplicate(Pane pane) {
  const std::vector<int> numbers = selected(pane);
  if (numbers.empty() || !state(pane).editable()) return;
  if (insert(pane, fragment(pane, numbers), numbers.back() + 1, duplicateStepName(size(numbers)),
             tr("NOT duplicated")))
    tell(pane, tr("%n commands duplicated", nullptr, size(numbers)));
}

// Commands that do not follow one another gather first.
void CommandRuns::moveBy(Pane pane, int step) {
  const std::vector<int> numbers = selected(pane);
  if (numbers.empty() || !state(pane).editable()) return;
  const bool gathered = numbers.back() - numbers.front() + 1 == size(numbers);
  if (step < 0)
    move(pane, numbers, std::max(0, gathered ? numbers.front() - 1 : numbers.front()));
  else
    move(pane, numbers, std::min(state(pane).copy.commandCount(), numbers.back() + (gathered ? 2 : 1)));
}

void CommandRuns::move(Pane pane, const std::vector<int>& numbers, int before) {
  const auto ahead = std::lower_bound(numbers.begin(), numbers.end(), before) - numbers.begin();
  const std::vector<int> places = run(before - static_cast<int>(ahead), numbers.size());
  if (places == numbers) return;  // where they are
  const Outcome done = state(pane).copy.apply(MoveCommands{numbers, before}, {{}, places});
  if (!done) {
    refuse(pane, tr("NOT moved"), reasonOf(pane, done.failure()));
    return;
  }
  list(pane).bringIntoSight(places);
  const QString first = QString::number(places.front() + 1);
  tell(pane,
       places.size() == 1
           ? tr("command %1 moved; it is command %2 now").arg(QString::number(numbers.front() + 1), first)
           : tr("%n commands moved; they are commands %1 to %2 now", nullptr, size(places))
                 .arg(first, QString::number(places.back() + 1)));
}

std::unique_ptr<QMimeData> CommandRuns::carry(Pane pane) {
  const std::vector<int> numbers = selected(pane);
  if (numbers.empty()) return nullptr;
  const auto macro = source(pane);
  if (!macro) return nullptr;
  carried_ = {pane, state(pane).copy.revision(), numbers};
  return mimeData(*macro, numbers);
}

bool CommandRuns::takes(Pane pane, const QMimeData& data) const {
  return holdsCommands(data) && changeable(pane);
}

bool CommandRuns::changeable(Pane pane) const {
  return state(pane).editable() && state(pane).copy.macro()->kept().done();
}

void CommandRuns::drop(Pane pane, const CommandDrop& drop) {
  if (!takes(pane, drop.data)) return;
  const int before = std::min(drop.before, state(pane).copy.commandCount());
  for (const Pane from : kPanes)
    if (drop.moves && &list(from) == drop.from)
      return dropFrom(from, pane, {drop.data, before, drop.from, true});
  const auto commands = commandsIn(&drop.data);
  const int count = commands ? static_cast<int>(commands->size()) : 0;
  if (insert(pane, commands, before, {}, tr("NOT copied")))
    tell(pane, tr("%n commands copied", nullptr, count));
}

// What was under the hand may have changed on the way: the panel may have deleted it.
void CommandRuns::dropFrom(Pane from, Pane pane, const CommandDrop& drop) {
  const QString refused = tr("NOT moved");
  if (carried_.pane != from || carried_.revision != state(from).copy.revision()) {
    refuse(pane, refused, tr("the macro was changed meanwhile"));
  } else if (from == pane) {
    move(pane, carried_.numbers, drop.before);
  } else if (!changeable(from)) {
    refuse(pane, refused, tr("the commands cannot be taken away where they are"));
  } else {
    const Carried carried = carried_;
    if (!insert(pane, commandsIn(&drop.data), drop.before, {}, refused)) return;
    if (take(from, carried.numbers, {}, tr("copied, but NOT taken away where they were")))
      tell(pane, tr("%n commands moved to the other pane", nullptr, size(carried.numbers)));
  }
}

}  // namespace tessaly
