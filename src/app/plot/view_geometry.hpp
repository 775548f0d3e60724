// Where the points of a pane lie, and the views around a view: larger, further on, all of it.
//
// Point i of a file lies at column axis_column + (i - start) * xsc of a pane's area, pixels. All
// functions take and return values; nothing is drawn.
#pragma once

#include "app/plot/pane_view.hpp"

namespace torve {

inline constexpr int first_curve_column = 32;  // the y axis's
inline constexpr int last_curve_column = 795;

/// The column of point `index`, which need not be whole.
[[nodiscard]] double column_of(const PaneView& view, double index);

/// The point at a column, a fraction between points.
[[nodiscard]] double index_at(const PaneView& view, double column);

/// The closer view that shows what the view does. Scales that show nothing become those of the
/// whole file. `full_scale` is the value that the view was drawn to.
[[nodiscard]] PaneView closer_view(const PaneView& view, std::size_t points, double full_scale);

/// `factor` times as large in time, with the point at `column` kept in its place as far as the file
/// goes: not smaller than the whole file, nor larger than 200 pixels from point to point.
[[nodiscard]] PaneView zoomed(const PaneView& view, std::size_t points, double column,
                              double factor);

/// Moved to the right by a part of its width (below 0: to the left), within the file.
[[nodiscard]] PaneView scrolled(const PaneView& view, std::size_t points, double widths);

/// The points first .. last over the whole width.
[[nodiscard]] PaneView fitted(const PaneView& view, std::size_t points, double first, double last);

/// A view that went along when another one changed from `before` to `after`: moved by as many
/// samples, and at the same scale.
[[nodiscard]] PaneView followed(const PaneView& view, std::size_t points, const PaneView& before,
                                const PaneView& after);

/// Values `factor` times as high, within 1e-6 .. 1e6 of the full scale.
[[nodiscard]] PaneView values_zoomed(const PaneView& view, double factor);

}  // namespace torve
