#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <string>

#include "app/MainWindow.h"
#include "app/MessageBoxes.h"
#include "fuzz/soak/DialogAnswers.h"
#include "model/MacroHistory.h"
#include "panelsim/PanelSimulator.h"
#include "tests/support/TestSite.h"
#include "tests/support/WindowDriver.h"

namespace tessaly {

// The functions of the sample site, read once.
[[nodiscard]] const FunctionDictionary& deskDictionary();

// A simulated panel over a folder of its own, with the sample site's values. Port 0 takes any free one.
struct DeskPanel {
  DeskPanel(const std::string& address, std::uint16_t controlPort, std::uint16_t ftpPort);

  [[nodiscard]] static std::string file(int workplace, int number);  // as `tree` takes it
  [[nodiscard]] std::string addressText() const;
  // Throw when the simulator does not do what it is asked.
  void setFaults(const PanelFaults& faults);
  void begin();

  TestSite tree;
  PanelSimulator simulator;
};

// The program's main window on a copy of the sample site, with the program's own message boxes, and two
// simulated panels on one pair of ports. GUI thread.
class Desk {
 public:
  explicit Desk(std::chrono::milliseconds connectTimeOut);
  ~Desk();
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  // Opens the window anew, as another start of the program would.
  void openWindow();

  [[nodiscard]] static const PaneDescriptor::ControlIds& ids(Pane pane) {
    return kPaneDescriptors[index(pane)].ids;
  }
  [[nodiscard]] std::string strip() const;
  [[nodiscard]] std::string caption(int button) const;
  [[nodiscard]] bool enabled(int control) const { return driver->control<QWidget>(control).isEnabled(); }
  [[nodiscard]] bool visible(int control) const { return driver->control<QWidget>(control).isVisible(); }
  [[nodiscard]] bool edited(Pane pane) const { return visible(ids(pane).saveChanges); }
  [[nodiscard]] bool hasRow(int list, const std::string& text) const;
  // Gives the window the keyboard, which without a window manager stays with nobody after a dialog.
  void activate() const;
  // Presses a button and answers what opens; throws what an answer threw.
  void press(int button, const DialogAnswers::Answer& answer = {});
  // The same with an entry of a menu, the keyboard being in the pane.
  void choose(Pane pane, const char* entry, const DialogAnswers::Answer& answer = {});
  void typeAddress(Pane pane, const std::string& text);
  // Until everything that is queued has run, and whatever comes within `time`.
  void settle(std::chrono::milliseconds time) const;

  [[nodiscard]] static PanelClient& client();
  [[nodiscard]] static bool lineUp() { return client().state() == kPanelConnected; }
  // Until all that the panel has sent on the connection has arrived; false when nothing comes any more.
  [[nodiscard]] bool passValues(DeskPanel& panel);

  // Of this process.
  [[nodiscard]] static std::size_t threads();
  [[nodiscard]] static std::size_t memory();  // resident bytes

  TestSite site;
  DeskPanel first, second;
  DialogAnswers dialogs;
  std::unique_ptr<MainWindow> window;
  std::unique_ptr<WindowDriver> driver;

 private:
  MessageBoxes messages_;
  MacroHistory history_;
  DecodingLists lists_;
  PanelMacros macros_;
  WindowContext context_;

  void passed(const std::string& name, const ParameterValue& value);
  int passes_ = 0;
  std::atomic<int> passed_{0};
};

}  // namespace tessaly
