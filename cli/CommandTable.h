#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace tessaly {

// Runs the program with the words after its own name; the result is the exit code. Never throws.
[[nodiscard]] int runCommandLine(const std::vector<std::string>& words, std::istream& in, std::ostream& out,
                                 std::ostream& errors);

}  // namespace tessaly
