#include "bench/start/WidgetList.h"

#include <algorithm>
#include <vector>

#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QScrollBar>
#include <QSplitterHandle>
#include <QTextStream>
#include <QVariant>

#include "bench/start/Ready.h"

namespace tessaly::bench {

namespace {

bool comesWithParent(const QWidget& widget) {
  const auto* menu = qobject_cast<const QMenu*>(&widget);  // the one behind the end of a bar has no title
  return widget.objectName().startsWith(QLatin1String("qt_")) ||
         (menu != nullptr && menu->title().isEmpty()) ||
         qobject_cast<const QScrollBar*>(&widget) != nullptr ||
         qobject_cast<const QSplitterHandle*>(&widget) != nullptr;
}

QLatin1String kind(const QWidget& widget) {
  const QMetaObject* of = widget.metaObject();
  while (*of->className() != 'Q') of = of->superClass();
  return QLatin1String(of->className());
}

QString textOn(const QWidget& widget) {
  QStringList texts;
  if (const auto* list = qobject_cast<const QAbstractItemView*>(&widget)) {
    for (int row = 0; row < list->model()->rowCount(); ++row)
      texts << list->model()->index(row, 0).data().toString().simplified();
    return texts.join(kRowEnd);
  }
  for (const char* of : {"text", "title", "windowTitle"}) texts << widget.property(of).toString();
  texts.removeAll(QString());
  return texts.join(u' ').simplified();
}

// Below scroll areas stands what is scrolled, without what holds it.
void collect(const QWidget& parent, std::vector<const QWidget*>& children) {
  for (const QObject* child : parent.children()) {
    if (!child->isWidgetType()) continue;
    const auto& widget = static_cast<const QWidget&>(*child);
    if (comesWithParent(widget))
      collect(widget, children);
    else
      children.push_back(&widget);
  }
}

class Lines {
 public:
  explicit Lines(QTextStream& out) : out_(out) {}

  void add(const QWidget& widget, int parent, const QRect& cells) {
    const int line = next_++;
    out_ << parent << '\t' << kind(widget) << '\t' << (widget.isVisible() ? 1 : 0) << '\t' << cells.y()
         << '\t' << cells.x() << '\t' << cells.height() << '\t' << cells.width() << '\t' << textOn(widget)
         << '\n';
    std::vector<const QWidget*> children;
    collect(widget, children);
    for (const QWidget* child : children) add(*child, line, cellsOf(child->geometry(), children));
  }

 private:
  // As many columns lie before an edge as children begin there, and rows likewise.
  static QRect cellsOf(const QRect& place, const std::vector<const QWidget*>& children) {
    const auto begun = [&](int (QWidget::*edge)() const, int before) {
      return static_cast<int>(
          std::ranges::count_if(children, [&](const QWidget* each) { return (each->*edge)() < before; }));
    };
    const int row = begun(&QWidget::y, place.y()), column = begun(&QWidget::x, place.x());
    return {column, row, std::max(1, begun(&QWidget::x, place.x() + place.width()) - column),
            std::max(1, begun(&QWidget::y, place.y() + place.height()) - row)};
  }

  QTextStream& out_;
  int next_ = 0;
};

}  // namespace

void listWidgets(const QWidget& window, const char* file) {
  QFile list(QString::fromLocal8Bit(file));
  if (!list.open(QIODevice::WriteOnly)) qFatal("cannot write %s", file);
  QTextStream out(&list);
  Lines(out).add(window, -1, window.geometry());
}

void tellWidgets() {
  const QWidgetList all = QApplication::allWidgets();
  const auto shown =
      std::count_if(all.begin(), all.end(), [](const QWidget* each) { return each->isVisible(); });
  tellReady(static_cast<int>(shown), static_cast<int>(all.size() - shown));
}

}  // namespace tessaly::bench
