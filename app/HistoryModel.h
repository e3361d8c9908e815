#pragma once

#include <vector>

#include <QAbstractTableModel>

#include "model/KeptMacro.h"

namespace tessaly {

// The rows of the history dialog: the kept macros that match a filter, newest first.
class HistoryModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kWhen, kWhat, kName, kWhere, kColumns };

  using QAbstractTableModel::QAbstractTableModel;

  void setMacros(std::vector<KeptMacro> macros);
  // Rows that contain the text in any column, in any case.
  void setFilter(const QString& text);

  [[nodiscard]] const KeptMacro* macro(int row) const;  // null outside
  [[nodiscard]] bool holdsNone() const { return macros_.empty(); }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] static QString text(const KeptMacro& macro, int column);
  void applyFilter();

  std::vector<KeptMacro> macros_;
  std::vector<std::size_t> rows_;  // of macros_
  QString filter_;
};

}  // namespace tessaly
