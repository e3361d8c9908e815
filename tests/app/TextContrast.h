#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_map>
#include <vector>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>

namespace tessaly {

inline double luminance(const QColor& colour) {
  const auto part = [](double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

inline double contrast(const QColor& first, const QColor& second) {
  const double a = luminance(first) + 0.05;
  const double b = luminance(second) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

// A text in a widget, and where it is drawn.
struct DrawnText {
  QRect place;
  QString text;
};

inline std::vector<DrawnText> drawnTexts(QWidget& widget) {
  constexpr int kEdge = 4;  // pixels of a frame around a text
  const QRect inside = widget.rect().adjusted(kEdge, kEdge, -kEdge, -kEdge);
  if (const auto* label = qobject_cast<QLabel*>(&widget)) return {{label->contentsRect(), label->text()}};
  if (const auto* edit = qobject_cast<QLineEdit*>(&widget))
    return {{inside, edit->text().isEmpty() ? edit->placeholderText() : edit->text()}};
  if (const auto* group = qobject_cast<QGroupBox*>(&widget))
    return {
        {QRect(QPoint(), group->fontMetrics().size(Qt::TextShowMnemonic, group->title())), group->title()}};
  if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) {
    const bool box = qobject_cast<const QCheckBox*>(button) || qobject_cast<const QRadioButton*>(button);
    const int before = box ? button->style()->pixelMetric(QStyle::PM_IndicatorWidth) + kEdge : 0;
    return {{inside.adjusted(before, 0, 0, 0), button->text()}};
  }
  std::vector<DrawnText> rows;
  auto* view = qobject_cast<QAbstractItemView*>(&widget);
  if (view == nullptr || view->model() == nullptr) return rows;
  for (int row = 0; row < view->model()->rowCount(); ++row) {
    const QModelIndex index = view->model()->index(row, 0);
    const QRect place = view->visualRect(index) & view->viewport()->rect();
    if (place.height() < view->fontMetrics().height()) continue;
    rows.push_back({place.translated(view->viewport()->pos()), index.data().toString()});
  }
  return rows;
}

// Between the most frequent colour of a place and that which stands out from it the most.
inline double contrastIn(const QImage& picture, const QRect& place) {
  std::unordered_map<QRgb, int> colours;
  for (int y = place.top(); y <= place.bottom(); ++y)
    for (int x = place.left(); x <= place.right(); ++x) ++colours[picture.pixel(x, y)];
  const QColor ground = std::max_element(colours.begin(), colours.end(), [](const auto& a, const auto& b) {
                          return a.second < b.second;
                        })->first;
  double most = 1;
  for (const auto& [colour, count] : colours) most = std::max(most, contrast(colour, ground));
  return most;
}

// The texts of a shown window that are hard to read, as they are drawn.
inline std::vector<std::string> faintTexts(QWidget& window) {
  constexpr double kReadable = 4.5;
  const QImage picture = window.grab().toImage();
  std::vector<std::string> found;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->window() != &window) continue;
    for (const DrawnText& drawn : drawnTexts(*widget)) {
      const QRect seen = drawn.place & widget->visibleRegion().boundingRect();
      const QRect place = QRect(widget->mapTo(&window, seen.topLeft()), seen.size()) & picture.rect();
      if (place.isEmpty() || seen != drawn.place || drawn.text.trimmed().isEmpty()) continue;
      if (const double contrast = contrastIn(picture, place); contrast < kReadable)
        found.push_back(widget->objectName().toStdString() + " \"" + drawn.text.toStdString() + "\" " +
                        std::to_string(contrast));
    }
  }
  return found;
}

}  // namespace tessaly
