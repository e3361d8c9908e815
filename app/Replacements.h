#pragma once

#include <QObject>
#include <QPointer>

#include "app/EventGate.h"
#include "app/OpenMacros.h"
#include "windows/ReplaceWindow.h"

namespace tessaly {

class ReviewPlaces;

// Replaces in many macros in the window: what the panes show follows, and macros that they show with unsaved
// changes are left out. GUI thread.
class Replacements : public QObject {
  Q_OBJECT

 public:
  // Observes all; `frameRate` in frames a second.
  Replacements(SiteAccess site, const LineContext& knowledge, int frameRate, ReviewPlaces& places,
               OpenMacros& open, EventGate& gate, QWidget* window);
  ~Replacements() override;

  // Brought before the others when it is open already.
  void open();

 signals:
  // A batch was written, and can be undone as one.
  void replaced(const QString& name, const std::vector<tessaly::BatchTrace>& traces);

 private:
  [[nodiscard]] CheckContext context() const;
  [[nodiscard]] std::vector<ReviewScope> scopes() const;
  [[nodiscard]] QString leftOut(const MacroPlace& place) const;
  void follow(const QString& name, const std::vector<BatchTrace>& traces);

  SiteAccess site_;
  LineContext knowledge_;
  int frameRate_;
  ReviewPlaces& places_;
  OpenMacros& open_;
  EventGate& gate_;
  QWidget* owner_;
  QPointer<ReplaceWindow> window_;
  std::vector<std::pair<QString, std::vector<BatchTrace>>> done_;  // that the panes have not followed yet
};

}  // namespace tessaly
