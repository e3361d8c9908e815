#pragma once

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <QAbstractItemModel>

#include "review/RetargetedMacro.h"
#include "windows/ReviewScope.h"

namespace tessaly {

// What a rule makes of one macro, or why the macro is left out.
struct FoundReplacement {
  ReviewedPlace place;
  std::optional<RetargetedMacro> macro;
  QString leftOut;  // plain; empty with a macro that may be changed
};

// The preview of a replacement: a row a macro, and below it a row a command, each with a tick where it can be
// changed. GUI thread.
class ReplaceModel : public QAbstractItemModel {
  Q_OBJECT

 public:
  enum Column { kCommand, kBefore, kAfter, kFindings, kColumns };

  using QAbstractItemModel::QAbstractItemModel;

  void clear();
  void add(std::vector<FoundReplacement> found);
  // What became of a macro; it can no longer be ticked.
  void setOutcome(std::size_t macro, const QString& outcome);
  // The macros with other ticks than those that their findings were told for; once.
  [[nodiscard]] std::set<std::size_t> takeUnjudged() { return std::exchange(unjudged_, {}); }
  // The findings of these ticks; dropped when others are set by now.
  void judge(std::size_t macro, const std::vector<bool>& ticked, RetargetProposals judged);

  [[nodiscard]] const std::vector<FoundReplacement>& macros() const { return macros_; }
  // The one that a row is about or of; nothing outside.
  [[nodiscard]] std::optional<std::size_t> macroOf(const QModelIndex& index) const;
  // Null for the row of a macro.
  [[nodiscard]] const RetargetProposal* proposal(const QModelIndex& index) const;
  // Commands that are to be replaced yet: of one macro, and of all.
  [[nodiscard]] std::size_t ticked(std::size_t macro) const;
  [[nodiscard]] int ticked() const;
  [[nodiscard]] int impossible() const;  // commands that cannot be changed

  [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 signals:
  void tickedChanged();

 private:
  [[nodiscard]] bool mayTick(const QModelIndex& index) const;
  [[nodiscard]] Qt::CheckState tick(const QModelIndex& index) const;
  [[nodiscard]] QString macroText(std::size_t macro, int column) const;
  [[nodiscard]] QString findingsText(const RetargetProposal& proposal, const QString& between) const;

  std::vector<FoundReplacement> macros_;
  std::vector<QString> outcomes_;  // of each; empty before it was written
  std::set<std::size_t> unjudged_;
};

}  // namespace tessaly
