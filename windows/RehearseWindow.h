#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <QTimer>

#include "model/Macro.h"
#include "windows/RehearseModel.h"
#include "windows/RehearseNow.h"
#include "windows/RehearseSteps.h"
#include "windows/ReviewWindow.h"
#include "windows/ReviewWork.h"

namespace Ui {
class RehearseWindow;
}

namespace tessaly {

// The macro that is rehearsed, as it is now. Texts are plain.
struct RehearseSource {
  QString name;
  QString trouble;  // why there is none; empty with a content
  int opening = 0;  // another number for another macro
  // Reads it. Runs on another thread, and touches nothing that may go meanwhile.
  std::function<Expected<Macro>()> content = {};
};

// What the window is handed. Called on the GUI thread.
struct RehearseWays {
  std::function<RehearseSource()> source;
  std::function<QString()> panel;  // the name of the panel whose line stands; empty for none
  std::function<QString(const Failure&)> failureText;  // for people
  std::chrono::milliseconds patience = kPanelPatience;
};

// Plays a macro through without a panel: which value each command changes, and what they all are at any step
// and at the end. Beside a connected panel it shows what the values are there now, can start from those, and
// marks what the macro would make different. A replay runs on a thread of its own. GUI thread.
class RehearseWindow : public ReviewWindow {
  Q_OBJECT

 public:
  // The client, the dictionary and the lists outlive the window.
  RehearseWindow(RehearseWays ways, PanelClient& client, const LineContext& lines, const LineOptions& options,
                 QWidget* owner = nullptr);
  ~RehearseWindow() override;

 public slots:
  // The macro may have changed: it is replayed anew, and the window keeps its place.
  void follow();
  // The connection may have changed.
  void look() { now_.look(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Result {
    std::shared_ptr<const Rehearsal> rehearsal;
    std::optional<Failure> failure;
    int opening = 0;
  };

  void setUpTables();
  void setUpKeys();
  void replay();
  void take(const Result& result);
  void showMacro(const Result& result);
  void tellTrouble(const QString& trouble);
  void showNow();
  void goTo(int step);
  void standAt(int step);
  void goBy(int direction);
  void showStep();
  [[nodiscard]] std::optional<int> stepFor(int key) const;
  [[nodiscard]] int lastStep() const;

  RehearseWays ways_;
  std::unique_ptr<Ui::RehearseWindow> ui_;
  LineContext lines_;
  LineOptions options_;
  RehearseNow now_;
  RehearseModel after_;
  RehearseSteps steps_;
  std::shared_ptr<const Rehearsal> shown_;
  Rehearsal::Start start_;  // of the last replay
  int opening_ = 0;
  int step_ = 0;
  bool again_ = false;  // the macro, or what it starts from, has changed under the replay
  QTimer due_;          // until it is replayed anew
  QTimer told_;         // until what the panel has told is shown
  QTimer long_;         // until it is told that this takes a while
  ReviewWork<Result> work_;
};

}  // namespace tessaly
