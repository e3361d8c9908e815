#pragma once

#include <string>
#include <vector>

namespace tessaly {

// What `main` was called with, the program's name first: UTF-8 where the system has characters, else its
// bytes.
[[nodiscard]] std::vector<std::string> programWords(int count, char** words);

// Lets the standard streams carry bytes as they are, in UTF-8 where they end on a screen. At the start,
// before any use.
void openStandardStreams();

}  // namespace tessaly
