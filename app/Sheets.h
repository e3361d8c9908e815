#pragma once

#include <functional>

#include <QObject>
#include <QPointer>

#include "model/CommandLine.h"
#include "platform/SiteAccess.h"
#include "review/CheckRules.h"

namespace tessaly {

class ReviewPlaces;
class SheetWindow;

// Puts macros on paper in the window. GUI thread.
class Sheets : public QObject {
  Q_OBJECT

 public:
  // Observes all; `frameRate` in frames a second.
  Sheets(SiteAccess site, const LineContext& knowledge, const int& frameRate, ReviewPlaces& places,
         QWidget* window);
  ~Sheets() override;

  // The pages of what the active pane shows, to be printed; brought before the others when they are open.
  void print();
  // The same, and asks for a file to write them to.
  void write();

 private:
  [[nodiscard]] CheckContext context() const;
  void show();

  SiteAccess site_;
  LineContext knowledge_;
  const int& frameRate_;
  ReviewPlaces& places_;
  QWidget* owner_;
  QPointer<SheetWindow> window_;
};

}  // namespace tessaly
