// The yardsticks for a start: tessaly-bench-dialog [SHOWN HIDDEN], a dialog of the toolkit, empty or with as
// many labels of a line of text. Prints "ready RSS-BYTES ..." once it has been painted.
#include <cstdlib>

#include <QApplication>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QTimer>

#include "bench/start/Ready.h"

namespace {

constexpr int kColumns = 10;

class YardstickDialog : public QDialog {
 protected:
  void paintEvent(QPaintEvent* event) override {
    QDialog::paintEvent(event);
    QTimer::singleShot(0, this, [] { tessaly::bench::tellReady(); });
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
  YardstickDialog dialog;
  if (argc == 3) fill(dialog, std::atoi(argv[1]), std::atoi(argv[2]));
  dialog.resize(1180, 820);
  dialog.show();
  return QApplication::exec();
}
