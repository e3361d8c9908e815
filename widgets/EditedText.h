#pragma once

#include <utility>

#include <QLineEdit>

namespace tessaly {

// Rather than `textEdited` and `isModified`, which know the keyboard only: a screen reader's hands put a text
// in whole. GUI thread.

inline constexpr const char* kBeingPut = "beingPut";  // property

// Fills a field, which is no edit. Where it has that text already, the caret stays.
inline void putText(QLineEdit& field, const QString& text) {
  if (field.text() == text) return;
  field.setProperty(kBeingPut, true);
  field.setText(text);
  field.setProperty(kBeingPut, false);
}

// `edited` is called with the text whenever anything but `putText` has changed it, while `owner` lives.
template <typename Edited>
void whenEdited(QLineEdit& field, const QObject* owner, Edited edited) {
  QObject::connect(&field, &QLineEdit::textChanged, owner,
                   [&field, edited = std::move(edited)](const QString& text) {
                     if (!field.property(kBeingPut).toBool()) edited(text);
                   });
}

}  // namespace tessaly
