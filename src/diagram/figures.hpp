// What the kinds of figures look like.
#pragma once

#include <span>
#include <vector>

#include "diagram/vobj.hpp"
#include "draw/draw_vector.hpp"

namespace torve {

/// The two corners of an arrow head.
struct ArrowHead {
  int x_right, y_right, x_left, y_left;
};

/// Head of length 10 and half-angle 0.628 rad at (x2, y2), corners truncated towards zero. Both
/// corners are the tip when the points coincide.
[[nodiscard]] ArrowHead arrow_head(int x1, int y1, int x2, int y2);

/// A segment and its part of the figure's slots.
struct FigureSegment {
  VectorSegment segment;
  std::size_t first_slot = 0;
  std::size_t slot_limit = 0;  // slots it may use at most
};

/// Where a figure stands.
struct FigurePlace {
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

/// Whether a figure at this place shows at all: one whose points coincide does not (upright kinds:
/// whose ends are level). Circles always do.
[[nodiscard]] bool shows(FigureKind kind, const FigurePlace& place);

/// The segments of a figure in the order in which they are erased; they are drawn in the opposite
/// order. Empty for labels and circles.
[[nodiscard]] std::vector<FigureSegment> figure_segments(FigureKind kind, const FigurePlace& place);

/// The points of a circle, in drawing order: a point every 0.1 rad. Points may coincide.
struct PixelPosition {
  int x, y;
};
[[nodiscard]] std::vector<PixelPosition> circle_points(const FigurePlace& place);

/// The set bits of a text in the second font whose upper left corner is the place's first point.
[[nodiscard]] std::vector<PixelPosition> label_points(const char* text, const FigurePlace& place);

}  // namespace torve
