#pragma once

#include "widgets/RowsView.h"
#include "windows/HitRows.h"

namespace tessaly {

// The list of what a search has found.
class HitList : public RowsView {
  Q_OBJECT

 public:
  explicit HitList(QWidget* parent = nullptr);
  [[nodiscard]] HitRows& rows() override { return rows_; }

 signals:
  void opened();  // Enter or a double click on the one that is selected

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  HitRows rows_;
};

}  // namespace tessaly
