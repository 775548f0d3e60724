// Drawing a closer view into its pane.
#pragma once

#include "app/plot/view_points.hpp"

namespace torve {

/// Draws what a closer view shows into the cleared pane at row `yoff`, with true times or
/// frequencies along x. Nothing is said on standard output.
void draw_view(const PaneView& view, const ViewPoints& loaded, int yoff);

/// The row of a point of the view in its pane, and its column rounded down; pixels of the screen.
struct PointPlace {
  int column = 0, row = 0;
};
[[nodiscard]] PointPlace place_of_point(const PaneView& view, const ViewPoints& loaded, int yoff,
                                        std::size_t index);

/// The point that lies nearest to a position of the screen within its column: of the points of a
/// dense column the one whose row is nearest.
[[nodiscard]] std::size_t nearest_point(const PaneView& view, const ViewPoints& loaded, int yoff,
                                        int x, int y);

}  // namespace torve
