#pragma once

#include <QStyledItemDelegate>

namespace tessaly {

// Draws the lines before and after a change with what differs in bold and underlined.
class ReplaceDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace tessaly
