#include "app/CommandEditing.h"

#include <algorithm>

#include "app/Browser.h"
#include "app/FailureText.h"
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
    : panes_(panes), context_(std::move(context)), window_(window) {}

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
    if (!editable(pane) || copy.opening() != opening || fidAt(row) != fid)
      return tr("The macro that this command was built for is no longer open.\nThe dialog stays as it is.")
          .toStdString();
    return {};
  };
  return context;
}

bool CommandEditing::editable(Pane pane) const {
  return state(pane).hasMacro() && state(pane).copy.content() == WorkingCopy::Content::kMacro;
}

int CommandEditing::workplace(Pane pane) const {
  return std::max(kFirstWorkplace, browser(pane).workplace());
}

void CommandEditing::apply(Pane pane, const MacroEdit& edit, const QString& what, int selected) {
  const Outcome done = state(pane).copy.apply(edit, selected);
  emit said(done ? what : tr("NOT changed: %1").arg(failureText(done.failure())));
}

void CommandEditing::newCorvane(Pane pane) {
  if (!editable(pane)) return;
  const int row = position(pane);
  CreateCommandDialog dialog(contextFor(pane), workplace(pane), row >= 0, window_);
  if (dialog.exec() != QDialog::Accepted) return;
  apply(pane, InsertCommands{{dialog.draft()}, dialog.workplace(), row, dialog.mode()},
        tr("one command inserted"));
}

void CommandEditing::newMultiple(Pane pane) {
  if (!context_.connected()) {
    context_.site.messages.show(kMultipleNeedsPanel, MessageIcon::kExclamation);
    return;
  }
  if (!editable(pane)) return;
  WorkingCopy& copy = state(pane).copy;
  MultipleCommandsDialog dialog(
      contextFor(pane), workplace(pane), position(pane),
      [&copy](const std::vector<CommandDraft>& drafts, int workplace, int row, InsertMode mode) {
        const bool done = copy.apply(InsertCommands{drafts, workplace, row, mode}).done();
        return done ? static_cast<int>(drafts.size()) : 0;
      },
      window_);
  dialog.exec();
  if (dialog.insertedCount() == 0) return;
  emit said(tr("%n commands inserted", nullptr, dialog.insertedCount()));
}

void CommandEditing::newClassic(Pane pane) {
  if (!editable(pane)) return;
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
    apply(pane, ReplaceCommand{row, draft, kClassicWorkplace}, tr("command %1 modified").arg(row + 1), row);
  else
    apply(pane, InsertCommands{{draft}, kClassicWorkplace, row, static_cast<InsertMode>(dialog.outcome())},
          dialog.command().readsBack() ? tr("one command inserted")
                                       : tr("one command inserted; it cannot be read back from the macro"));
}

void CommandEditing::modify(Pane pane) {
  const int row = position(pane);
  if (!editable(pane) || row < 0 || row >= state(pane).copy.commandCount()) return;
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
        row);
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
