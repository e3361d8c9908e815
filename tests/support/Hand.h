#pragma once

#include <functional>
#include <stdexcept>
#include <string>

#include <QApplication>
#include <QListView>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace tessaly {

// A hand with a mouse over a list: the events of wheel and buttons, as a person causes them.
class Hand {
 public:
  // Turns the wheel down until `seen` holds.
  static void turnWheel(QListView& list, const std::function<bool()>& seen) {
    // One step of the wheel scrolls by several rows; fine wheels send less at a time.
    constexpr int kFineStep = 40;  // eighths of a degree, for one row
    const QPointF at(20, 10);
    while (!seen()) {
      const int before = list.verticalScrollBar()->value();
      QWheelEvent wheel(at, list.viewport()->mapToGlobal(at), {}, {0, -kFineStep}, Qt::NoButton,
                        Qt::NoModifier, Qt::NoScrollPhase, false);
      QApplication::sendEvent(list.viewport(), &wheel);
      if (list.verticalScrollBar()->value() == before) throw std::runtime_error("scrolled in vain");
    }
  }

  // Scrolls until the row is seen, and double-clicks there.
  static void doubleClickOn(QListView& list, const QString& beginning) {
    const QModelIndexList found = list.model()->match(list.model()->index(0, 0), Qt::DisplayRole, beginning,
                                                      1, Qt::MatchStartsWith | Qt::MatchCaseSensitive);
    if (found.isEmpty()) throw std::runtime_error("no row " + beginning.toStdString());
    turnWheel(list,
              [&] { return list.viewport()->rect().contains(list.visualRect(found.first()).center()); });
    doubleClick(list, found.first().row());
  }

  // Where the row is when the hand begins, whatever comes of the first click.
  static void doubleClick(QListView& list, int row) {
    QWidget* viewport = list.viewport();
    const QPoint at(20, list.visualRect(list.model()->index(row, 0)).center().y());
    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, at);
    QApplication::processEvents();
    QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, at);
  }

  // The text of the first row that is seen.
  [[nodiscard]] static std::string firstSeen(const QListView& list) {
    return list.indexAt({20, 2}).data().toString().toStdString();
  }
};

}  // namespace tessaly
