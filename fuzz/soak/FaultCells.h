#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/soak/Desk.h"
#include "fuzz/soak/MacroText.h"

namespace tessaly {

inline constexpr std::chrono::milliseconds kCellConnectTime{600};
inline constexpr const char* kSnapshot = "c:\\saved\\panel.zip";  // that is made
inline constexpr const char* kDiskFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
inline constexpr int kFirstNumber = 0, kOpenNumber = 7, kNewNumber = 33;  // macros of the panel's workplace 1
inline constexpr const char* kRestored =
    "<macro name=\"Restored\"><data></data></macro>";  // macro 7, of a snapshot
inline constexpr int kUpdatable = 4;                   // commands of the open macro

// How far pane A has come with the first panel before the fault begins.
enum class Stage { kNotConnected, kConnected, kWorkplace, kMacro, kBothOnPanel, kEdited };

struct Fault;

// One operation of the window in pane A.
struct Operation {
  const char* name;
  Stage stage;
  bool usesControl, usesFiles;
  int sent;  // values that came on the connection before it
  int half;  // and that come before the line breaks in its middle
  // What it works on, as "panel:" or "disk:" and a number; empty for none.
  std::string target;
  // What the strip begins with when that is done; when it is not, with `failed`, or "NOT " and the same.
  std::string verdict;
  void (*act)(Desk& desk, const Fault& fault);
  std::string failed = "NOT " + verdict;
  bool ofMany = false;  // waits for a panel many times, which is too long for a test
};

struct Fault {
  const char* name;
  bool ofControl, ofFiles;
  bool losesLine;   // the connection ends
  bool valuesCome;  // all values, in time
  void (*begin)(Desk& desk, const Operation& operation);
  bool breaksOff = false;  // it ends in the middle of an operation's values
  bool stands = false;     // nothing would ever end a transfer but its cancel
};

[[nodiscard]] const std::vector<Fault>& panelFaults();
[[nodiscard]] const std::vector<Operation>& windowOperations();

// Puts both panels' and the disk's macros back to the beginning.
void layOutMacros(Desk& desk);
// Brings pane A to the stage on the healthy first panel, and pane B to a macro of the disk, or for
// kBothOnPanel to the panel's first macro.
void bringTo(Desk& desk, Stage stage);
// The macro that stands open at kMacro: commands with values of their own on the panel.
[[nodiscard]] const std::string& openMacroBytes();
[[nodiscard]] std::vector<std::string> openMacroValues();  // names of the panel's values

}  // namespace tessaly
