#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>

#include "model/CommandLine.h"
#include "platform/SiteAccess.h"
#include "windows/ReviewScope.h"

namespace tessaly {

class ReviewPlaces;
class SearchWindow;

// Searches macros in the window: the search itself, and "Where Used" of a command. GUI thread.
class Searching : public QObject {
  Q_OBJECT

 public:
  // Observes all.
  Searching(SiteAccess site, const LineContext& knowledge, ReviewPlaces& places, QWidget* window);
  ~Searching() override;

  // Brought before the others when it is open already.
  void open();
  // Adds to a menu what the one command that is selected in a pane names; nothing without one.
  void addWhereUsed(QMenu& menu, const MacroCommand& command);

 private:
  [[nodiscard]] SearchWindow& window();

  SiteAccess site_;
  LineContext knowledge_;
  ReviewPlaces& places_;
  QWidget* owner_;
  QPointer<SearchWindow> window_;
};

}  // namespace tessaly
