#pragma once

#include <string_view>

namespace tessaly {

// Whether the connect button is offered for this address text. Four groups with dots, but read leniently: the
// third and the fourth number are read from their second character on, and a number is a decimal prefix, 0
// without digits.
[[nodiscard]] bool addressAccepted(std::string_view text);

}  // namespace tessaly
