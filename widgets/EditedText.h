#pragma once

#include <utility>

#include <QLineEdit>

namespace tessaly {

// Rather than `textEdited` and `isModified`, which know the keyboard only: a screen reader's hands put a text
// in whole. GUI thread.

// Fills a field; that is no edit.
inline constexpr const char* kBeingPut = "beingPut";  // property
inline void putText(QLineEdit& field, const QString& text) {
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
