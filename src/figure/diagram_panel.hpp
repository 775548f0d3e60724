// A panel with a diagram: its figures as lines, circles and texts.
#pragma once

#include <string>

#include "base/outcome.hpp"
#include "diagram/model/kept_diagram.hpp"
#include "figure/drawing.hpp"

namespace torve {

/// Reads a diagram's file (diagram_text.hpp). Nothing to draw where it shows nothing.
Outcome read_diagram_to_draw(const std::string& name, KeptDiagram* diagram);

/// What its figures cover, pixels of the canvas; texts as wide as they can become.
[[nodiscard]] Box diagram_box(const KeptDiagram& diagram);

/// Points for a pixel of the canvas: as it is on a usual screen, and the most that it is enlarged.
inline constexpr double points_a_pixel = 0.75;
inline constexpr double most_points_a_pixel = 1.5;

/// Adds a diagram to a drawing, as large as it fits into the middle of `frame`.
void draw_diagram_panel(Drawing& drawing, const KeptDiagram& diagram, const Box& frame);

}  // namespace torve
