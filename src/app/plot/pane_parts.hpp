// The parts that every plot in a pane has: frame, numbers, labels, and the place of its curve.
#pragma once

#include "app/plot/curve.hpp"
#include "app/plot/plot_frame.hpp"

namespace torve {

/// What is written along the x axis.
struct AxisNumbers {
  const char* unit = "";
  double origin = 0;  // at the y axis
  double tick = 0;    // per PlotFrame::tick_distance pixels
  bool close_ticks = false;
  int decimals = stated_digits;
};

struct PaneParts {
  int colour = 0;         // colour number of the curve and the frame
  int frame_colour = 15;  // colour number behind the frame's numbers
  int target = 0;         // screen or EPS, as in draw_line
  bool grid = true;
  bool spectrum = false;
  AxisNumbers axis = {};
  double largest = 0;  // the value that ysc 1 lets reach the full height
  double ysc = 1;
  double xsc = 1;    // pixels between points
  double shift = 0;  // the first point's distance from the y axis, pixels
  int decibels = 0;  // the range of a y axis in decibels, to which the points are scaled; 0: values
  const char* title = "";
};

/// Sets the drawing area to that of the pane whose first row is `yoff`.
void set_pane_area(int yoff);

/// Where the curve goes in the drawing area.
[[nodiscard]] CurvePlace place_of_curve(const PaneParts& parts);

/// Draws all but the curve into the drawing area; where that goes.
CurvePlace draw_pane_parts(const PaneParts& parts);

/// Writes into the title line of the drawing area, in a colour number, on the screen.
void write_title(const char* text, int colour);

}  // namespace torve
