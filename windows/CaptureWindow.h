#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QTimer>

#include "platform/HostAddress.h"
#include "windows/CaptureModel.h"
#include "windows/ReviewWindow.h"
#include "windows/ReviewWork.h"

namespace Ui {
class CaptureWindow;
}

namespace tessaly {

inline constexpr std::chrono::milliseconds kCapturePatience{5000};

// The pane's macro as it is now. Texts are plain.
struct CaptureSubject {
  QString heading;
  QString refusal;             // why nothing can be taken over into it; empty where it can
  std::optional<Macro> macro;  // none while the pane shows none
  std::string place = {};      // where it belongs: the same for the same macro when it is opened again
};

// The way to the panel as it is now.
struct CaptureLine {
  QString trouble;  // why it cannot be asked; empty where it can
  HostAddress address = {};
  unsigned connection = 0;  // another number for every connection: what was asked on one is lost with it
};

// What is to be taken over, as one step. `shown` is what the pane held when it was asked for, and `taken`
// what the edit makes of it: when the pane holds something else by now nothing is taken.
struct CaptureTake {
  Macro shown;
  SetValues edit;
  Expected<Macro> taken;
};

// What the window is handed; all is called on the GUI thread.
struct CaptureWays {
  std::function<CaptureSubject()> subject;
  std::function<std::vector<int>()> selected;  // commands, in their order
  std::function<CaptureLine()> line;
  // Made once; its answers come on the GUI thread.
  std::function<std::unique_ptr<PanelQuestions>(PanelQuestions::Taker taker)> questions;
  // Gives the reason when nothing was taken, else nothing.
  std::function<QString(const CaptureTake& take)> take;
  std::function<QString(const Failure&)> failureText;     // for people
  std::chrono::milliseconds patience = kCapturePatience;  // until what has not come is told
};

// The panel's current values beside those of a pane's macro, and taking over those that are ticked. Nothing
// changes before that, and nothing that the panel or its line does holds the window up: what has not come is
// told, is taken when it comes late, and can be asked for again. What is taken over is put together on
// another thread, and the window does not close before it is handed on. GUI thread.
class CaptureWindow : public ReviewWindow {
  Q_OBJECT

 public:
  // The dictionary and the lists of `lines` outlive it.
  CaptureWindow(CaptureWays ways, const LineContext& lines, const LineOptions& options,
                QWidget* owner = nullptr);
  ~CaptureWindow() override;

  // Chosen again: begins anew with the selected commands when several are, else with all. The ticks stay when
  // it shows just those, none of them has changed, and the line is the one that was asked.
  void beginAgain();

 public slots:
  // The macro may have changed.
  void follow();
  // The line may have gone, or come back.
  void look();
  void reject() override;

 private:
  using Taking = ReviewWork<CaptureTake>;

  void setUpTable();
  void setUpButtons();
  void beginWith(std::vector<int> selected);
  void begin();
  void ask();
  void take(const std::vector<PanelAnswer>& answers);
  void giveUp();
  void takeOver();
  void handOver(const Outcome& outcome);
  void toggleCurrent();
  void keepPlace();
  void returnToPlace();
  void tell(const QString& text);
  void tellNothing(const QString& why);
  [[nodiscard]] CaptureLine line() const;
  [[nodiscard]] QString countsText(const Capture::Counts& counts) const;
  void showControls();

  const CaptureWays ways_;
  std::unique_ptr<Ui::CaptureWindow> ui_;
  CaptureModel model_;
  CaptureSubject subject_;
  std::vector<int> selected_;                 // when it was opened; what the choice offers
  HostAddress address_;                       // of the panel that was asked first
  unsigned connection_ = 0;                   // that was asked last
  std::optional<std::size_t> current_, top_;  // rows of the capture, while the list is made anew
  QTimer patience_;
  QTimer glimpse_;  // the window is not painted anew until then
  std::unique_ptr<PanelQuestions> questions_;
  std::optional<CaptureTake> taken_;  // once it is put together
  bool closing_ = false;              // once it is handed on
  Taking taking_;
};

}  // namespace tessaly
