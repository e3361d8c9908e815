#pragma once

#include <functional>
#include <vector>

#include <QStyledItemDelegate>

namespace tessaly {

// Grey that can still be read with ease, on a light and on a dark ground: what a list says in place of rows,
// and the rows of a list that takes no input.
[[nodiscard]] QColor dimmed(const QPalette& palette);

// Draws rows of one height, with tab stops given in dialog units (a quarter of the average character width).
class ListBoxDelegate : public QStyledItemDelegate {
 public:
  static constexpr int kRowGap = 3;      // pixels between the text lines of two rows
  static constexpr int kTextMargin = 3;  // pixels left and right of a row's text

  using QStyledItemDelegate::QStyledItemDelegate;

  void setTabStops(std::vector<int> dialogUnits) { tabStops_ = std::move(dialogUnits); }
  // Leaves room before the text of each row for its mark (RowMark), whether or not it has one.
  void leaveRoomForMarks() { marks_ = true; }
  // Pixels that a row's text needs, with what stands before it.
  [[nodiscard]] int textWidth(const QString& text, const QFontMetrics& metrics) const;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  // Calls `cell` with each tab-separated cell and its offset in pixels; returns where the last one ends.
  int layOut(const QString& text, const QFontMetrics& metrics,
             const std::function<void(int x, const QString& text)>& cell) const;

  [[nodiscard]] int markRoom(const QFontMetrics& metrics) const { return marks_ ? metrics.height() : 0; }

  std::vector<int> tabStops_;
  bool marks_ = false;
};

}  // namespace tessaly
