// The yardsticks for a start, of the toolkit alone:
//   tessaly-bench-dialog                   an empty dialog
//   tessaly-bench-dialog SHOWN HIDDEN      with so many labels of a line of text
//   tessaly-bench-dialog FILE              the widgets of another program's window, see WidgetList.h
//   tessaly-bench-dialog --rest FILE       and then half a second of rest, and freed memory given back
// Prints "ready RSS-BYTES SHOWN HIDDEN", the latter of widgets, once it has been painted.
#include <cstdlib>
#include <malloc.h>
#include <memory>
#include <string_view>
#include <utility>

#include <QApplication>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QTimer>

#include "bench/dialog/SameWidgets.h"
#include "bench/start/Ready.h"
#include "bench/start/WidgetList.h"

namespace {

constexpr int kColumns = 10;

// Ends the program once the window has been painted, or later.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(bool rest) : rest_(rest) {}

 protected:
  bool eventFilter(QObject* window, QEvent* event) override {
    if (event->type() == QEvent::Paint)
      QTimer::singleShot(rest_ ? tessaly::bench::kRestMilliseconds : 0, window, [rest = rest_] {
        if (rest) malloc_trim(0);
        tessaly::bench::tellWidgets();
      });
    return false;
  }

 private:
  bool rest_;
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
  const bool rest = argc == 3 && std::string_view(argv[1]) == tessaly::bench::kRest;
  std::unique_ptr<QWidget> window;
  if (argc == 2 || rest) {
    window.reset(tessaly::bench::sameWidgets(argv[argc - 1]));
  } else {
    auto dialog = std::make_unique<QDialog>();
    dialog->resize(1180, 820);
    if (argc == 3) fill(*dialog, std::atoi(argv[1]), std::atoi(argv[2]));
    window = std::move(dialog);
  }
  PaintWatch watch(rest);
  window->installEventFilter(&watch);
  window->show();
  return QApplication::exec();
}
