// The curve of a plot: a polyline through its points.
#pragma once

#include <span>

namespace torve {

/// Where the points go. Positions are pixels.
struct CurvePlace {
  int left, right;       // column of the first point without shift, last column drawn on
  int top, bottom;       // rows that points are kept within
  double shift;          // the first point's distance from `left`
  double spacing;        // from a point to the next
  int zero;              // row of the value 0
  double scale;          // pixels per unit of value, upwards
  double magnification;  // of a value that has been scaled
  int colour;            // colour number
  int target;            // screen or EPS, as in draw_line
};

/// The row of a point: zero - trunc(value * scale * magnification), kept within top .. bottom.
[[nodiscard]] int point_row(float value, const CurvePlace& place);

/// Draws segments from point to point until one lies right of the area, left of its left edge or
/// nowhere (a spacing below zero or one that is not a number). On the screen the segments within
/// one column are drawn as one.
void draw_curve(std::span<const float> points, const CurvePlace& place);

}  // namespace torve
