#pragma once

#include <optional>

#include <QDialog>
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
  // Adds to a menu what a command names. A search from a dialog that holds up all other windows is a window
  // of that dialog; what is opened from there is shown once the dialog has gone.
  void addWhereUsed(QMenu& menu, const MacroCommand& command, QDialog* dialog = nullptr);

 private:
  struct Wanted {
    ReviewedPlace place;
    int command;
  };

  [[nodiscard]] SearchWindow* make(QWidget* owner);
  [[nodiscard]] SearchWindow& window();
  [[nodiscard]] SearchWindow& windowOver(QDialog& dialog);

  SiteAccess site_;
  LineContext knowledge_;
  ReviewPlaces& places_;
  QWidget* owner_;
  QPointer<SearchWindow> window_;
  std::optional<Wanted> later_;  // behind a dialog
};

}  // namespace tessaly
