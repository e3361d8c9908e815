#pragma once

#include <QColor>
#include <QPalette>
#include <QPushButton>

#include "app/PaneSubject.h"

namespace tessaly {

class ElidedLine;
class PanelBridge;

struct HeadingColours {
  QColor ground, ink, stripe;
};

// What stands on a live panel, or on a lost line, is on a ground of its own in every palette; ink on ground
// holds a contrast of 4.5 to 1.
[[nodiscard]] HeadingColours headingColours(const QPalette& palette, PaneSubject::Where where);

// The band over a pane's commands that says what they are: which macro, where it belongs, what is unsaved,
// what was done last. A lost line has a row of its own, with a button. Follows its owners by itself.
class PaneHeading : public QWidget {
  Q_OBJECT

 public:
  explicit PaneHeading(QWidget* parent = nullptr);

  // Once. All are observed, and only when one of them tells of a change.
  void follow(const PaneState& pane, const Browser& browser, const PanelConnection& connection,
              const PanelBridge& bridge, const MacroHistory& history);

  // Without it only a lost line is told.
  void showBand(bool shown);
  [[nodiscard]] bool showsBand() const;

  // For the way of the Tab key.
  [[nodiscard]] QPushButton& connectAgain() const { return *again_; }

 signals:
  void connectAgainPressed();

 private:
  class Band;
  void showSubject(const PaneSubject& subject);

  Band* band_;
  QWidget* lost_;
  ElidedLine* lostText_;
  QPushButton* again_;
};

}  // namespace tessaly
