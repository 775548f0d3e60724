// Straight lines and round numbers for those who draw by hand.
#pragma once

#include "diagram/model/figure_kinds.hpp"
#include "display/input.hpp"

namespace torve {

inline constexpr int grid_step = 10;  // pixels

/// Where a press counts: with Control on the nearest point of the grid inside the diagram area.
[[nodiscard]] FigureAnchor on_grid(const PointerEvent& press);

/// The same for a piece that begins at a point: with Shift it is level, upright or at 45 degrees,
/// whichever it is nearest to, and no longer than it takes to reach the row or column of the press.
[[nodiscard]] FigureAnchor in_line(const FigureAnchor& from, const PointerEvent& press);

}  // namespace torve
