#pragma once

#include <functional>
#include <vector>

#include <QAbstractTableModel>

#include "review/SnapshotRestore.h"

namespace tessaly {

// The macros of a snapshot as rows to be ticked, each with what stands where it goes, or what became of it.
// What is there already cannot be ticked. GUI thread.
class SnapshotRows : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kWorkplace, kMacro, kState, kColumns };
  using Words = std::function<QString(const Failure& failure)>;  // in the user's language

  explicit SnapshotRows(Words words, QObject* parent = nullptr)
      : QAbstractTableModel(parent), words_(std::move(words)) {}

  // Another count of rows ticks all that can be and of which is known what stands there; else what is done is
  // ticked no longer.
  void setRows(std::vector<RestoreRow> rows);
  [[nodiscard]] std::vector<std::size_t> ticked() const;
  void tickAll(bool on);
  [[nodiscard]] bool canTick(std::size_t row) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 signals:
  void tickChanged();

 private:
  [[nodiscard]] QString stateText(const RestoreRow& row) const;

  Words words_;
  std::vector<RestoreRow> rows_;
  std::vector<bool> ticked_;
};

}  // namespace tessaly
