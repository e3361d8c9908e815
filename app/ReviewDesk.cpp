#include "app/ReviewDesk.h"

#include "app/Captures.h"
#include "app/Checking.h"
#include "app/Comparisons.h"
#include "app/HistoryOperations.h"
#include "app/MacroMenu.h"
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

ReviewDesk::ReviewDesk(const Surroundings& around, QWidget* window)
    : panes_(around.panes), history_(around.history), window_(window) {
  const WindowContext& context = around.context;
  const Shelves shelves(context.site.root, context.client, context.panelMacros);
  places_ = std::make_unique<ReviewPlaces>(panes_, context.site, around.connection, around.open, around.loose,
                                           around.gate, window);
  if (!context.demo)
    places_->setPanelReader([&context](const std::string& address, int workplace) {
      return readingShelf(context.panelMacros, context.client, context.history, address, workplace);
    });
  snapshots_ = std::make_unique<Snapshots>(panes_, context.site, context.history, around.connection,
                                           around.transfer, around.open, around.undo, context.client, window);
  comparisons_ = std::make_unique<Comparisons>(panes_, context.site, around.transfers, around.gate,
                                               around.lines, window);
  captures_ = std::make_unique<Captures>(panes_, around.connection, context.client, around.lines, window);
  checking_ =
      std::make_unique<Checking>(panes_, context.site, around.lines, around.frameRate, *places_, window);
  searching_ = std::make_unique<Searching>(context.site, around.lines, *places_, window);
  sheets_ = std::make_unique<Sheets>(context.site, around.lines, around.frameRate, *places_, window);
  replacements_ = std::make_unique<Replacements>(
      Replacements::Surroundings{context.site, around.lines, around.frameRate, around.connection, *places_,
                                 around.open, around.undo, around.gate},
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
  around.open.setSendQuestion([this](const Macro& macro, const QString& name, Pane pane) {
    return checking_->maySend(macro, name, pane);
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

void ReviewDesk::add(QMenu& menu, const QString& text, const QKeySequence& keys,
                     const std::function<void()>& act) {
  QAction* const entry = menu.addAction(text);
  entry->setShortcut(keys);
  connect(entry, &QAction::triggered, this, [this, act] {
    if (begun_) act();
  });
}

void ReviewDesk::addMenus(QMenuBar& bar, MacroMenu& macroMenu) {
  // The letters before are keys of the panes or of other menus.
  addCompareEntries(*bar.addMenu(tr("Comp&are")));
  addReviewEntries(*bar.addMenu(tr("Review")));
  connect(&macroMenu, &MacroMenu::rehearsePressed, this, [this] {
    if (begun_) rehearsals_->open(active_);
  });
  connect(&macroMenu, &MacroMenu::capturePressed, this, [this] {
    if (begun_) captures_->open(active_);
  });
  connect(&macroMenu, &MacroMenu::printPressed, this, [this] {
    if (begun_) sheets_->print();
  });
  connect(&macroMenu, &MacroMenu::exportPressed, this, [this] {
    if (begun_) sheets_->write();
  });
  connect(&macroMenu, &MacroMenu::saveSnapshotPressed, this, [this] {
    if (begun_) snapshots_->save(active_);
  });
  connect(&macroMenu, &MacroMenu::openSnapshotPressed, this, [this] {
    if (begun_) snapshots_->open(active_);
  });
  connect(&macroMenu, &MacroMenu::restoreSnapshotPressed, this, [this] { snapshots_->restore(active_); });
  connect(&macroMenu, &MacroMenu::closeSnapshotPressed, this, [this] { snapshots_->close(active_); });
}

void ReviewDesk::addCompareEntries(QMenu& menu) {
  add(menu, tr("&What Have I Changed?"), Qt::CTRL | Qt::SHIFT | Qt::Key_D,
      [this] { comparisons_->compareWithTarget(active_); });
  add(menu, tr("&Both Panes"), Qt::CTRL | Qt::SHIFT | Qt::Key_B, [this] { comparisons_->comparePanes(); });
  add(menu, tr("With a &Version of the History..."), {}, [this] { history_.open(); });
  add(menu, tr("Work&places..."), Qt::CTRL | Qt::SHIFT | Qt::Key_W, [this] { workplaces_->openWindow(); });
}

void ReviewDesk::addReviewEntries(QMenu& menu) {
  add(menu, tr("&Check..."), Qt::Key_F7, [this] { checking_->open(); });
  add(menu, tr("&Search..."), Qt::CTRL | Qt::SHIFT | Qt::Key_F, [this] { searching_->open(); });
  add(menu, tr("&Where Used..."), Qt::CTRL | Qt::SHIFT | Qt::Key_U, [this] { openWhereUsed(); });
  add(menu, tr("&Replace in Macros..."), Qt::CTRL | Qt::SHIFT | Qt::Key_H, [this] { replacements_->open(); });
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
  menu->popup(state(active_).view.placeOfSelected());
  menu->setActiveAction(menu->actions().constFirst());
}

void ReviewDesk::addWhereUsed(QMenu& menu, const MacroCommand& command, QDialog& dialog) {
  searching_->addWhereUsed(menu, command, &dialog);
}

void ReviewDesk::begin() {
  begun_ = true;
  checking_->begin();
}

void ReviewDesk::endUnfinished() { workplaces_->start(); }

void ReviewDesk::look() {
  workplaces_->look();
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
