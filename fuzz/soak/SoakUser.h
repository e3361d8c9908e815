#pragma once

#include <random>
#include <string>

#include "app/PaneDescriptor.h"
#include "fuzz/soak/Desk.h"
#include "fuzz/soak/SoakModel.h"

namespace tessaly {

// A person at the window who does one thing after another by chance, with the mouse, the keyboard and the
// dialogs, and tells the model what has been done. Each operation returns what was done, or nothing when it
// was not possible.
class SoakUser {
 public:
  SoakUser(Desk& desk, SoakModel& model, std::mt19937& chance)
      : desk_(desk), model_(model), chance_(chance) {}

  [[nodiscard]] std::string act();

 private:
  using Ids = PaneDescriptor::ControlIds;

  std::string chooseRow();
  std::string clickBeside();
  std::string pressArrow();
  std::string chooseSource();
  std::string pressConnect();
  std::string typeAddress();
  std::string create();
  std::string copy();
  std::string rename();
  std::string remove();
  std::string deleteCommand();
  std::string newCommand();
  std::string newMany();
  std::string modify();
  std::string openAndCancel();
  std::string update();
  std::string save();
  std::string discard();
  std::string option();
  std::string closeWindow();

  // The model's side of what has several steps.
  void chosen(int list, int row);
  void createdOnPanel(int number, const std::string& name);
  void copied(int number);
  void renamed(int number, const std::string& name);
  void removed(int number);
  void updated(bool question);
  void applyValues(const std::vector<std::pair<std::string, std::string>>& answers,
                   std::vector<SeenCommand>& commands, int& count) const;
  void diskChanged(int number);
  // The working copy holds these commands now, as read from it.
  void takeCopy(const std::vector<SeenCommand>& commands, int selected);

  [[nodiscard]] int number(int below) { return static_cast<int>(chance_() % static_cast<unsigned>(below)); }
  [[nodiscard]] bool perhaps() { return number(2) == 0; }
  [[nodiscard]] bool usable(int control) const { return desk_.visible(control) && desk_.enabled(control); }
  [[nodiscard]] int someNumber();
  [[nodiscard]] std::string someName();
  [[nodiscard]] PaneModel& here() { return model_.of(pane_); }
  [[nodiscard]] PaneModel& there() { return model_.of(other(pane_)); }
  [[nodiscard]] const Ids& ids() const { return Desk::ids(pane_); }
  [[nodiscard]] std::string copyBytes(Pane pane) const { return desk_.site.read(workingCopyPath(pane)); }
  [[nodiscard]] std::string text(const std::string& what) const {
    return std::string(pane_ == Pane::kA ? "A: " : "B: ") + what;
  }

  Desk& desk_;
  SoakModel& model_;
  std::mt19937& chance_;
  Pane pane_ = Pane::kA;
};

}  // namespace tessaly
