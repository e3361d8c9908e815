#pragma once

#include <QMenuBar>

namespace tessaly {

// The menu "Review": what looks at macros from above.
class ReviewMenu : public QMenu {
  Q_OBJECT

 public:
  explicit ReviewMenu(QWidget* parent);

 signals:
  void checkPressed();
  void searchPressed();
  void whereUsedPressed();
  void replacePressed();
};

}  // namespace tessaly
