#pragma once

#include <array>
#include <cstddef>

namespace tessaly {

// The two macro overview panes.
enum class Pane : int { kA = 0, kB = 1 };

inline constexpr std::array kPanes{Pane::kA, Pane::kB};

[[nodiscard]] constexpr std::size_t index(Pane pane) { return static_cast<std::size_t>(pane); }
[[nodiscard]] constexpr Pane other(Pane pane) { return pane == Pane::kA ? Pane::kB : Pane::kA; }

}  // namespace tessaly
