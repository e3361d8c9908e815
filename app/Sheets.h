#pragma once

#include <functional>

#include <QObject>
#include <QPointer>

#include "platform/SiteRoot.h"

namespace tessaly {

class Checking;
class ReviewPlaces;
class SheetWindow;

// Puts macros on paper in the window. GUI thread.
class Sheets : public QObject {
  Q_OBJECT

 public:
  // Observes all.
  Sheets(const SiteRoot& root, const Checking& checking, ReviewPlaces& places, QWidget* window);
  ~Sheets() override;

  // The pages of what the active pane shows, to be printed; brought before the others when they are open.
  void print();
  // The same, and asks for a file to write them to.
  void write();

 private:
  void show();

  const SiteRoot& root_;
  const Checking& checking_;
  ReviewPlaces& places_;
  QWidget* owner_;
  QPointer<SheetWindow> window_;
};

}  // namespace tessaly
