#include "app/CommandEditing.h"

#include <algorithm>

#include "classic/ClassicGroups.h"
#include "editors/ClassicEditorDialog.h"
#include "editors/CreateCommandDialog.h"
#include "editors/ModifyCommandDialog.h"
#include "editors/MultipleCommandsDialog.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr const char* kMultipleNeedsPanel =
    "Creating Multiple Commands is only possible when you are connected to a Corvane XL Control Panel \n";
constexpr const char* kNotInDecodingList =
    "This command is not in the command decoding list.\nModification is not possible - sorry...";
constexpr const char* kMenuCommandNotValid = "This Menu Command is not valid";
constexpr std::string_view kMainframePrefix = "QMF";
constexpr int kFirstWorkplace = 1;

int mainframeOf(const MacroCommand& command) {
  const std::string_view destination = command.destination();
  return destination.rfind(kMainframePrefix, 0) == 0 ? parseInt(destination.substr(kMainframePrefix.size()))
                                                     : 1;
}

bool inGroupTable(const ClassicCommand& command) {
  const ClassicGroup* group = classicGroup(command.cd());
  return group != nullptr && !subgroupName(*group, command.co()).empty();
}

}  // namespace

CommandEditing::CommandEditing(std::array<PaneAccess, kPanes.size()> panes, EditorContext context,
                               QWidget* window)
    : panes_(panes), context_(std::move(context)), window_(window) {}

bool CommandEditing::editable(Pane pane) const {
  return state(pane).hasMacro() && state(pane).copy.content() == WorkingCopy::Content::kMacro;
}

int CommandEditing::workplace(Pane pane) const {
  return std::max(kFirstWorkplace, browser(pane).workplace());
}

void CommandEditing::finish(Pane pane, bool done, const QString& what, int selected) {
  state(pane).updatedMarks.clear();  // they count lines that have moved
  browser(pane).showCommands(selected);
  emit changed();
  emit said(done ? what : tr("the command could not be written into the working copy"));
}

void CommandEditing::newCorvane(Pane pane) {
  if (!editable(pane)) return;
  const int row = position(pane);
  CreateCommandDialog dialog(context_, workplace(pane), row >= 0, window_);
  if (dialog.exec() != QDialog::Accepted) return;
  finish(pane, state(pane).copy.insert(dialog.draft(), row, dialog.workplace(), dialog.mode()),
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
      context_, workplace(pane), position(pane),
      [&copy](const std::vector<CommandDraft>& drafts, int workplace, int row, InsertMode mode) {
        int in = 0;
        for (const CommandDraft& draft : drafts) {
          const bool block = in > 0 && mode != InsertMode::kAppend;
          const int at = in + (mode == InsertMode::kAtPosition ? row : 0);
          if (!copy.insert(draft, at, workplace, block ? InsertMode::kAtPosition : mode)) break;
          ++in;
        }
        return in;
      },
      window_);
  dialog.exec();
  if (dialog.insertedCount() == 0) return;
  finish(pane, true, tr("%n commands inserted", nullptr, dialog.insertedCount()));
}

void CommandEditing::newClassic(Pane pane) {
  if (!editable(pane)) return;
  const int row = position(pane);
  ClassicEditorDialog dialog(context_, row >= 0, 1, window_);
  dialog.exec();
  takeClassic(pane, row, dialog, false);
}

void CommandEditing::takeClassic(Pane pane, int row, const ClassicEditorDialog& dialog, bool inPlace) {
  using Outcome = ClassicEditorDialog::Outcome;
  if (dialog.outcome() == Outcome::kCancel) return;
  WorkingCopy& copy = state(pane).copy;
  if (inPlace && dialog.outcome() == Outcome::kAtSelected)
    finish(pane, copy.replaceClassic(row, dialog.command(), dialog.destination()),
           tr("command %1 modified").arg(row + 1), row);
  else
    finish(pane,
           copy.insertClassic(dialog.command(), row, static_cast<InsertMode>(dialog.outcome()),
                              dialog.destination()),
           tr("one command inserted"));
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
  WorkingCopy& copy = state(pane).copy;
  ModifyCommandDialog dialog(context_, copy.commands()[static_cast<std::size_t>(row)], window_);
  if (dialog.exec() != QDialog::Accepted) return;
  finish(pane, copy.replace(row, dialog.draft(), dialog.workplace()), tr("command %1 modified").arg(row + 1),
         row);
}

void CommandEditing::modifyClassic(Pane pane, int row) {
  const MacroCommand& stored = state(pane).copy.commands()[static_cast<std::size_t>(row)];
  const int mainframe = mainframeOf(stored);
  ClassicCommand command;
  if (stored.parameters.empty() || !command.decodeText(stored.parameters.front().value)) {
    // An empty line is filled in its place.
    ClassicEditorDialog dialog(context_, true, mainframe, window_);
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
  ClassicEditorDialog dialog(context_, command, mainframe, window_);
  dialog.exec();
  takeClassic(pane, row, dialog, true);
}

}  // namespace tessaly
