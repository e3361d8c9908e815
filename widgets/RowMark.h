#pragma once

#include <QIcon>
#include <Qt>

class QPainter;

namespace tessaly {

// A sign beside a row that says that something about it is worth a look. The kinds differ by their shape:
// a ring, a triangle with an exclamation mark, a filled square with a cross, a tick.
enum class RowMark { kNone, kNote, kWarning, kError, kDone };

// Role of models; an int of the above.
inline constexpr int kRowMarkRole = Qt::UserRole + 1;

// Fills the square in the middle of `room`; `ink` is the colour of the text beside it.
void drawRowMark(QPainter& painter, RowMark mark, const QRectF& room, const QColor& ink);
// For views that have no place of their own for it.
[[nodiscard]] QIcon rowMarkIcon(RowMark mark);

}  // namespace tessaly
