#include "widgets/AtEach.h"

#include <utility>

#include <QHeaderView>

namespace tessaly {

namespace {

constexpr int kRowGap = 6;  // pixels between the text lines of two rows

class AtEach : public QObject {
 public:
  AtEach(QEvent::Type change, QWidget& widget, std::function<void()> act)
      : QObject(&widget), change_(change), act_(std::move(act)) {
    widget.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == change_) act_();
    return false;
  }

 private:
  QEvent::Type change_;
  std::function<void()> act_;
};

}  // namespace

void nowAndAtEach(QEvent::Type change, QWidget& widget, std::function<void()> act) {
  act();
  new AtEach(change, widget, std::move(act));
}

void keepRowHeight(QTableView& table) {
  nowAndAtEach(QEvent::FontChange, table, [&table] {
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + kRowGap);
  });
}

}  // namespace tessaly
