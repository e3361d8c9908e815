#pragma once

namespace tessaly {

// Before the toolkit starts: keeps its remarks on surroundings that it can work in off the terminal.
void quietToolkit();

}  // namespace tessaly
