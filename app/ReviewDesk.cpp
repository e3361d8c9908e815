#include "app/ReviewDesk.h"

#include "app/Captures.h"
#include "app/Checking.h"
#include "app/Comparisons.h"
#include "app/HistoryOperations.h"
#include "app/PlaceText.h"
#include "app/Rehearsals.h"
#include "app/Replacements.h"
#include "app/ReviewPlaces.h"
#include "app/Searching.h"
#include "app/Sheets.h"
#include "app/Shelves.h"
#include "app/Snapshots.h"
#include "app/Workplaces.h"

namespace tessaly {

ReviewDesk::ReviewDesk(const Surroundings& around, QWidget* window) : panes_(around.panes), window_(window) {
  const WindowContext& context = around.context;
  const Shelves shelves(context.site.root, context.client, context.panelMacros);
  places_ = std::make_unique<ReviewPlaces>(panes_, context.site, around.connection, around.open, around.loose,
                                           around.gate, window);
  if (!context.demo)
    places_->setPanelReader([&context](const HostAddress& address, int workplace) {
      return readingShelf(context.panelMacros, context.client, context.history, address, workplace);
    });
  comparisons_ = std::make_unique<Comparisons>(panes_, context.site, around.transfers, around.gate,
                                               around.lines, window);
  captures_ = std::make_unique<Captures>(panes_, around.connection, context.client, around.lines, window);
  checking_ =
      std::make_unique<Checking>(panes_, context.site, around.lines, around.frameRate, *places_, window);
  snapshots_ =
      std::make_unique<Snapshots>(panes_, context.site, context.history, around.connection, around.transfer,
                                  around.open, around.undo, *checking_, context.client, window);
  searching_ = std::make_unique<Searching>(context.site, around.lines, *places_, window);
  sheets_ = std::make_unique<Sheets>(context.site.root, *checking_, *places_, window);
  replacements_ = std::make_unique<Replacements>(
      Replacements::Surroundings{context.site.root, *checking_, around.connection, *places_, around.open,
                                 around.undo, around.gate},
      shelves, window);
  workplaces_ = std::make_unique<Workplaces>(
      Workplaces::Surroundings{panes_, context.site, around.connection, around.transfer, around.gate,
                               around.open, around.undo, *checking_, around.lines},
      shelves, window);
  rehearsals_ = std::make_unique<Rehearsals>(panes_, context, around.connection, around.lines, window);
  connectParts(around);
}

ReviewDesk::~ReviewDesk() = default;

void ReviewDesk::connectParts(const Surroundings& around) {
  comparisons_->connectTo(around.open, around.history);
  around.open.setSendQuestion([this](const Macro& macro, const QString& name, std::optional<Pane> shownIn) {
    return checking_->maySend(macro, name, shownIn);
  });
  connect(places_.get(), &ReviewPlaces::said, this, &ReviewDesk::said);
  connect(places_.get(), &ReviewPlaces::changed, this, &ReviewDesk::changed);
  connect(captures_.get(), &Captures::said, this, &ReviewDesk::said);
  connect(snapshots_.get(), &Snapshots::said, this, &ReviewDesk::said);
  connect(checking_.get(), &Checking::said, this, &ReviewDesk::said);
  connect(checking_.get(), &Checking::findingsChanged, this, &ReviewDesk::findingsChanged);
  connect(workplaces_.get(), &Workplaces::said, this, &ReviewDesk::said);
  for (const Pane pane : kPanes)
    connect(&state(pane).view, &MacroPane::commandMenuOpens, this, [this, pane](QMenu* menu) {
      if (const MacroCommand* command = state(pane).selectedCommand())
        searching_->addWhereUsed(*menu->addMenu(tr("&Where Used")), *command);
    });
}

void ReviewDesk::run(ReviewAct act, Pane pane) {
  switch (act) {
    case ReviewAct::kRehearse:
      return rehearsals_->open(pane);
    case ReviewAct::kCapture:
      return captures_->open(pane);
    case ReviewAct::kPrint:
      return sheets_->print();
    case ReviewAct::kExport:
      return sheets_->write();
    case ReviewAct::kWhatChanged:
      return comparisons_->compareWithTarget(pane);
    case ReviewAct::kBothPanes:
      return comparisons_->comparePanes();
    case ReviewAct::kWorkplaces:
      return workplaces_->openWindow();
    case ReviewAct::kCheck:
      return checking_->open();
    case ReviewAct::kCheckPanel:
      return checking_->list(ReviewScope::Kind::kPanel);
    case ReviewAct::kSearch:
      return searching_->open();
    case ReviewAct::kWhereUsed:
      return openWhereUsed();
    case ReviewAct::kReplace:
      return replacements_->open();
    case ReviewAct::kSaveSnapshot:
      return snapshots_->save(pane);
    case ReviewAct::kOpenSnapshot:
      return snapshots_->open(pane);
    case ReviewAct::kRestoreSnapshot:
      return snapshots_->restore(pane);
    case ReviewAct::kCloseSnapshot:
      return snapshots_->close(pane);
  }
}

// The choice at the command that is selected in the pane with the keyboard.
void ReviewDesk::openWhereUsed() {
  const MacroCommand* command = state(active_).selectedCommand();
  if (command == nullptr) {
    emit said({Grade::kNote, tr("\"Where Used\" looks for what a command names: select one first"),
               placeInWindow(state(active_))});
    return;
  }
  auto* menu = new QMenu(window_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  searching_->addWhereUsed(*menu, *command);
  if (menu->isEmpty()) {
    delete menu;
    emit said({Grade::kNote, tr("the selected command names nothing that could be looked for"),
               placeInWindow(state(active_))});
    return;
  }
  menu->popup(state(active_).view.placeOfSelected());
  menu->setActiveAction(menu->actions().constFirst());
}

void ReviewDesk::addWhereUsed(QMenu& menu, const MacroCommand& command, QDialog& dialog) {
  searching_->addWhereUsed(menu, command, &dialog);
}

void ReviewDesk::begin() { checking_->begin(); }

void ReviewDesk::endUnfinished() { workplaces_->start(); }

void ReviewDesk::look() {
  workplaces_->look();
  checking_->look();
  rehearsals_->look();
  captures_->look();
}

bool ReviewDesk::mayCapture() const { return captures_->possible(active_); }

bool ReviewDesk::end() {
  const bool workplaces = workplaces_->end(), replacements = replacements_->end();
  return workplaces && replacements;
}

void ReviewDesk::setActive(Pane pane) {
  active_ = pane;
  places_->setActive(pane);
}

QString ReviewDesk::findingText() const { return checking_->selectedText(); }

}  // namespace tessaly
