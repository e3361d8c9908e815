#pragma once

#include <array>
#include <memory>
#include <optional>

#include <QTimer>

#include "windows/CompareModel.h"
#include "windows/CompareWork.h"
#include "windows/ReviewWindow.h"
#include "windows/ReviewWork.h"

class QPushButton;

namespace Ui {
class CompareWindow;
}

namespace tessaly {

// Two macros beside each other: what differs, and taking it over from one into the other. It is handed what
// the sides hold, and asks for it again whenever it is told that one may have changed; it keeps its place
// then. Nothing that is read, compared or put together holds the GUI thread up, and what comes of sides that
// have changed meanwhile is dropped. It does not close before what is taken is handed on. GUI thread.
class CompareWindow : public ReviewWindow {
  Q_OBJECT

 public:
  // Reads and compares in `pool`; what is under way there holds on to nothing of the window. The dictionary
  // and the lists of `lines` outlive both.
  CompareWindow(CompareWays ways, const LineContext& lines, const LineOptions& options, QThreadPool& pool,
                QWidget* owner = nullptr);
  ~CompareWindow() override;

 public slots:
  // A side may have changed: it is compared anew once the handlers that run now are through.
  void follow();
  void reject() override;

 private:
  using Taking = ReviewWork<CompareTake>;

  // Where the view stands: in a row, and how far below its top.
  struct Place {
    std::array<std::size_t, 2> commands{};  // of each side, in front of the row
    int y = 0;                              // pixels
    int column = 0;
  };

  void setUpTable();
  void setUpKeys();
  void setUpTakes();
  void compare();
  void showResult(const CompareWork::Result& result);
  void showSides();
  void setWidths();
  [[nodiscard]] QString refusal(Side side) const;
  void showCounts();
  void showDetails();
  void showTakes();
  [[nodiscard]] std::optional<Place> place() const;
  // Goes back to it in other macros, of which `kept` is the same one.
  void restore(const Place& place, Side kept);
  void setOnlyDifferences(bool only);
  void goTo(const DiffRange& difference);
  void goBy(int step);
  [[nodiscard]] const DiffRange* differenceBy(int step) const;
  void takeAt(const QModelIndex& arrow);
  void takeSelected(Side into);
  void take(Side into, const std::vector<std::size_t>& rows);
  void handOver(const Outcome& outcome);

  CompareWays ways_;
  std::unique_ptr<Ui::CompareWindow> ui_;
  CompareModel model_;
  LineOptions options_;
  std::array<CompareSide, 2> sides_;
  std::array<QPushButton*, 2> take_{}, takeAll_{};
  CompareWork work_;
  QTimer due_;                        // until it is compared anew
  QTimer long_;                       // until it is told that this takes a while
  Side into_ = Side::kA;              // of the take that is under way
  QString toldTaken_;                 // of it, once it is done
  std::optional<CompareTake> taken_;  // once it is put together
  bool closing_ = false;              // once it is handed on
  Taking taking_;
};

}  // namespace tessaly
