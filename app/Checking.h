#pragma once

#include <functional>
#include <optional>

#include <QObject>
#include <QPointer>

#include "app/CheckMarks.h"
#include "widgets/Message.h"
#include "windows/ReviewScope.h"

namespace tessaly {

class CheckWindow;
class ReviewPlaces;
struct FaultyMacro;
struct FindingRow;

// Checks macros in the window: the marks of the panes, the list "Check", its fixes, and the question before a
// macro with errors goes to a panel. GUI thread.
class Checking : public QObject {
  Q_OBJECT

 public:
  // Observes all; `frameRate` in frames a second, which an editor may change.
  Checking(const PaneAccesses& panes, SiteAccess site, const LineContext& knowledge, const int& frameRate,
           ReviewPlaces& places, QWidget* window);
  ~Checking() override;

  // Once the dictionary is there.
  void begin();
  // Anew, when another frame rate has been chosen since, or a decoding list written.
  void look();
  // The list, for what the active pane shows; brought before the others when it is open already.
  void open();
  // The same for what is named.
  void list(ReviewScope::Kind kind);
  // What was found of the command that is selected in the active pane, or how much of its macro.
  [[nodiscard]] QString selectedText() const;
  // Before anything of a transfer begins. False: it is not to be sent. `shownIn` shows the macro, for who
  // wants to look.
  [[nodiscard]] bool maySend(const Macro& macro, const QString& name, std::optional<Pane> shownIn);
  // The same of many, `of` with those that have no errors.
  [[nodiscard]] bool maySend(const std::vector<FaultyMacro>& faulty, std::size_t of) const;
  // What macros are checked against now.
  [[nodiscard]] CheckContext knowledge() const;

 signals:
  void said(const tessaly::Message& message);
  void findingsChanged();

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  void follow(Pane pane);
  void fix(const FindingRow& row);
  void applyFix(Pane pane, const FindingRow& row);
  void tell(const Message& message);

  PaneAccesses panes_;
  SiteAccess site_;
  LineContext knowledge_;
  const int& frameRate_;
  int markedRate_;  // that the marks are made by
  ReviewPlaces& places_;
  QWidget* window_;
  CheckMarks marks_;
  QPointer<CheckWindow> list_;
};

}  // namespace tessaly
