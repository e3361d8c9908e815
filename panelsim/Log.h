#pragma once

#include <functional>
#include <string>

namespace tessaly {

// Takes one line about what the simulated panel does, without its end. Called from any of its threads, one at
// a time or several at once, with none of its locks held.
using Log = std::function<void(const std::string& line)>;

}  // namespace tessaly
