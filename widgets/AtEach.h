#pragma once

#include <functional>

#include <QEvent>
#include <QTableView>

namespace tessaly {

// Does it now and at each such event of the widget, e.g. when it is given another font.
void nowAndAtEach(QEvent::Type change, QWidget& widget, std::function<void()> act);

// Rows a little higher than their text, also when it becomes larger.
void keepRowHeight(QTableView& table);

}  // namespace tessaly
