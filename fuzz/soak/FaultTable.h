#pragma once

#include <string>

namespace tessaly {

// Which cells of faults and operations: all; those where fault and operation meet; or of these enough for a
// test that runs often.
enum class FaultCells { kSome, kMet, kAll };

// Every fault of the simulated panel at every operation of the window that touches the panel. After each: the
// window is usable, the strip tells what is true, no thread is left, working copies are whole, the target is
// old or new, and a new connection to the healed panel opens a macro.
//
// `only` picks cells by a part of "fault at operation". Prints a line a failed cell, or every one when
// `told`, and the counts; true when none failed.
[[nodiscard]] bool runFaultTable(FaultCells which, const std::string& only, bool told);

}  // namespace tessaly
