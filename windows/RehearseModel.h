#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QAbstractTableModel>

#include "model/CommandLine.h"
#include "windows/Rehearsal.h"
#include "windows/RehearseNow.h"
#include "windows/RehearseTexts.h"

namespace tessaly {

// The values of a rehearsal, each with what the panel has now and what it is at one step; or what is left of
// them after the macro, and with them the commands that change no value. Texts are made when they are asked
// for. GUI thread.
class RehearseModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum class Shows { kStep, kAfter };
  enum Column { kName, kNow, kSigns, kState, kColumns };

  RehearseModel(Shows shows, const LineContext& lines, const LineOptions& options, const RehearseNow& now,
                QObject* parent);

  // Null for nothing. The rows stay where the commands are the same ones.
  void show(std::shared_ptr<const Rehearsal> rehearsal);
  void setStep(int step);
  void tellNow();

  [[nodiscard]] const RehearsalRow* row(int row) const;
  // The first row of a value of that name; -1 for none.
  [[nodiscard]] int rowOf(const std::string& name) const;
  [[nodiscard]] const std::string* nameOf(int row) const;
  // The row of a value of the rehearsal.
  [[nodiscard]] int rowOf(int value) const { return rowOfValue_[static_cast<std::size_t>(value)]; }
  // What the signs of a row stand for; empty in a row that has none.
  [[nodiscard]] std::optional<RehearseCell> cell(int row) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void list();
  void tellColumns(int first, int last);
  [[nodiscard]] QString text(const RehearsalRow& row, int column) const;
  [[nodiscard]] QString toolTip(const RehearsalRow& row, int column) const;
  [[nodiscard]] QString line(int command) const;

  Shows shows_;
  LineContext lines_;
  LineOptions options_;
  const RehearseNow& now_;
  std::shared_ptr<const Rehearsal> rehearsal_;
  std::vector<RehearsalRow> rows_;
  std::vector<int> rowOfValue_;
  int step_ = 0;
};

}  // namespace tessaly
