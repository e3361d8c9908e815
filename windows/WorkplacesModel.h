#pragma once

#include <vector>

#include <QAbstractTableModel>

#include "review/WorkplaceComparison.h"

namespace tessaly {

// The rows of two workplaces beside each other: what is there, a tick each, and what became of its copy. GUI
// thread.
class WorkplacesModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kNumber, kLeft, kState, kRight, kResult, kColumns };

  struct Row {
    WorkplaceRow compared;
    bool ticked = false;
    bool failed = false;
    QString result = {};
  };

  using QAbstractTableModel::QAbstractTableModel;

  void clear();
  // Of a column: for its tool tip, and as far as there is room.
  struct Title {
    QString whole, cut;
  };
  void setTitles(Title left, Title right);
  void add(std::vector<WorkplaceRow> compared);
  void showOnlyDifferences(bool only);
  // Of a row in all.
  void setResult(std::size_t row, const QString& result, bool failed);
  void clearResults();
  // What stands on the left was copied to the right, or the other way round.
  void noteCopied(std::size_t row, bool fromLeft);

  void tick(std::size_t row, bool on);
  void tickDifferent();

  [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
  [[nodiscard]] std::size_t rowAt(const QModelIndex& index) const {
    return shown_[static_cast<std::size_t>(index.row())];
  }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 signals:
  void ticked();  // a tick has come or gone

 private:
  void showAnew();
  void rowChanged(std::size_t row);
  [[nodiscard]] bool isShown(const Row& row) const;

  std::vector<Row> rows_;
  std::vector<std::size_t> shown_;  // of rows_, in their order
  bool onlyDifferences_ = false;
  Title left_, right_;
};

// A sign and a word.
[[nodiscard]] QString stateText(WorkplaceRow::State state);

}  // namespace tessaly
