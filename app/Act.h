#pragma once

#include <vector>

#include <QKeySequence>
#include <QString>

#include "app/ActNeeds.h"
#include "app/PaneState.h"

namespace tessaly {

class HistoryOperations;
class LooseMacros;
class MacroUndo;
class MainWindow;
class Preferences;
class ReviewDesk;
class StepOperations;

enum class ActMenu { kMacro, kEdit, kCompare, kReview, kPanel, kView, kSite, kHelp };

// What the acts are done with.
struct ActHands {
  MainWindow& window;
  PaneAccesses panes;
  MacroUndo& undo;
  StepOperations& steps;
  LooseMacros& loose;
  HistoryOperations& history;
  ReviewDesk& desk;
  Preferences* preferences;  // of the user; may be missing

  [[nodiscard]] MacroPane& view(Pane pane) const { return panes[index(pane)].state->view; }
};

// Whose keys an act has: the window's, or those of a pane, which answers to them itself.
enum class ActKeys { kWindow, kPane };

// Something that the window can do, for the pane that was worked in last.
struct Act {
  ActMenu menu;
  const char* name;  // by which it is found; a control of the panes has the same where nothing is run
  const char* text;  // in the context "Acts", as are the words
  QKeySequence keys = {};
  ActNeeds needs = {};
  void (*run)(const ActHands& hands, Pane pane) = nullptr;
  const char* words = "";  // others by which people look for it
  bool begins = false;     // a part of its menu
  ActKeys keysOf = ActKeys::kWindow;
  // What it is called now, in place of its text where that is not empty.
  QString (*called)(const ActSituation& now) = nullptr;
  // One of several, or on and off; nothing for any other act.
  bool (*checked)(const ActHands& hands, Pane pane) = nullptr;
};

// All of them, in the order of the menus.
[[nodiscard]] const std::vector<Act>& acts();
[[nodiscard]] const Act& actNamed(const char* name);

[[nodiscard]] QString actText(const char* text);  // in the language of the program
// An ampersand in a name is no key.
[[nodiscard]] QString textInMenu(QString text);

}  // namespace tessaly
