#pragma once

#include <QElapsedTimer>
#include <QObject>

namespace tessaly::bench {

// Runs the event loop a turn at a time and measures the longest stretch in which the GUI thread did not begin
// to paint a window.
class StallWatch : public QObject {
 public:
  StallWatch();

  void turn();
  [[nodiscard]] double longest() const { return longest_; }  // seconds
  void reset() { longest_ = 0; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void endStretch();

  QElapsedTimer stretch_;
  double longest_ = 0;
};

}  // namespace tessaly::bench
