#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include <QObject>
#include <QWidget>

#include "app/EventGate.h"
#include "link/PanelMacros.h"

namespace tessaly {

// Of a failure (kCancelled): the disk was just putting a file in its place, or taking it away.
inline constexpr const char* kMayBeDoneYet = "was cancelled, but the disk may do it yet";

// Runs what takes its time beside the event loop: the call returns when it is over, while the window stays
// alive. After 300 ms a progress says what is waited for. The user's input waits, save for the progress's own
// and for closing the window, which is done afterwards; what would change a pane waits until the call has
// returned (EventGate). So no second work begins meanwhile, whoever asks for it. GUI thread.
class PanelTransfer : public QObject {
  Q_OBJECT

 public:
  using Operation = std::function<TransferOutcome(PanelMacros& macros)>;

  PanelTransfer(PanelMacros& macros, EventGate& gate, QWidget* window)
      : macros_(macros), gate_(gate), window_(window) {}

  // `operation` runs on a thread of its own and touches nothing of the window.
  [[nodiscard]] TransferOutcome run(const QString& label, Operation operation);

  // The same for other long work. `work` runs on a thread of its own, and may tell from there how far it is,
  // in thousandths; `cancel` is called here, and empty where there is no way back. False when there was no
  // thread to be had.
  using Tell = std::function<void(int thousandths)>;
  [[nodiscard]] bool runLong(const QString& label, const std::function<void(const Tell& tell)>& work,
                             const std::function<void()>& cancel);
  // Reads what may block for ever, as on a network drive that is gone. Nothing else of the program goes on
  // before 300 ms are over. Cancel gives it up, its thread is left behind, and there is no result; so `work`
  // owns what it touches.
  template <class Result>
  [[nodiscard]] std::optional<Result> block(const QString& label, std::function<Result()> work) {
    auto task = std::make_shared<std::packaged_task<Result()>>(std::move(work));
    std::future<Result> result = task->get_future();
    const bool over =
        await({label, [task] { (*task)(); }, isOver(result), [] { return true; }, kQuiet, false});
    return over ? std::optional<Result>(result.get()) : std::nullopt;
  }
  // Writes such a thing: Cancel is offered after two seconds, and leaves the thread behind, which puts no
  // file in its place from then on (WayBack). The outcome then tells what it has done: nothing (kCancelled),
  // all but for the last flushing (kUnflushed), or that nobody knows (kMayBeDoneYet). Who writes next waits
  // until that thread is through.
  Outcome write(const QString& label, std::function<Outcome()> work);
  // The same of what the program keeps for itself, which `work` shares with the window: it is done to its
  // end. False when the user has cancelled meanwhile, and nothing more is to be done.
  bool finish(const QString& label, const std::function<void()>& work);

  // Ends what runs, as the user does who presses Cancel. Writing goes on: who saves and closes wants it
  // saved; but for `kWriting`, where Cancel is offered.
  enum class End { kOthers, kWriting };
  void cancel(End end = End::kOthers);
  // Whether a thread that was left behind is still at it.
  [[nodiscard]] static bool leftBehind() { return writing_ > 0; }

  [[nodiscard]] PanelMacros& macros() { return macros_; }
  // Something is under way: the window must not be closed.
  [[nodiscard]] bool busy() const { return running_ != nullptr; }

 private:
  struct Work {
    std::function<void(const Tell& tell)> run;
    std::function<void()> cancel;
    QString cancelling;   // shown while a cancel takes its time; empty: nothing is
    bool writes = false;  // a file of the disk
  };
  static constexpr std::chrono::milliseconds kQuiet{300};  // what is over by then shows nothing
  using Over = std::function<bool(std::chrono::milliseconds patience)>;
  struct Waiting {
    QString label;
    std::function<void()> task;
    Over over;
    std::function<bool()> leave;        // of a cancel: the wait ends at once; else once it is over
    std::chrono::milliseconds offered;  // Cancel, from then on
    bool writes;
  };
  template <class Result>
  [[nodiscard]] static Over isOver(const std::future<Result>& result) {
    return [&result](std::chrono::milliseconds patience) {
      return result.wait_for(patience) == std::future_status::ready;
    };
  }
  // False when it was left.
  [[nodiscard]] bool await(const Waiting& waiting);
  [[nodiscard]] bool showWaiting(const Waiting& waiting);
  [[nodiscard]] bool runBeside(const QString& label, const Work& work);

  PanelMacros& macros_;
  EventGate& gate_;
  QWidget* window_;
  const Work* running_ = nullptr;
  std::shared_ptr<std::mutex> turn_ = std::make_shared<std::mutex>();  // of who writes
  inline static std::atomic<int> writing_ = 0;                         // threads
};

}  // namespace tessaly
