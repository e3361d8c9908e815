// The yardstick for a start: an empty dialog of the toolkit. Prints "ready RSS-BYTES" once it has been
// painted.
#include <QApplication>
#include <QDialog>
#include <QPaintEvent>
#include <QTimer>

#include "bench/window/Ready.h"

namespace {

class EmptyDialog : public QDialog {
 protected:
  void paintEvent(QPaintEvent* event) override {
    QDialog::paintEvent(event);
    QTimer::singleShot(0, this, [] { tessaly::bench::tellReady(); });
  }
};

}  // namespace

int main(int argc, char** argv) {
  QApplication toolkit(argc, argv);
  EmptyDialog dialog;
  dialog.resize(1180, 820);
  dialog.show();
  return QApplication::exec();
}
