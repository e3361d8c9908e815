#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

#include <QLineEdit>
#include <QTimer>

#include "review/MacroCheck.h"
#include "windows/ReplaceModel.h"
#include "windows/ReviewWindow.h"
#include "windows/ReviewWork.h"

namespace Ui {
class ReplaceWindow;
}

namespace tessaly {

// Writes a batch on another thread. What is to stop is put back as far as it was written.
using ReplaceJob =
    std::function<Expected<ReplacedBatch>(std::vector<BatchItem> items, const std::stop_token& stop)>;

// What the window works with; the reference outlives it.
struct ReplaceSurroundings {
  const SiteRoot& root;
  std::function<CheckContext()> knowledge;  // what it refers to outlives the window
  std::function<std::vector<ReviewScope>()> scopes;
  // Why a macro is left out just now, as one that a pane shows with unsaved changes; empty otherwise.
  std::function<QString(const MacroPlace& place)> leftOut;
  // To write them: files all or none.
  std::function<ReplaceJob(const std::string& title)> job;
  // Whether macros with errors may go to a panel all the same, `of` with those that have none; asks.
  std::function<bool(const std::vector<FaultyMacro>& faulty, std::size_t of)> maySend;
  // Does it once nothing else waits for the user; what waits already is replaced.
  std::function<void(std::function<void()> act)> whenFree;
  std::function<QString(const Failure& failure)> failureText;  // on any thread
};

// Replaces in many macros by a rule (docs/replace.md), which is typed or put together from fields: first a
// preview with a tick a command, and then one batch, once what goes to a panel has been looked at. Reads and
// writes on threads of its own; while it writes it does not close, but cancels. GUI thread.
class ReplaceWindow : public ReviewWindow {
  Q_OBJECT

 public:
  explicit ReplaceWindow(ReplaceSurroundings surroundings, QWidget* owner = nullptr);
  ~ReplaceWindow() override;

  // What became of what the user wanted.
  void tell(const QString& text);
  [[nodiscard]] bool writing() const { return making_.running() || waits_ || writing_.running(); }
  // Gives up what is under way.
  void cancel();

 public slots:
  void reject() override;

 signals:
  void openWanted(const tessaly::ReviewedPlace& place, int command);
  // A batch has written these, and can be undone as one.
  void replaced(const QString& name, const std::vector<tessaly::BatchTrace>& traces);
  // What a panel holds there could not be found out.
  void leftUnknown(const tessaly::MacroPlace& place);

 private:
  using Reading = ReviewWork<FoundReplacement>;
  using Writing = ReviewWork<ReplacedBatch>;
  // What is to be written, and those of it that go to a panel.
  struct Made {
    std::vector<BatchItem> items;
    std::vector<FaultyMacro> faulty;
    std::size_t toPanels = 0;
  };
  using Making = ReviewWork<Made>;
  // A macro of the preview, by its number, with the findings of these ticks.
  struct Judged {
    std::size_t macro;
    Macro content;
    std::vector<bool> ticked;
    RetargetProposals proposals;
  };
  using Judging = ReviewWork<Judged>;

  void setUpFields();
  void setUpTable();
  void compose();
  [[nodiscard]] Expected<MacroRetarget> retarget();
  void preview();
  void take(std::vector<FoundReplacement> found, Reading::Progress progress);
  void endReading(const Outcome& outcome);
  void replace();
  void endMaking(const Outcome& outcome);
  void askToSend();
  void write();
  void endWriting(const Outcome& outcome);
  [[nodiscard]] QString outcomeText(std::size_t item) const;
  void judge();
  void openCurrent();
  void showControls();
  [[nodiscard]] QString summary() const;

  const ReplaceSurroundings surroundings_;
  std::unique_ptr<Ui::ReplaceWindow> ui_;
  ReplaceModel model_;
  QString what_;  // was looked at
  QString off_;   // the rules that do not count in the preview
  std::string rule_;
  std::size_t seen_ = 0;
  std::vector<std::size_t> items_;  // the macros that are being written
  Made made_;
  bool wanted_ = false;  // the replacement that is being made
  bool waits_ = false;   // to ask about it
  ReplacedBatch written_;
  bool closing_ = false;                            // once nothing is written any more
  int previews_ = 0;                                // so far; findings of an earlier one are dropped
  int judged_ = 0;                                  // the one that is being judged
  QTimer judgeDue_;                                 // until the findings are told anew
  std::function<Expected<MacroRetarget>()> again_;  // the rule of the preview, on any thread
  Reading reading_;
  Making making_;
  Writing writing_;
  Judging judging_;
};

}  // namespace tessaly
