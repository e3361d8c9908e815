#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "review/CheckRules.h"
#include "windows/CheckModel.h"
#include "windows/ReviewWindow.h"
#include "windows/ReviewWork.h"

namespace Ui {
class CheckWindow;
}

namespace tessaly {

// What the window works with; the references outlive it.
struct CheckSurroundings {
  const SiteRoot& root;
  const FunctionDictionary& dictionary;
  DecodingLists& decodingLists;
  const int& frameRate;  // frames a second
  std::function<std::vector<ReviewScope>()> scopes;
  std::function<QString(const Failure& failure)> failureText;  // on any thread
};

// The list "Check": looks at a macro, a folder or a workplace and shows what is wrong there, while it looks.
// Changes no macro: it says what the user wants. Switches rules on and off for the site. GUI thread.
class CheckWindow : public ReviewWindow {
  Q_OBJECT

 public:
  explicit CheckWindow(CheckSurroundings surroundings, QWidget* owner = nullptr);
  ~CheckWindow() override;

  // Looks at what is of that kind now.
  void check(ReviewScope::Kind kind);
  // What is now found in a macro that a pane shows: takes the place of what the list tells of it.
  void follow(const ReviewedPlace& place, ContentCheck content, const Findings& findings);
  // What became of what the user wanted.
  void tell(const QString& text);

 signals:
  void openWanted(const tessaly::ReviewedPlace& place, int command);
  void fixWanted(const tessaly::FindingRow& row);
  void rulesChanged();

 private:
  using Work = ReviewWork<FindingRow>;

  void start();
  void take(std::vector<FindingRow> found, Work::Progress progress);
  void end(const Outcome& outcome);
  void fitColumns();
  void chooseAgain(const FindingRow& chosen, int before);
  void openCurrent();
  void fixCurrent();
  void showCurrent();
  void showWorking(bool working);
  void showOff(const QString& problem);  // beside it, of the file that says so
  void changeRules();
  void switchOff(CheckRule rule);
  void apply(const RulesOff& off);
  void openMenu(const QPoint& at);
  [[nodiscard]] const FindingRow* current() const;
  [[nodiscard]] QString summary() const;
  [[nodiscard]] QString tellSummary();

  const CheckSurroundings surroundings_;
  std::unique_ptr<Ui::CheckWindow> ui_;
  CheckModel model_;
  RulesOff off_;  // as the last check took them
  QString what_;  // it looked at
  QString told_;  // the summary that was told last
  std::size_t seen_ = 0;
  Work work_;
};

}  // namespace tessaly
