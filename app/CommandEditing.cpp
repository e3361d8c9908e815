#include "app/CommandEditing.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "app/Browser.h"
#include "app/FailureText.h"
#include "app/PlaceText.h"
#include "app/StepNames.h"
#include "classic/ClassicGroups.h"
#include "editors/ClassicEditorDialog.h"
#include "editors/CreateCommandDialog.h"
#include "editors/ModifyCommandDialog.h"
#include "editors/MultipleCommandsDialog.h"

namespace tessaly {

namespace {

constexpr const char* kMultipleNeedsPanel =
    "Creating Multiple Commands is only possible when you are connected to a Corvane XL Control Panel \n";
constexpr const char* kNotInDecodingList =
    "This command is not in the command decoding list.\nModification is not possible - sorry...";
constexpr const char* kMenuCommandNotValid = "This Menu Command is not valid";
constexpr int kFirstWorkplace = 1;

bool inGroupTable(const ClassicCommand& command) {
  const ClassicGroup* group = classicGroup(command.cd());
  return group != nullptr && !subgroupName(*group, command.co()).empty();
}

}  // namespace

CommandEditing::CommandEditing(const PaneAccesses& panes, EditorContext context, QWidget* window)
    : panes_(panes), context_(std::move(context)), window_(window) {
  context_.words = std::make_shared<std::optional<FunctionSearch>>();
}

// Behind an open dialog the panel may take the macro away, and a value update may end. What its buttons had
// promised is looked at again.
EditorContext CommandEditing::contextFor(Pane pane, std::function<QString()> take, int row) const {
  EditorContext context = context_;
  const WorkingCopy& copy = state(pane).copy;
  const auto fidAt = [&copy](int at) {
    return at >= 0 && at < copy.commandCount() ? copy.commands()[static_cast<std::size_t>(at)].fid
                                               : std::string();
  };
  context.take = [this, pane, row, &copy, opening = copy.opening(), fid = fidAt(row), fidAt,
                  take = std::move(take)]() -> std::string {
    const bool there = state(pane).editable() && copy.opening() == opening && fidAt(row) == fid;
    const QString reason =
        there ? take() : tr("The macro that this command was built for is no longer open.");
    return reason.isEmpty() ? std::string() : tr("%1\nThe dialog stays as it is.").arg(reason).toStdString();
  };
  return context;
}

int CommandEditing::workplace(Pane pane) const {
  return std::max(kFirstWorkplace, browser(pane).workplace());
}

QString CommandEditing::tell(Pane pane, const Outcome& done, const QString& what) {
  QString reason = done ? QString() : tr("NOT changed: %1").arg(failureText(done.failure()));
  emit said({done ? Grade::kDone : Grade::kFailure, done ? what : reason, placeInWindow(state(pane))});
  return reason;
}

QString CommandEditing::insert(Pane pane, const std::vector<InsertCommands>& runs, bool selects,
                               const QString& what) {
  WorkingCopy& copy = state(pane).copy;
  const Macro before = *copy.macro();
  Expected<Macro> after = before;
  std::size_t count = 0;
  for (const InsertCommands& run : runs) {
    count += run.drafts.size();
    if (after) after = tessaly::apply(*after, run);
  }
  std::vector<int> numbers(count);
  std::iota(numbers.begin(), numbers.end(), insertedAt(before, runs.front().position, runs.front().mode));
  const Outcome done =
      copy.apply(before, std::move(after),
                 {insertStepName(static_cast<int>(count)), selects ? numbers : std::vector<int>()});
  if (done) state(pane).view.commands().bringIntoSight(numbers);
  return tell(pane, done, what);
}

// A command with which the dialog closes leaves nothing selected: "update data" then asks for all of them.
void CommandEditing::newCorvane(Pane pane) {
  if (!state(pane).editable()) return;
  const int row = position(pane);
  // Those that are inserted by the same button follow one another.
  std::optional<InsertMode> last;
  int next = row;  // where the next one of the same button goes, if that is not the end
  int selected = row;
  std::optional<CreateCommandDialog> dialog;
  const auto take = [&] {
    const InsertMode mode = dialog->mode();
    if (mode != last && mode != InsertMode::kAppend) next = mode == InsertMode::kAtStart ? 0 : selected;
    const int at = insertedAt(*state(pane).copy.macro(), next,
                              mode == InsertMode::kAppend ? mode : InsertMode::kAtPosition);
    QString reason = insert(pane, {{{dialog->draft()}, dialog->workplace(), at, InsertMode::kAtPosition}},
                            dialog->stays(), tr("one command inserted"));
    if (!reason.isEmpty()) return reason;
    last = mode;
    next = at + 1;
    // Without one, what was inserted is the selected one from now on.
    if (selected < 0)
      selected = at;
    else if (at <= selected)
      ++selected;
    return reason;
  };
  dialog.emplace(contextFor(pane, take), workplace(pane), row >= 0, window_);
  dialog->exec();
}

void CommandEditing::newMultiple(Pane pane) {
  if (!context_.connected()) {
    context_.site.messages.show(kMultipleNeedsPanel, MessageIcon::kExclamation);
    return;
  }
  if (!state(pane).editable()) return;
  std::optional<MultipleCommandsDialog> dialog;
  const auto take = [&] {
    int count = 0;
    for (const InsertCommands& run : dialog->runs()) count += static_cast<int>(run.drafts.size());
    return insert(pane, dialog->runs(), true, tr("%n commands inserted", nullptr, count));
  };
  dialog.emplace(contextFor(pane, take), workplace(pane), position(pane), window_);
  dialog->exec();
}

void CommandEditing::newClassic(Pane pane) {
  if (!state(pane).editable()) return;
  const int row = position(pane);
  std::optional<ClassicEditorDialog> dialog;
  dialog.emplace(contextFor(pane, [&] { return takeClassic(pane, row, *dialog, false); }), row >= 0,
                 Destination(), window_);
  dialog->exec();
}

QString CommandEditing::takeClassic(Pane pane, int row, const ClassicEditorDialog& dialog, bool inPlace) {
  const bool modifies = inPlace && dialog.outcome() == ClassicEditorDialog::Outcome::kAtSelected;
  if (modifies && !dialog.changed()) return {};
  const CommandDraft draft = classicDraft(dialog.command(), dialog.destination());
  if (modifies) return replace(pane, row, draft, kClassicWorkplace);
  return insert(pane, {{{draft}, kClassicWorkplace, row, static_cast<InsertMode>(dialog.outcome())}}, true,
                dialog.command().readsBack()
                    ? tr("one command inserted")
                    : tr("one command inserted; it cannot be read back from the macro"));
}

QString CommandEditing::replace(Pane pane, int row, const CommandDraft& draft, int workplace) {
  return tell(pane, state(pane).copy.apply(ReplaceCommand{row, draft, workplace}, {{}, {row}}),
              tr("command %1 modified").arg(row + 1));
}

void CommandEditing::modify(Pane pane) {
  const int row = position(pane);
  if (!state(pane).editable() || row < 0 || row >= state(pane).copy.commandCount()) return;
  if (state(pane).copy.commands()[static_cast<std::size_t>(row)].classic())
    modifyClassic(pane, row);
  else
    modifyPanelStyle(pane, row);
}

void CommandEditing::modifyPanelStyle(Pane pane, int row) {
  // A copy: an update may end behind the dialog.
  const MacroCommand command = state(pane).copy.commands()[static_cast<std::size_t>(row)];
  std::optional<ModifyCommandDialog> dialog;
  const auto take = [&] { return replace(pane, row, dialog->draft(), dialog->workplace()); };
  dialog.emplace(contextFor(pane, take, row), command, window_);
  dialog->exec();
}

void CommandEditing::modifyClassic(Pane pane, int row) {
  const MacroCommand stored = state(pane).copy.commands()[static_cast<std::size_t>(row)];
  const auto mainframe = Destination::mainframeOf(stored.destination());
  std::optional<ClassicEditorDialog> dialog;
  const EditorContext context = contextFor(
      pane, [&] { return takeClassic(pane, row, *dialog, true); }, row);
  ClassicCommand command;
  if (stored.parameters.empty() || !command.decodeText(stored.parameters.front().value)) {
    // An empty line is filled in its place.
    dialog.emplace(context, true, mainframe, window_);
    dialog->exec();
    return;
  }
  if (!inGroupTable(command)) {
    context_.site.messages.show(kMenuCommandNotValid, MessageIcon::kExclamation);
    return;
  }
  const auto list = context_.decodingLists.list(command.cd(), command.co());
  if (!list || !list->find(command)) {
    context_.site.messages.show(kNotInDecodingList, MessageIcon::kExclamation);
    return;
  }
  dialog.emplace(context, command, mainframe, window_);
  dialog->exec();
}

}  // namespace tessaly
