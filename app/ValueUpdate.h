#pragma once

#include <array>
#include <atomic>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include <QObject>
#include <QTimer>

#include "app/MacroOperations.h"
#include "link/PanelSubscriptions.h"

namespace tessaly {

// Fills the values of a macro's commands with the panel's current ones: one update at a time, for one pane.
// It ends 500 ms after the last value came. GUI thread; values from the library's thread are queued, many in
// one step.
class ValueUpdate : public QObject {
  Q_OBJECT

 public:
  ValueUpdate(std::array<PaneAccess, kPanes.size()> panes, const FunctionDictionary& dictionary,
              const PanelConnection& connection, PanelSubscriptions& subscriptions, Messages& messages);

  void start(Pane pane);
  // A macro was selected in a pane: another update may start. What is registered goes when the timer fires.
  void endBusy() { marker_ = kIdle; }
  [[nodiscard]] bool busy() const { return marker_ != kIdle; }

 signals:
  void changed();
  void said(const QString& text);

 private:
  static constexpr int kIdle = -1;
  struct Arrived {
    int update;
    std::string name, text;
  };
  struct Survey {
    bool classic = false;
    bool broken = false;  // an identifier without a destination: the update does not go on
    int withoutValue = 0;
  };

  [[nodiscard]] PaneAccess& room() { return panes_[index(pane_)]; }
  [[nodiscard]] std::vector<std::size_t> chosenCommands();
  [[nodiscard]] Survey survey(const std::vector<std::size_t>& chosen);
  void report(const Survey& survey);
  void request(const std::vector<std::size_t>& chosen);
  void arrived(const std::string& name, std::string text);
  void drain();
  void handle(const Arrived& value);
  bool setValue(std::size_t command, const std::string& text);
  void dropRegistrations();
  void finish();

  std::array<PaneAccess, kPanes.size()> panes_;
  const FunctionDictionary& dictionary_;
  const PanelConnection& connection_;
  PanelSubscriptions& subscriptions_;
  Messages& messages_;

  int marker_ = kIdle;          // 1 while pane A is updated, 2 for pane B
  std::atomic<int> update_{0};  // number of the update under way; older values do nothing
  Pane pane_ = Pane::kA;
  int selected_ = -1;  // as noted at the start; -1 updates all
  int notedCount_ = -1;
  int toUpdate_ = 0;
  int updated_ = 0;
  int heldRevision_ = 0;  // of the working copy when the document was held
  std::vector<std::string> registered_;
  std::unordered_map<std::string, std::vector<std::size_t>> commandsByFid_;
  QTimer quiet_;

  std::mutex mutex_;
  std::vector<Arrived> waiting_;  // guarded by mutex_
  bool queued_ = false;           // guarded by mutex_
};

}  // namespace tessaly
