#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include <QAbstractTableModel>
#include <QPalette>

#include "platform/ContentCheck.h"
#include "review/CheckRules.h"
#include "windows/ReviewScope.h"

namespace tessaly {

// A finding with where it was found.
struct FindingRow {
  std::shared_ptr<const ReviewedPlace> place;
  ContentCheck content;  // of the macro that it was found in
  Finding finding;
};

// The rows of the check's list: the gravest first, each kind in the order in which it came.
class CheckModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kSeverity, kMacro, kCommand, kRule, kWrong, kRight, kColumns };

  using QAbstractTableModel::QAbstractTableModel;

  void clear();
  void add(std::vector<FindingRow> rows);
  // The rows of a macro for which `stale` holds give way to these.
  void replace(const std::function<bool(const FindingRow&)>& stale, std::vector<FindingRow> rows);

  [[nodiscard]] const FindingRow* row(int index) const;  // null outside
  [[nodiscard]] int count(Severity severity) const { return counts_[static_cast<std::size_t>(severity)]; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] static QString text(const FindingRow& row, int column);
  [[nodiscard]] int endOf(Severity severity) const;

  std::vector<FindingRow> rows_;
  std::array<int, 3> counts_{};  // of each severity
};

}  // namespace tessaly
