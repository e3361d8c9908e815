#pragma once

#include <memory>
#include <optional>
#include <string>

#include <QSplitter>
#include <QTableView>

#include "windows/RehearseGrid.h"
#include "windows/RehearseModel.h"

namespace tessaly {

// What the tables of a rehearsal have in common: rows that are chosen whole, and bars that move by pixels.
void setUpRehearseTable(QTableView& table, QAbstractItemModel& model);
// The widths of the columns of values: the names take what is left.
void setUpRehearseColumns(QTableView& table);

// Values beside steps, as one table: on the left the values, which stay in sight, on the right a column for
// each command. GUI thread.
class RehearseSteps : public QSplitter {
  Q_OBJECT

 public:
  RehearseSteps(const LineContext& lines, const LineOptions& options, const RehearseNow& now,
                QWidget* parent = nullptr);

  // Null for nothing. Where other commands come, the row stays at its value.
  void show(const std::shared_ptr<const Rehearsal>& rehearsal);
  // Brings the column of the step into sight.
  void setStep(int step);
  // The panel has told something, or is another one.
  void tellNow();
  // Brings the first value that the command of the step comes to into sight.
  void seekChange();
  void goToValue(const std::string& name);

  // That takes the keyboard.
  [[nodiscard]] QTableView& values() { return values_; }

 signals:
  void stepWanted(int step);

 private:
  void setUpGrid();
  void goToRow(int row, int y);
  void scrollTo(int step);

  const RehearseNow& now_;
  std::shared_ptr<const Rehearsal> rehearsal_;
  RehearseModel valueModel_;
  RehearseGrid gridModel_;
  QTableView &values_, &grid_;
};

}  // namespace tessaly
