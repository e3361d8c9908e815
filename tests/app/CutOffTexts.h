#pragma once

#include <string>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

namespace tessaly {

inline constexpr int kButtonFrame = 4;  // pixels of a push button that its caption cannot use

inline bool cutOff(const QLabel& label) {
  if (label.wordWrap()) return label.height() < label.heightForWidth(label.width());
  if (label.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) return false;  // data of any length
  const QSize needed = label.sizeHint();
  return label.width() < needed.width() || label.height() < needed.height();
}

inline bool cutOff(const QAbstractButton& button) {
  if (qobject_cast<const QPushButton*>(&button) == nullptr &&
      qobject_cast<const QToolButton*>(&button) == nullptr)
    return button.width() < button.sizeHint().width();  // the mark beside the caption counts
  const QSize text = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
  const int icon = button.icon().isNull() ? 0 : button.iconSize().width();
  return button.width() < text.width() + icon + kButtonFrame || button.height() < text.height();
}

inline bool cutOff(const QGroupBox& box) { return box.width() < box.minimumSizeHint().width(); }

template <class Widget>
void collectCutOff(const QWidget& window, QString (Widget::*text)() const, std::vector<std::string>& found) {
  for (const Widget* widget : window.findChildren<Widget*>())
    if (widget->isVisibleTo(&window) && !(widget->*text)().isEmpty() && cutOff(*widget))
      found.push_back(widget->objectName().toStdString() + ": " + (widget->*text)().toStdString());
}

inline void collectCutOff(const QWidget& window, std::vector<std::string>& found) {
  collectCutOff(window, &QLabel::text, found);
  collectCutOff(window, &QAbstractButton::text, found);
  collectCutOff(window, &QGroupBox::title, found);
}

// At the size that the window opens with, and at its smallest.
inline std::vector<std::string> cutOffTexts(QWidget& window) {
  std::vector<std::string> found;
  window.show();
  for (const QSize size : {window.size(), QSize(1, 1)}) {
    window.resize(size);
    QApplication::processEvents();
    collectCutOff(window, found);
  }
  return found;
}

}  // namespace tessaly
