#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "review/MacroCheck.h"
#include "review/WorkplaceCopy.h"
#include "windows/ReviewWindow.h"
#include "windows/ReviewWork.h"
#include "windows/WorkplacesModel.h"

namespace Ui {
class WorkplacesWindow;
}

namespace tessaly {

// A workplace that can stand on either side: a folder, a workplace of a panel, one of a snapshot.
struct WorkplaceChoice {
  QString text;                   // plain
  WorkplaceCopy::MakeShelf make;  // on any thread, and without waiting for anything
  // In place of `make`: asks the user for it; nothing when there is none after all.
  std::function<std::optional<WorkplaceChoice>(QWidget* owner)> ask = {};
};

// Two workplaces beside each other, number by number, and copying between them. Reads and writes on threads
// of its own; while it does it can be cancelled, and closing it cancels first. GUI thread.
class WorkplacesWindow : public ReviewWindow {
  Q_OBJECT

 public:
  struct Ways {
    SiteRoot root;
    std::function<std::vector<WorkplaceChoice>()> choices;
    // Whether these places may be written over; asks the user where that may lose anything.
    std::function<bool(const std::vector<MacroPlace>& places)> mayWrite;
    std::function<CheckContext()> knowledge;  // what it refers to outlives the window
    // Whether macros with errors may go to a panel all the same, `of` with those that have none; asks.
    std::function<bool(const std::vector<FaultyMacro>& faulty, std::size_t of)> maySend;
    // Does it once nothing else waits for the user; what waits already is replaced.
    std::function<void(std::function<void()> act)> whenFree;
    std::function<QString(const Failure& failure)> failureText;  // for people
  };

  explicit WorkplacesWindow(Ways ways, QWidget* owner = nullptr);
  ~WorkplacesWindow() override;

  // Reads or writes.
  [[nodiscard]] bool busy() const {
    return reading_.running() || looking_.running() || waits_ || copying_.running();
  }
  void cancel();

 public slots:
  void reject() override;

 signals:
  void compareWanted(const tessaly::WorkplaceChoice& left, const tessaly::WorkplaceChoice& right,
                     tessaly::MacroNumber number);
  // A macro was written there.
  void written(const tessaly::MacroPlace& place);
  // A copy is over, and can be undone as one.
  void copied(const QString& name, const std::vector<tessaly::BatchTrace>& traces);

 private:
  enum class Way { kToLeft, kToRight };
  struct Copied {
    std::size_t index;
    MacroBatch::Row row;
  };

  bool eventFilter(QObject* watched, QEvent* event) override;
  void setUpTable();
  void fillChoices();
  void choose(int side, int index);
  void readAgain();
  void showTitles();
  void endReading(const Outcome& outcome);
  void copy(Way way);
  void copyAgain();
  void startCopy();
  void look();
  void endLook(const Outcome& outcome);
  void askToSend();
  void write();
  void takeCopied(const std::vector<Copied>& copied);
  void endCopy(const Outcome& outcome);
  void tickSelected();
  void compareCurrent();
  void showControls();
  void say(const QString& text);
  [[nodiscard]] QString resultText(const MacroBatch::Row& row, const MacroPlace& place) const;
  [[nodiscard]] QString counts() const;
  [[nodiscard]] const WorkplaceChoice* choice(int side) const;

  Ways ways_;
  std::unique_ptr<Ui::WorkplacesWindow> ui_;
  WorkplacesModel model_;
  std::array<std::vector<WorkplaceChoice>, 2> choices_;
  std::array<int, 2> chosen_{-1, -1};
  bool againWanted_ = false;  // once what runs is over
  bool closeWanted_ = false;
  bool cancelled_ = false;  // what is to be copied
  bool waits_ = false;      // to ask about it
  std::unique_ptr<WorkplaceCopy> copy_;
  std::vector<std::size_t> copied_;  // the row of each macro that is copied
  std::vector<MacroPlace> targets_;  // where each goes
  bool toRight_ = true;
  QString copyName_;
  std::vector<FaultyMacro> faulty_;  // of what is to be copied
  ReviewWork<WorkplaceRow> reading_;
  ReviewWork<FaultyMacro> looking_;
  ReviewWork<Copied> copying_;
};

}  // namespace tessaly
