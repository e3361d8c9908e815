#pragma once

#include <initializer_list>
#include <string>

#include <QAbstractItemView>
#include <QLabel>
#include <QRegularExpression>
#include <QSizePolicy>
#include <QString>
#include <QWidget>

#include "platform/Text.h"

// Between the bytes of model code and the text of widgets.
namespace tessaly {

// What labels, lists and boxes show of names, values and lines: nothing in it hides or turns round what
// stands beside it.
[[nodiscard]] inline QString shown(const std::string& bytes) {
  return QString::fromStdString(visibleUtf8(bytes, "\t"));
}

// The same of a text of ours that has several lines; the names in it have been made visible before.
[[nodiscard]] inline QString shownLines(const std::string& text) {
  return QString::fromStdString(visibleUtf8(text, "\t\n"));
}

// What a field is filled with for editing: as it is, since it is stored as the field has it.
[[nodiscard]] inline QString editable(const std::string& bytes) {
  return QString::fromStdString(displayUtf8(bytes));
}

[[nodiscard]] inline QString quoted(const std::string& bytes) {
  return QLatin1Char('"') + shown(bytes) + QLatin1Char('"');
}

// A macro number's box takes at most three digits.
[[nodiscard]] inline QRegularExpression digitsOnly() {
  return QRegularExpression(QStringLiteral("[0-9]{0,3}"));
}

// A list is read out under the name of the label over it; other controls are so without help. To be called
// again when such a label changes.
inline void nameListsByLabels(const QWidget& window) {
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (auto* list = qobject_cast<QAbstractItemView*>(label->buddy())) list->setAccessibleName(label->text());
}

// A dialog keeps its size while lines of it come and go.
inline void keepSpaceWhenHidden(std::initializer_list<QWidget*> widgets) {
  for (QWidget* widget : widgets) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
  }
}

}  // namespace tessaly
