#pragma once

#include <vector>

#include <QStyledItemDelegate>

#include "widgets/ListRows.h"
#include "widgets/RowMark.h"

namespace tessaly {

// Grey that can still be read with ease, on a light and on a dark ground: what a list says in place of rows,
// and the rows of a list that takes no input.
[[nodiscard]] QColor dimmed(const QPalette& palette);

// Role of models; the colour of a stripe at the left edge of a row, invalid for none.
inline constexpr int kRowStripeRole = kRowMarkRole + 1;

// Draws rows of one height in columns. A column of ListRows begins behind the widest cell before it; where a
// tab stop was given, not before that. Tab stops are in dialog units (a quarter of the average character
// width).
class ListBoxDelegate : public QStyledItemDelegate {
 public:
  static constexpr int kRowGap = 3;      // pixels between the text lines of two rows
  static constexpr int kTextMargin = 3;  // pixels left and right of a row's text

  using QStyledItemDelegate::QStyledItemDelegate;

  void setTabStops(std::vector<int> dialogUnits) { tabStops_ = std::move(dialogUnits); }
  // Leaves room before the text of each row for its mark (RowMark), whether or not it has one.
  void leaveRoomForMarks() { marks_ = true; }
  // Pixels that a row needs, with what stands before its text.
  [[nodiscard]] int rowWidth(const QModelIndex& index, const QFontMetrics& metrics) const;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  // Where the columns begin, in pixels from the first one.
  [[nodiscard]] std::vector<int> columnStarts(const ListRows* rows, const QFontMetrics& metrics) const;
  // Pixels of the widest row.
  [[nodiscard]] int widestRow(const ListRows& rows, const QFontMetrics& metrics) const;
  void drawText(QPainter& painter, const QStyleOptionViewItem& style, const QModelIndex& index) const;

  [[nodiscard]] int markRoom(const QFontMetrics& metrics) const { return marks_ ? metrics.height() : 0; }

  std::vector<int> tabStops_;
  bool marks_ = false;
};

}  // namespace tessaly
