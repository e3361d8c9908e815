#pragma once

#include <memory>

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

#include "windows/RehearseModel.h"

namespace tessaly {

// The steps of a rehearsal beside its values: a column for each command, which shows what the command makes
// of the value. A cell is made when it is asked for. The rows are those of the values. GUI thread.
class RehearseGrid : public QAbstractTableModel {
  Q_OBJECT

 public:
  // The rows outlive this object.
  RehearseGrid(const RehearseModel& values, const LineContext& lines, const LineOptions& options,
               QObject* parent);

  // Once the rows show it.
  void show(std::shared_ptr<const Rehearsal> rehearsal);
  void setStep(int step);
  [[nodiscard]] int step() const { return step_; }
  // That is chosen; -1 for none.
  void setRow(int row) { row_ = row; }
  [[nodiscard]] int row() const { return row_; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  // The value of a row; -1 for a heading.
  [[nodiscard]] int valueOf(int row) const;
  [[nodiscard]] RehearseCell cell(int value, int command) const;
  [[nodiscard]] QString text(int value, int command) const;
  [[nodiscard]] QString toolTip(int value, int command) const;
  [[nodiscard]] QString line(int command) const;

  const RehearseModel& values_;
  LineContext lines_;
  LineOptions options_;
  std::shared_ptr<const Rehearsal> rehearsal_;
  int step_ = 0;
  int row_ = -1;
};

// Draws the cells of a grid, and frames the column of its step and the row that is chosen.
class RehearseGridDelegate : public QStyledItemDelegate {
 public:
  RehearseGridDelegate(const RehearseGrid& grid, QObject* parent)
      : QStyledItemDelegate(parent), grid_(grid) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const RehearseGrid& grid_;
};

}  // namespace tessaly
