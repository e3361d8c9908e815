#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include <QLineEdit>

#include "review/MacroSearch.h"
#include "windows/HitRows.h"
#include "windows/ReviewWindow.h"
#include "windows/ReviewWork.h"

namespace Ui {
class SearchWindow;
}

namespace tessaly {

// What the window works with; the references outlive it.
struct SearchSurroundings {
  const SiteRoot& root;
  LineContext knowledge;
  std::function<std::vector<ReviewScope>()> scopes;
  std::function<QString(const Failure& failure)> failureText;  // on any thread
};

// Looks for commands in macros by a query (docs/find.md), which is typed or put together from fields, and
// lists them while it reads. GUI thread.
class SearchWindow : public ReviewWindow {
  Q_OBJECT

 public:
  explicit SearchWindow(SearchSurroundings surroundings, QWidget* owner = nullptr);
  ~SearchWindow() override;

  // Asks in what is of that kind now.
  void search(const QString& query, ReviewScope::Kind kind);
  // What became of what the user wanted.
  void tell(const QString& text);

 signals:
  void openWanted(const tessaly::ReviewedPlace& place, int command);

 private:
  using Work = ReviewWork<FoundHits>;

  void start();
  void take(std::vector<FoundHits> found, Work::Progress progress);
  void end(const Outcome& outcome);
  void openCurrent();
  void compose();
  void showWorking(bool working);
  [[nodiscard]] QString summary() const;

  const SearchSurroundings surroundings_;
  std::unique_ptr<Ui::SearchWindow> ui_;
  std::vector<std::pair<QLineEdit*, const char*>> fields_;  // and what a word of a query calls them
  QString what_;                                            // was looked at
  std::size_t seen_ = 0;
  Work work_;
};

}  // namespace tessaly
