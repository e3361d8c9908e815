#pragma once

#include <future>
#include <string>
#include <unordered_map>
#include <vector>

#include <QObject>
#include <QTimer>

#include "app/EventGate.h"
#include "app/PaneState.h"
#include "link/PanelQuestions.h"
#include "widgets/Message.h"

namespace tessaly {

// Fills the values of a macro's commands with the panel's current ones: one update at a time, for one pane.
// It ends 500 ms after the last value came, once no handler is waiting in a loop of its own. Values are
// collected and become one edit of the working copy. GUI thread; values from the library's thread are queued,
// many in one step.
class ValueUpdate : public QObject {
  Q_OBJECT

 public:
  ValueUpdate(const PaneAccesses& panes, const FunctionDictionary& dictionary,
              const PanelConnection& connection, PanelClient& client, Messages& messages, EventGate& gate);

  void start(Pane pane);
  // A macro was selected in a pane: another update may start. What is registered goes when the timer fires.
  void endBusy();
  [[nodiscard]] bool busy() const { return marker_ != kIdle; }
  // Values for this pane are waited for, or are about to become its edit.
  [[nodiscard]] bool holds(Pane pane) const {
    return busy() && pane_ == pane && (questions_.missing() > 0 || quiet_.isActive());
  }
  // Gives the waiting up, by the user: what came is dropped.
  void cancel();
  // The line is gone: no value will come any more. True when there was something to wait for; what came is
  // dropped.
  [[nodiscard]] bool lineLost();

 signals:
  void said(const tessaly::Message& message);
  // For how many values is being waited, once that takes a while; empty when it is over.
  void waiting(const QString& text);

 private:
  static constexpr int kIdle = -1;
  struct Survey {
    bool classic = false;
    bool broken = false;  // an identifier without a destination: the update does not go on
    int withoutValue = 0;
    std::vector<std::string> names;  // of the values to ask for
  };

  // The macro with the first so many values.
  struct Prepared {
    std::size_t values = 0;
    std::future<Expected<Macro>> changed;
  };

  [[nodiscard]] PaneAccess& room() { return panes_[index(pane_)]; }
  [[nodiscard]] WorkingCopy& copy() { return room().state->copy; }
  [[nodiscard]] std::vector<std::size_t> chosenCommands();
  [[nodiscard]] bool one() const { return selected_.size() == 1; }
  [[nodiscard]] Survey survey(const std::vector<std::size_t>& chosen);
  void report(const Survey& survey);
  void request(const std::vector<std::size_t>& chosen, const std::vector<std::string>& names);
  void handle(const std::vector<PanelAnswer>& answers);
  void take(const PanelAnswer& answer);
  void workAhead();
  [[nodiscard]] bool prepare();
  void showWaiting();
  [[nodiscard]] QString obstacle();
  void look();
  [[nodiscard]] static QString gaveWay();
  void drop(const QString& why);
  void end();
  void finish();
  void finishPaneA();
  void finishPaneB();
  void tellNotDone(const Failure& failure);
  void dropQuestions();

  PaneAccesses panes_;
  const FunctionDictionary& dictionary_;
  const PanelConnection& connection_;
  Messages& messages_;
  EventGate& gate_;

  int marker_ = kIdle;  // 1 while pane A is updated, 2 for pane B
  Pane pane_ = Pane::kA;
  std::vector<int> selected_;  // as noted at the start; none updates all
  int toUpdate_ = 0;
  int updated_ = 0;
  int heldRevision_ = -1;  // of the working copy when the values were asked for
  SetValues values_;       // that came, in their order
  Prepared prepared_;
  WorkingCopy::Marks marks_;
  std::unordered_map<std::string, std::vector<std::size_t>> commandsByFid_;
  QTimer quiet_;
  QTimer patience_;    // until it is shown that the update waits
  QTimer ahead_;       // until something is done with the values ahead of the end
  QTimer afterwards_;  // until what came has been shown
  PanelQuestions questions_;
};

}  // namespace tessaly
