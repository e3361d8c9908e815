#include "app/CommandEditing.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "app/Browser.h"
#include "app/FailureText.h"
#include "app/PlaceText.h"
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
EditorContext CommandEditing::contextFor(Pane pane, int row) const {
  EditorContext context = context_;
  const WorkingCopy& copy = state(pane).copy;
  const auto fidAt = [&copy](int at) {
    return at >= 0 && at < copy.commandCount() ? copy.commands()[static_cast<std::size_t>(at)].fid
                                               : std::string();
  };
  context.refusal = [this, pane, row, &copy, opening = copy.opening(), fid = fidAt(row),
                     fidAt]() -> std::string {
    if (!state(pane).editable() || copy.opening() != opening || fidAt(row) != fid)
      return tr("The macro that this command was built for is no longer open.\nThe dialog stays as it is.")
          .toStdString();
    return {};
  };
  return context;
}

int CommandEditing::workplace(Pane pane) const {
  return std::max(kFirstWorkplace, browser(pane).workplace());
}

void CommandEditing::apply(Pane pane, const MacroEdit& edit, const QString& what, std::vector<int> selected) {
  tell(pane, state(pane).copy.apply(edit, {{}, std::move(selected)}), what);
}

void CommandEditing::tell(Pane pane, const Outcome& done, const QString& what) {
  const QString text = done ? what : tr("NOT changed: %1").arg(failureText(done.failure()));
  emit said({done ? Grade::kDone : Grade::kFailure, text, placeInWindow(state(pane))});
}

bool CommandEditing::insert(Pane pane, const InsertCommands& commands, bool selects, const QString& what) {
  WorkingCopy& copy = state(pane).copy;
  if (!copy.macro()) return false;
  std::vector<int> numbers(commands.drafts.size());
  std::iota(numbers.begin(), numbers.end(), insertedAt(*copy.macro(), commands.position, commands.mode));
  const Outcome done = copy.apply(commands, {{}, selects ? numbers : std::vector<int>()});
  if (done) state(pane).view.commands().bringIntoSight(numbers);
  tell(pane, done, what);
  return done.done();
}

// A command of this dialog alone leaves nothing selected: "update data" then asks for all of them.
void CommandEditing::newCorvane(Pane pane) {
  if (!state(pane).editable()) return;
  const int row = position(pane);
  CreateCommandDialog dialog(contextFor(pane), workplace(pane), row >= 0, window_);
  // Those that are inserted by the same button follow one another.
  std::optional<InsertMode> last;
  int next = row;  // where the next one of the same button goes, if that is not the end
  int selected = row;
  connect(&dialog, &CreateCommandDialog::insertPressed, this, [&] {
    const InsertMode mode = dialog.mode();
    if (mode != last && mode != InsertMode::kAppend) next = mode == InsertMode::kAtStart ? 0 : selected;
    const bool atEnd = mode == InsertMode::kAppend || next >= state(pane).copy.commandCount();
    const InsertCommands one{
        {dialog.draft()}, dialog.workplace(), next, atEnd ? InsertMode::kAppend : InsertMode::kAtPosition};
    if (!insert(pane, one, true, tr("one command inserted"))) return;
    last = mode;
    if (mode == InsertMode::kAppend) return dialog.goOn();
    if (next <= selected) ++selected;
    ++next;
    dialog.goOn();
  });
  if (dialog.exec() != QDialog::Accepted) return;
  insert(pane, {{dialog.draft()}, dialog.workplace(), row, dialog.mode()}, false, tr("one command inserted"));
}

void CommandEditing::newMultiple(Pane pane) {
  if (!context_.connected()) {
    context_.site.messages.show(kMultipleNeedsPanel, MessageIcon::kExclamation);
    return;
  }
  if (!state(pane).editable()) return;
  MultipleCommandsDialog dialog(
      contextFor(pane), workplace(pane), position(pane),
      [this, pane](const std::vector<CommandDraft>& drafts, int workplace, int row, InsertMode mode) {
        const int count = static_cast<int>(drafts.size());
        const bool done =
            insert(pane, {drafts, workplace, row, mode}, true, tr("%n commands inserted", nullptr, count));
        return done ? count : 0;
      },
      window_);
  dialog.exec();
}

void CommandEditing::newClassic(Pane pane) {
  if (!state(pane).editable()) return;
  const int row = position(pane);
  ClassicEditorDialog dialog(contextFor(pane), row >= 0, Destination(), window_);
  dialog.exec();
  takeClassic(pane, row, dialog, false);
}

void CommandEditing::takeClassic(Pane pane, int row, const ClassicEditorDialog& dialog, bool inPlace) {
  using End = ClassicEditorDialog::Outcome;
  if (dialog.outcome() == End::kCancel) return;
  const bool modifies = inPlace && dialog.outcome() == End::kAtSelected;
  if (modifies && !dialog.changed()) return;
  const CommandDraft draft = classicDraft(dialog.command(), dialog.destination());
  if (modifies)
    apply(pane, ReplaceCommand{row, draft, kClassicWorkplace}, tr("command %1 modified").arg(row + 1), {row});
  else
    insert(pane, {{draft}, kClassicWorkplace, row, static_cast<InsertMode>(dialog.outcome())}, true,
           dialog.command().readsBack() ? tr("one command inserted")
                                        : tr("one command inserted; it cannot be read back from the macro"));
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
  ModifyCommandDialog dialog(contextFor(pane, row), command, window_);
  if (dialog.exec() != QDialog::Accepted) return;
  apply(pane, ReplaceCommand{row, dialog.draft(), dialog.workplace()}, tr("command %1 modified").arg(row + 1),
        {row});
}

void CommandEditing::modifyClassic(Pane pane, int row) {
  const MacroCommand stored = state(pane).copy.commands()[static_cast<std::size_t>(row)];
  const auto mainframe = Destination::mainframeOf(stored.destination());
  ClassicCommand command;
  if (stored.parameters.empty() || !command.decodeText(stored.parameters.front().value)) {
    // An empty line is filled in its place.
    ClassicEditorDialog dialog(contextFor(pane, row), true, mainframe, window_);
    dialog.exec();
    takeClassic(pane, row, dialog, true);
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
  ClassicEditorDialog dialog(contextFor(pane, row), command, mainframe, window_);
  dialog.exec();
  takeClassic(pane, row, dialog, true);
}

}  // namespace tessaly
