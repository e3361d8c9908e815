#pragma once

#include <array>
#include <memory>
#include <unordered_map>
#include <vector>

#include <QAbstractTableModel>

#include "model/CommandLine.h"
#include "windows/CompareTexts.h"

namespace tessaly {

// A part of a line, in characters of its QString.
struct TextPart {
  qsizetype begin = 0, end = 0;
};

// The rows of a comparison: the two lines, their numbers as a pane numbers commands, between them the sign of
// what is with the row, and on either side of that the place of the arrow that takes the difference over. A
// line and what is marked in it are made when they are first asked for. GUI thread.
class CompareModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kNumberA, kLineA, kTakeA, kSign, kTakeB, kNumberB, kLineB, kColumns };

  CompareModel(const LineContext& lines, const LineOptions& options, QObject* parent);

  // Null for nothing.
  void show(std::shared_ptr<const MacroDiff> diff, std::array<QString, 2> names);
  void setOptions(const LineOptions& options);
  void setOnlyDifferences(bool only);
  // Why nothing can be taken into a side; empty where it can.
  void setRefusals(std::array<QString, 2> refusals);

  [[nodiscard]] const CompareTexts& texts() const { return texts_; }
  [[nodiscard]] const MacroDiff* diff() const { return diff_.get(); }
  [[nodiscard]] bool refuses(Side side) const { return !refusals_[side == Side::kA ? 0 : 1].isEmpty(); }

  // Of the comparison, by the row that is shown; and the shown one at or behind one of the comparison, or the
  // last one.
  [[nodiscard]] std::size_t diffRow(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  [[nodiscard]] const DiffRow& at(int row) const { return diff_->rows()[diffRow(row)]; }
  [[nodiscard]] int rowAt(std::size_t diffRow) const;
  // The difference that a row of the comparison is in; null for none.
  [[nodiscard]] const DiffRange* differenceOf(std::size_t diffRow) const;
  // A difference begins at the row: its arrows stand there.
  [[nodiscard]] bool begins(int row) const;
  // What is not the same in the line as in the one beside it, rising.
  [[nodiscard]] const std::vector<TextPart>& marks(int row, Side side) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Lines {
    std::array<QString, 2> text;
    std::array<std::vector<TextPart>, 2> marks;
  };

  void fillRows();
  [[nodiscard]] const Lines& lines(int row) const;
  [[nodiscard]] QString text(int row, int column) const;
  [[nodiscard]] QString spoken(int row, int column) const;
  [[nodiscard]] QString toolTip(int row, int column) const;

  LineContext context_;
  LineOptions options_;
  CompareTexts texts_;
  std::shared_ptr<const MacroDiff> diff_;
  std::array<QString, 2> refusals_;
  bool onlyDifferences_ = false;
  std::vector<std::size_t> rows_;  // of the comparison
  mutable std::unordered_map<std::size_t, Lines> lines_;
};

}  // namespace tessaly
