#pragma once

#include <vector>

#include <QAbstractTableModel>
#include <QTimer>

#include "link/PanelQuestions.h"
#include "model/CommandLine.h"
#include "review/Capture.h"

namespace tessaly {

// The rows of a capture, with a tick where the value can be taken over; all, or only those that differ. GUI
// thread.
class CaptureModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kStep, kCommand, kOld, kNew, kState, kColumns };

  CaptureModel(const LineContext& lines, const LineOptions& options);

  // In place of the one before.
  void begin(Capture capture);
  // Does something to the capture, and shows what has become of it.
  template <class Act>
  void change(Act act) {
    act(capture_);
    refresh();
  }
  // What has come from the panel. Of a burst the first and the last answers are shown at once, those between
  // a few times a second. True when a row was waiting for one of them.
  bool take(const std::vector<PanelAnswer>& answers);
  [[nodiscard]] const Capture& capture() const { return capture_; }
  [[nodiscard]] const LineContext& lines() const { return lines_; }

  void setOnlyDifferences(bool only);
  // The row of the capture that is shown there.
  [[nodiscard]] std::size_t captured(int row) const { return shown_[static_cast<std::size_t>(row)]; }
  // Where it is shown, or else the row after it; -1 when there is none.
  [[nodiscard]] int placeOf(std::size_t captured) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 signals:
  void changed();
  // Other rows of the same capture will be shown: a view still knows its place.
  void rowsAboutToChange();

 private:
  [[nodiscard]] std::vector<std::size_t> wanted() const;
  void refresh();
  [[nodiscard]] QString text(std::size_t row, int column) const;
  [[nodiscard]] QString commandText(std::size_t row) const;
  [[nodiscard]] QString valueText(std::size_t row, const std::string& stored) const;
  [[nodiscard]] static QString stateText(const Capture::Row& row);

  const LineContext lines_;
  const LineOptions options_;
  Capture capture_;
  bool onlyDifferences_ = false;
  QTimer burst_;                    // until answers are shown again
  bool refreshDue_ = false;         // then
  std::vector<std::size_t> shown_;  // rows of the capture, in their order
};

}  // namespace tessaly
