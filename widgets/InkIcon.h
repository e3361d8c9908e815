#pragma once

#include <functional>

#include <QIcon>
#include <QPalette>
#include <QRectF>

class QPainter;

namespace tessaly {

using InkDrawing = std::function<void(QPainter& painter, const QRectF& room, const QColor& ink)>;

// Draws in the colour that texts of the role have in the program's palette, each time that it is shown: at
// any size, sharp, disabled or selected as they are, and in other colours as soon as the palette is another
// one.
[[nodiscard]] QIcon inkIcon(QPalette::ColorRole role, InkDrawing draw);

}  // namespace tessaly
