#pragma once

#include <array>
#include <functional>

#include <QString>

#include "model/Macro.h"
#include "model/MacroEdit.h"
#include "review/MacroDiff.h"

namespace tessaly {

// One of the two macros of a comparison, as it is now. Texts are plain.
struct CompareSide {
  QString name;     // in sentences and on buttons: "A", "the target"
  QString heading;  // where it belongs
  QString refusal;  // why nothing can be taken into it; empty where it can
  QString trouble;  // why there is nothing to compare; empty with a content
  // Reads what it holds. Runs on another thread, perhaps when nobody waits for it any more, and therefore
  // touches nothing that may have gone by then.
  std::function<Expected<Macro>()> content;
};

// What is to be taken into a side, as one step of that name. `shown` is what the side held when it was
// compared, and `taken` what the edit makes of it: when it holds something else by now nothing is taken.
struct CompareTake {
  Side into = Side::kA;
  TakeCommands edit;
  Macro shown;
  QString step;
  Expected<Macro> taken;
};

// What a window that compares is handed. All but `content` is called on the GUI thread.
struct CompareWays {
  std::function<CompareSide(Side)> side;            // as it is now
  std::function<QString(const CompareTake&)> take;  // gives the reason when nothing was taken, else nothing
  std::function<void()> readAgain;                  // may be missing; ends in `CompareWindow::follow`
  std::function<QString(const Failure&)> failureText;  // for people
};

inline constexpr std::array kSides{Side::kA, Side::kB};
[[nodiscard]] constexpr Side otherSide(Side side) { return side == Side::kA ? Side::kB : Side::kA; }
[[nodiscard]] constexpr std::size_t sideIndex(Side side) { return side == Side::kA ? 0 : 1; }

}  // namespace tessaly
