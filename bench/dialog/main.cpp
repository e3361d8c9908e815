// The yardsticks for a start, of the toolkit alone:
//   tessaly-bench-dialog                   an empty dialog
//   tessaly-bench-dialog SHOWN HIDDEN      with so many labels of a line of text
//   tessaly-bench-dialog FILE              the widgets of another program's window, see WidgetList.h
// Prints "ready RSS-BYTES SHOWN HIDDEN", the latter of widgets, once it has been painted.
#include <cstdlib>

#include <QApplication>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QTimer>

#include "bench/dialog/SameWidgets.h"
#include "bench/start/WidgetList.h"

namespace {

constexpr int kColumns = 10;

// Ends the program once the window has been painted.
class PaintWatch : public QObject {
 protected:
  bool eventFilter(QObject* window, QEvent* event) override {
    if (event->type() == QEvent::Paint) QTimer::singleShot(0, window, [] { tessaly::bench::tellWidgets(); });
    return false;
  }
};

void fill(QDialog& dialog, int shown, int hidden) {
  auto* grid = new QGridLayout(&dialog);
  for (int i = 0; i < shown + hidden; ++i) {
    auto* label = new QLabel(QStringLiteral("Label number %1").arg(i), &dialog);
    grid->addWidget(label, i / kColumns, i % kColumns);
    label->setHidden(i >= shown);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication toolkit(argc, argv);
  QWidget* window = argc == 2 ? tessaly::bench::sameWidgets(argv[1]) : new QDialog;
  if (argc != 2) window->resize(1180, 820);
  if (argc == 3) fill(static_cast<QDialog&>(*window), std::atoi(argv[1]), std::atoi(argv[2]));
  PaintWatch watch;
  window->installEventFilter(&watch);
  window->show();
  return QApplication::exec();
}
