#pragma once

#include <string>
#include <vector>

#include <QAbstractItemView>
#include <QBrush>
#include <QFont>
#include <QIcon>
#include <QTextDocumentFragment>

namespace tessaly {

// All that a cell tells, in whatever way: "text [tool tip] (to a screen reader) x", behind it signs: x - ~ a
// box to tick, > ^ text at the right or in the middle, * / a bold or slanted font, ! a picture, # = a hatched
// or another ground. A tool tip with nothing but the text is "[]".
inline std::string toldBy(const QModelIndex& cell) {
  const QString text = cell.data().toString(), spoken = cell.data(Qt::AccessibleTextRole).toString();
  QStringList told;
  if (!text.isEmpty()) told << text;
  if (QString tip = cell.data(Qt::ToolTipRole).toString(); !tip.isEmpty()) {
    if (Qt::mightBeRichText(tip) || tip.contains('&'))
      tip = QTextDocumentFragment::fromHtml(tip).toPlainText();
    told << '[' + (tip == text ? QString() : tip) + ']';
  }
  if (!spoken.isEmpty() && spoken != text) told << '(' + spoken + ')';
  const QVariant tick = cell.data(Qt::CheckStateRole);
  if (tick.isValid() && (cell.flags() & Qt::ItemIsUserCheckable) != 0)
    told << QString(QStringLiteral("-~x")[tick.toInt()]);
  const auto place = Qt::Alignment(cell.data(Qt::TextAlignmentRole).toInt());
  if (place.testFlag(Qt::AlignRight)) told << QStringLiteral(">");
  if (place.testFlag(Qt::AlignHCenter)) told << QStringLiteral("^");
  const auto font = cell.data(Qt::FontRole).value<QFont>();
  if (font.bold()) told << QStringLiteral("*");
  if (font.italic()) told << QStringLiteral("/");
  if (!cell.data(Qt::DecorationRole).value<QIcon>().isNull()) told << QStringLiteral("!");
  const Qt::BrushStyle ground = cell.data(Qt::BackgroundRole).value<QBrush>().style();
  if (ground != Qt::NoBrush) told << (ground == Qt::SolidPattern ? QStringLiteral("=") : QStringLiteral("#"));
  return told.join(' ').toStdString();
}

// The rows of a table, cell by cell.
inline std::vector<std::string> toldBy(const QAbstractItemModel& model, const QModelIndex& parent = {}) {
  std::vector<std::string> rows;
  for (int row = 0; row < model.rowCount(parent); ++row) {
    std::string& told = rows.emplace_back();
    for (int column = 0; column < model.columnCount(parent); ++column)
      told += (column > 0 ? " | " : "") + toldBy(model.index(row, column, parent));
  }
  return rows;
}

inline std::string headingsOf(const QAbstractItemModel& model) {
  std::string told;
  for (int column = 0; column < model.columnCount(); ++column)
    told += (column > 0 ? " | " : "") + model.headerData(column, Qt::Horizontal).toString().toStdString();
  return told;
}

// The texts of a view's upper rows that are cut off.
inline std::vector<std::string> cutOff(const QAbstractItemView& view) {
  std::vector<std::string> found;
  for (int row = 0; row < view.model()->rowCount(); ++row)
    for (int column = 0; column < view.model()->columnCount(); ++column) {
      const QModelIndex cell = view.model()->index(row, column);
      const int room = view.visualRect(cell).width();  // none in a hidden column
      if (room > 0 && view.sizeHintForIndex(cell).width() > room) found.push_back(toldBy(cell));
    }
  return found;
}

// The named controls of a window that cannot be used, and those that are not there: "fix open; cancel
// progress".
inline std::string shutIn(const QWidget& window) {
  QStringList useless, missing;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const QString name = widget->objectName();
    if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) || name.startsWith(QLatin1String("Scroll")) ||
        widget->window() != &window)
      continue;
    if (!widget->isVisible())
      missing << name;
    else if (!widget->isEnabled())
      useless << name;
  }
  useless.sort();
  missing.sort();
  return (useless.join(' ') + "; " + missing.join(' ')).toStdString();
}

}  // namespace tessaly
