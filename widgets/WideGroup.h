#pragma once

#include <QGroupBox>

namespace tessaly {

// A group whose parts are wider than its title. A splitter asks what it holds for its least size hundreds of
// times while a window is laid out, and the toolkit's own group measures its title each time.
class WideGroup : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;
  [[nodiscard]] QSize minimumSizeHint() const override { return QWidget::minimumSizeHint(); }
};

}  // namespace tessaly
