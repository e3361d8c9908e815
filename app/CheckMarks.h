#pragma once

#include <array>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <variant>

#include <QObject>
#include <QTimer>

#include "app/PaneState.h"
#include "review/MacroCheck.h"
#include "widgets/PostTo.h"

namespace tessaly {

// What a check finds in the macros that the panes show: looked for on a thread of its own whenever one
// has changed and rests, so that a check costs no edit its time, and marked at the lines of the commands.
// What was found before a change is forgotten with it. GUI thread.
class CheckMarks : public QObject {
  Q_OBJECT

 public:
  explicit CheckMarks(const PaneAccesses& panes);

  // From now on, by these rules; also anew.
  void begin(const CheckContext& context);
  // Anew, when decoding lists have been written since; they are looked at behind this.
  void lookAtLists();
  // Null while it is not known, or nothing is shown.
  [[nodiscard]] const Findings* findings(Pane pane) const;

 signals:
  void found(Pane pane);
  void listsWritten();  // and what is found by them is looked for anew

 private:
  struct Wanted {
    int revision;  // of the working copy
    std::variant<Macro, KeyFile> content;
  };
  struct Found {
    int revision = -1;  // that was asked for last
    std::optional<Findings> findings;
  };

  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  void look(Pane pane);
  void ask(Pane pane);
  void hand();
  void beginWork();
  [[nodiscard]] static std::optional<Wanted> wanted(const WorkingCopy& copy);
  void take(Pane pane, int revision, Findings findings);
  void work(const std::stop_token& stop);

  PaneAccesses panes_;
  std::array<Found, kPanes.size()> found_;
  bool begun_ = false;
  std::array<bool, kPanes.size()> due_{};  // asked for, and not handed to the worker
  QTimer rest_;

  const Post post_ = postTo(this);

  std::mutex mutex_;  // guards what follows, up to the thread
  std::condition_variable_any asked_;
  std::array<std::optional<Wanted>, kPanes.size()> wanted_;
  std::optional<CheckContext> context_;  // to go on with
  bool listsDue_ = false;                // to be looked at
  std::jthread worker_;                  // the last member: ended first
};

}  // namespace tessaly
