#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <utility>

#include <QObject>
#include <QWidget>

#include "app/EventGate.h"
#include "link/PanelMacros.h"

namespace tessaly {

// Runs an operation on the panel's files beside the event loop: the call returns when it is over, while the
// window stays alive. The user's input waits, save for closing the window, which cancels; after 300 ms a
// progress with Cancel appears. What would change a pane waits until the call has returned. GUI thread.
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
  // The same for a single thing that blocks: reading a folder, writing a file. Nothing else of the program
  // goes on before 300 ms are over. What only reads may hang for ever, as on a network drive that is gone:
  // Cancel gives it up, its thread is left behind, and there is no result; so `work` owns what it touches.
  // What writes goes on to its end.
  enum class Kind { kReads, kWrites };
  template <class Result>
  [[nodiscard]] std::optional<Result> block(Kind kind, const QString& label, std::function<Result()> work) {
    auto task = std::make_shared<std::packaged_task<Result()>>(std::move(work));
    std::future<Result> result = task->get_future();
    const auto over = [&result](std::chrono::milliseconds patience) {
      return result.wait_for(patience) == std::future_status::ready;
    };
    return await(
               kind, label, [task] { (*task)(); }, over)
               ? std::optional<Result>(result.get())
               : std::nullopt;
  }
  // Ends what runs, as the user does who presses Cancel.
  void cancel();

  [[nodiscard]] PanelMacros& macros() { return macros_; }
  // Something is under way: the window must not be closed.
  [[nodiscard]] bool busy() const { return running_ != nullptr; }

 private:
  struct Work {
    std::function<void(const Tell& tell)> run;
    std::function<void()> cancel;
    QString cancelling;  // shown while a cancel takes its time; empty: nothing is
  };
  using Over = std::function<bool(std::chrono::milliseconds patience)>;
  [[nodiscard]] bool await(Kind kind, const QString& label, const std::function<void()>& task,
                           const Over& over);
  [[nodiscard]] bool runBeside(const QString& label, const Work& work);

  PanelMacros& macros_;
  EventGate& gate_;
  QWidget* window_;
  const Work* running_ = nullptr;
};

}  // namespace tessaly
