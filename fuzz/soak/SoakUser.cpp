#include "fuzz/soak/SoakUser.h"

#include <QLineEdit>

#include "app/PaneDescriptor.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr int kMacroNumbersUsed = 40;  // few, so that macros meet
constexpr const char* kNames[] = {"Opener",         "Titles", "Break",        "Goal",
                                  "News & Weather", "Replay", "Credits <end>"};

}  // namespace

std::string SoakUser::act() {
  struct Choice {
    int weight;
    std::string (SoakUser::*operation)();
  };
  static constexpr Choice kChoices[] = {
      {30, &SoakUser::chooseRow},   {2, &SoakUser::clickBeside},   {6, &SoakUser::pressArrow},
      {4, &SoakUser::chooseSource}, {9, &SoakUser::pressConnect},  {3, &SoakUser::typeAddress},
      {3, &SoakUser::create},       {6, &SoakUser::copy},          {3, &SoakUser::rename},
      {3, &SoakUser::remove},       {7, &SoakUser::deleteCommand}, {2, &SoakUser::newCommand},
      {2, &SoakUser::newMany},      {2, &SoakUser::modify},        {2, &SoakUser::openAndCancel},
      {5, &SoakUser::update},       {8, &SoakUser::save},          {4, &SoakUser::discard},
      {2, &SoakUser::option},       {1, &SoakUser::closeWindow}};
  constexpr int kAll = 104;
  for (int attempt = 0; attempt < 1000; ++attempt) {
    pane_ = perhaps() ? Pane::kA : Pane::kB;
    int place = number(kAll);
    for (const Choice& choice : kChoices) {
      place -= choice.weight;
      if (place >= 0) continue;
      if (std::string done = (this->*choice.operation)(); !done.empty()) return text(done);
      break;
    }
  }
  throw std::runtime_error("nothing can be done any more");
}

int SoakUser::someNumber() { return perhaps() ? number(kMacroNumbersUsed) : number(10); }

std::string SoakUser::someName() { return kNames[static_cast<std::size_t>(number(std::size(kNames)))]; }

// What the lists of a pane mean when a row of them is chosen; -1 when the selection was cleared.
void SoakUser::chosen(int list, int row) {
  const auto at = static_cast<std::size_t>(std::max(0, row));
  if (list == ids().applications) model_.chooseApplication(pane_, row);
  if (list == ids().controlPanels) model_.chooseControlPanel(pane_, row);
  if (list == ids().workplaces) model_.chooseWorkplace(pane_, row < 0 ? 0 : here().workplaces[at]);
  if (list == ids().macros) model_.openMacro(pane_, row < 0 ? -1 : here().macros[at].first);
  if (list == ids().commands) here().command = row;
}

std::string SoakUser::chooseRow() {
  const int lists[] = {ids().applications, ids().controlPanels, ids().workplaces, ids().workplaces,
                       ids().macros,       ids().macros,        ids().macros,     ids().commands,
                       ids().commands,     ids().commands};
  const int list = lists[number(static_cast<int>(std::size(lists)))];
  const int rows = desk_.driver->list(list).rows().rowCount();
  if (!usable(list) || rows == 0) return {};
  const int row = number(rows);
  const std::string rowText = desk_.driver->texts(list)[static_cast<std::size_t>(row)];
  desk_.driver->clickRow(list, row);
  chosen(list, row);
  return "clicks " + rowText;
}

std::string SoakUser::clickBeside() {
  const int list = perhaps() ? ids().macros : ids().commands;
  RowsView& box = desk_.driver->list(list);
  const int last = box.rows().rowCount() - 1;
  if (!usable(list) || last < 0) return {};
  const QRect place = box.visualRect(box.rows().index(last));
  const QPoint beside(10, place.bottom() + 20);
  if (!box.viewport()->rect().contains(beside)) return {};
  const bool changes = list == ids().commands && box.selectedRow() >= 0;
  QTest::mouseClick(box.viewport(), Qt::LeftButton, Qt::NoModifier, beside);
  if (changes) chosen(list, -1);
  return "clicks beside the rows";
}

std::string SoakUser::pressArrow() {
  const int lists[] = {ids().workplaces, ids().macros, ids().commands};
  const int list = lists[number(3)];
  RowsView& box = desk_.driver->list(list);
  const int row = box.selectedRow(), last = box.rows().rowCount() - 1;
  if (!usable(list) || row < 0) return {};
  struct Key {
    Qt::Key key;
    int row;
  };
  const Key keys[] = {{Qt::Key_Down, std::min(row + 1, last)},
                      {Qt::Key_Up, std::max(row - 1, 0)},
                      {Qt::Key_Home, 0},
                      {Qt::Key_End, last},
                      {Qt::Key_Return, row},
                      {Qt::Key_Escape, row}};
  const Key pressed = keys[number(static_cast<int>(std::size(keys)))];
  box.setFocus();
  QTest::keyClick(&box, pressed.key);
  if (pressed.row != row || pressed.key == Qt::Key_Return) chosen(list, pressed.row);
  return "presses key " + std::to_string(pressed.key - Qt::Key_Escape) + " in a list at row " +
         std::to_string(row);
}

std::string SoakUser::chooseSource() {
  if (!usable(ids().harddisk)) return {};
  const bool panel = number(3) != 0;
  desk_.press(panel ? ids().panel : ids().harddisk);
  // Beside a pane on a lost line it connects.
  WindowDriver::waitFor([this] { return desk_.caption(ids().connectButton) != "connecting"; },
                        "the end of the attempt");
  if (panel)
    model_.choosePanel(pane_);
  else
    model_.chooseHarddisk(pane_);
  return panel ? "chooses the panel" : "chooses the harddisk";
}

std::string SoakUser::pressConnect() {
  if (!usable(ids().connectButton)) return {};
  const std::string caption = desk_.caption(ids().connectButton);
  desk_.press(ids().connectButton);
  WindowDriver::waitFor([this] { return desk_.caption(ids().connectButton) != "connecting"; },
                        "the end of the attempt");
  if (caption == "disconnect")
    model_.leave(pane_);
  else
    model_.connect(pane_);
  return caption + "s";
}

std::string SoakUser::typeAddress() {
  const auto& edit = desk_.driver->control<QLineEdit>(ids().address);
  if (!here().panel || !usable(ids().address) || edit.isReadOnly()) return {};
  const std::string addresses[] = {desk_.first.addressText(), desk_.first.addressText(),
                                   desk_.second.addressText(), "127.0.0.3:9"};
  here().address = addresses[number(4)];
  desk_.typeAddress(pane_, here().address);
  return "types the address " + here().address;
}

std::string SoakUser::option() {
  const int options[] = {ids().showDestination, ids().showRaw, ids().useTabs};
  const int option = options[number(3)];
  if (!usable(option)) return {};
  desk_.press(option);
  return "switches an option";
}

std::string SoakUser::closeWindow() {
  const bool edited = here().edited || there().edited;
  if (edited && perhaps()) {
    desk_.dialogs.boxButtons = {QStringLiteral("Cancel")};
    const bool closed = desk_.window->close();
    desk_.dialogs.boxButtons = {QStringLiteral("OK")};
    if (closed) throw std::runtime_error("the window closed in spite of Cancel");
    return "cancels closing";
  }
  desk_.dialogs.boxButtons = {QStringLiteral("Discard")};
  desk_.window->close();
  // What still runs is given up first, or waited for.
  WindowDriver::waitFor([this] { return !desk_.window->isVisible(); }, "the window to close");
  desk_.dialogs.boxButtons = {QStringLiteral("OK")};
  desk_.openWindow();
  model_.closeAndOpen();
  return "closes the window and starts again";
}

std::string SoakUser::discard() {
  if (!usable(ids().discardChanges)) return {};
  desk_.press(ids().discardChanges);
  model_.discard(pane_);
  return "discards";
}

std::string SoakUser::save() {
  if (!usable(ids().saveChanges)) return {};
  desk_.press(ids().saveChanges);
  if (!here().target) return "saves in vain";
  const ModelTarget target = *here().target;
  if (target.panel)
    static_cast<void>(model_.send(target.place, target.workplace, target.number, here().copy));
  else
    model_.disk[target.place][target.number] = here().copy;
  here().edited = false;
  model_.catchUp(pane_);
  return "saves";
}

}  // namespace tessaly
