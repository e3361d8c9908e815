#pragma once

#include <functional>
#include <memory>
#include <variant>
#include <vector>

#include "windows/ReviewWindow.h"
#include "windows/SheetJob.h"

class QPrinter;

namespace Ui {
class SheetWindow;
}

namespace tessaly {

// What the window works with; the references outlive it.
struct SheetSurroundings {
  const SiteRoot& root;
  std::function<CheckContext()> knowledge;  // with the rules as they are then
  std::function<std::vector<ReviewScope>()> scopes;
  std::function<QString(const Failure& failure)> failureText;
  std::function<std::chrono::year_month_day()> today;
  // Lets the user set the printer up; false: not to be printed.
  std::function<bool(QPrinter& printer, int pages, QWidget* over)> setUp;
};

// Macros on paper: shows the pages as they will be, prints them and writes them to a file. Reads, writes and
// prints on another thread. GUI thread.
class SheetWindow : public ReviewWindow {
  Q_OBJECT

 public:
  explicit SheetWindow(SheetSurroundings surroundings, QWidget* owner = nullptr);
  ~SheetWindow() override;

  // Puts on paper what is of that kind now.
  void make(ReviewScope::Kind kind);
  // Asks for a file once the pages are there.
  void writeWhenMade();

  // Asks the user for a printer, or a file: the sheet as it is shown.
  void print();
  void write();

 private:
  using Making = ReviewWork<MadeSheet>;
  using Putting = ReviewWork<std::monostate>;  // to a printer or a file

  [[nodiscard]] SheetOptions options() const;
  void fillChoices();
  void connectControls();
  void start();
  void layOutAgain();
  void take(std::vector<MadeSheet> made, Making::Progress progress);
  void end(const Outcome& outcome);
  void put(const QString& told, Putting::Job job);
  void showState();
  void showZoom();
  void showPage(int page);
  void tell(const QString& text);

  const SheetSurroundings surroundings_;
  std::unique_ptr<Ui::SheetWindow> ui_;
  MadeSheet made_;
  QString what_;     // is read
  QString putTold_;  // once it is there
  bool reading_ = false;
  bool writeDue_ = false;
  Making making_;
  Putting putting_;
};

}  // namespace tessaly
