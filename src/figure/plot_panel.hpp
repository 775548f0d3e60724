// A panel with a curve: frame, ticks, titles.
#pragma once

#include <string>

#include "figure/drawing.hpp"
#include "figure/points.hpp"
#include "figure/request/figure_request.hpp"

namespace torve {

// Room beside and around a frame, points. Frames of all figures begin at the same distance from the
// left, so that those of a paper line up.
inline constexpr double room_left = 50;
inline constexpr double room_right = 16;
inline constexpr double room_above = 13;  // the input's name, the power of ten
inline constexpr double room_of_axis = 28;
inline constexpr double room_below = 4;  // without one

struct PlotPanel {
  Box frame;
  AxisRange range;       // along x
  bool has_axis = true;  // numbers and title along x
  std::string caption;
};

/// Adds the panel of an input to a drawing.
void draw_plot_panel(Drawing& drawing, const FigureInput& input, const PlotPanel& panel,
                     const SeenPoints& seen);

/// Adds the line above a panel that names it.
void draw_caption(Drawing& drawing, const Box& frame, const std::string& caption);

}  // namespace torve
