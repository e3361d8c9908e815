#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// Bytes of unknown origin as UTF-8: as they are when they are valid UTF-8, else read as Windows-1252.
[[nodiscard]] std::string wireText(std::string_view bytes);

}  // namespace tessaly
