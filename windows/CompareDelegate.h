#pragma once

#include <QStyledItemDelegate>

#include "windows/CompareModel.h"

namespace tessaly {

// The ground of a row, or of what is marked in its line: what is written on it in the palette's text colour
// stands out as it does on the palette's own ground.
[[nodiscard]] QColor compareGround(const QPalette& palette, DiffRow::Kind kind, bool marked);

// Draws the rows of a comparison. What differs inside a line is bold and underlined on a ground of its own; a
// line that is too long is cut so that its first difference is in sight. Where a column has no command there
// is a hatched gap. The arrows stand where a difference begins.
class CompareDelegate : public QStyledItemDelegate {
 public:
  static constexpr int kMargin = 4;  // pixels left and right of a text

  explicit CompareDelegate(const CompareModel& model, QObject* parent = nullptr)
      : QStyledItemDelegate(parent), model_(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  void paintLine(QPainter& painter, const QStyleOptionViewItem& style, int row, Side side) const;
  void paintArrow(QPainter& painter, const QStyleOptionViewItem& style, Side side) const;

  const CompareModel& model_;
};

}  // namespace tessaly
