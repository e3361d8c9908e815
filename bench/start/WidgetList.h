#pragma once

#include <QWidget>

namespace tessaly::bench {

// Writes the widgets of a window as UTF-8 lines for a program that builds the same ones of the toolkit's:
//   PARENT <tab> KIND <tab> SHOWN <tab> ROW <tab> COLUMN <tab> ROWS <tab> COLUMNS <tab> TEXT
// PARENT is the line of the parent, from 0, and -1 of the window; KIND the toolkit's class; SHOWN 0 or 1;
// ROW, COLUMN, ROWS and COLUMNS its cells in a grid that has the parent's other children as they lie, from 0,
// and of the window its place and size in pixels; TEXT what is written on it, with spaces for new lines, or
// the rows of a list with kRowEnd between them. What the toolkit makes with a widget, as its scroll bars, has
// no line.
inline constexpr QChar kRowEnd = u'\x1f';
void listWidgets(const QWidget& window, const char* file);

// Tells that this program is ready, with its widgets; see Ready.h.
void tellWidgets();

}  // namespace tessaly::bench
