#pragma once

#include <string>

namespace tessaly {

// An address of four decimal numbers as people write it, "192.168.001.020:56662": without the zeros before
// its numbers, which the system's own calls would take for octal ones, and so for another machine. Any other
// text, and what stands behind the address, stay as they are.
[[nodiscard]] std::string decimalAddress(const std::string& address);

// Whether both name one machine, whatever port stands behind them.
[[nodiscard]] bool sameHost(const std::string& one, const std::string& other);

}  // namespace tessaly
