#pragma once

#include "widgets/RowsView.h"

namespace tessaly {

// A list box with rows of its own.
class ListBox : public RowsView {
  Q_OBJECT

 public:
  explicit ListBox(QWidget* parent = nullptr) : RowsView(parent) { take(rows_); }
  [[nodiscard]] ListBoxModel& rows() override { return rows_; }

 private:
  ListBoxModel rows_;
};

}  // namespace tessaly
