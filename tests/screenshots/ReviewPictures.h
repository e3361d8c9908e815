#pragma once

#include <functional>
#include <string>

#include <QAction>

#include "app/MainWindow.h"
#include "tests/support/WindowDriver.h"

namespace tessaly {

// Takes the windows that look at macros from above, each with something found in it: of the main window's
// pane A, which shows a faulty macro of the disk, beside pane B on a panel.
class ReviewPictures {
 public:
  using Save = std::function<void(QWidget&, const char*)>;

  ReviewPictures(MainWindow& window, const WindowDriver& user, const WindowContext& context, Save save)
      : window_(window), user_(user), context_(context), save_(std::move(save)) {}

  void take() const;

 private:
  // By what its action opens.
  template <class Window>
  [[nodiscard]] Window& opened(const char* act) const;
  // The pane has the keyboard.
  void goTo(Pane pane) const;
  void awaitEnd(const QWidget& window) const;
  void close(QWidget& window, const char* name) const;
  void takeCheck() const;
  void takeSearch() const;
  void takeReplacement() const;
  void takeCapture() const;
  void takeWorkplaces() const;
  void takeSheet() const;
  void takeGuide() const;

  MainWindow& window_;
  const WindowDriver& user_;
  const WindowContext& context_;
  Save save_;
};

}  // namespace tessaly
