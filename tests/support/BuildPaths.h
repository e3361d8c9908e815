#pragma once

#include <string>

namespace tessaly {

// Host paths below the sources and below the folder of the built programs; "" for the folder itself. Told to
// one file only, so that a compiler cache serves every checkout.
[[nodiscard]] std::string sourcePath(const std::string& below);
[[nodiscard]] std::string programPath(const std::string& name);

}  // namespace tessaly
