#pragma once

#include <string>

namespace tessaly::bench {

// tessaly-bench starts itself in these ways, so that a start is measured from the first instruction of a
// process.
inline constexpr const char* kStartWindow =
    "--start-window";                                        // ROOT: the program until its window can be used
inline constexpr const char* kIdleWindow = "--idle-window";  // ROOT: the same, and then half a second of rest
inline constexpr const char* kLoadFiles = "--load-files";    // ROOT: nothing but both interface files

// True when the arguments ask for one of them; it has then been done, and `result` is the exit code.
[[nodiscard]] bool runAsChild(int argc, char** argv, int& result);

// Where the programs of this build are.
[[nodiscard]] std::string programFolder();

}  // namespace tessaly::bench
