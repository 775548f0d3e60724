// What figures look like.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "diagram/model/figure_kinds.hpp"
#include "draw/draw_vector.hpp"

namespace torve {

struct PixelPosition {
  int x, y;
};

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

/// A figure's points in the order of FigurePoint.
using NamedPoints = std::array<PixelPosition, figure_point_count>;

/// A stroke of a figure with these points.
[[nodiscard]] constexpr FigureSegment resolved(const Stroke& stroke, const NamedPoints& points) {
  const auto at = [&points](FigurePoint point) { return points[static_cast<std::size_t>(point)]; };
  const auto distance = [](int a, int b) {
    const long long signed_distance = static_cast<long long>(b) - a;
    return static_cast<std::size_t>(signed_distance < 0 ? -signed_distance : signed_distance);
  };
  constexpr std::size_t bytes_per_slot = 4;
  const auto [x1, y1] = at(FigurePoint::first);
  const auto [x2, y2] = at(FigurePoint::second);
  const StrokeSlots& slots = stroke.slots;
  const std::size_t stretched = slots.widths * distance(x1, x2) + slots.heights * distance(y1, y2);
  return {{.x1 = at(stroke.from.x_of).x + stroke.from.dx,
           .y1 = at(stroke.from.y_of).y + stroke.from.dy,
           .x2 = at(stroke.to.x_of).x + stroke.to.dx,
           .y2 = at(stroke.to.y_of).y + stroke.to.dy,
           .without_first =
               stroke.ends == StrokeEnds::without_first || stroke.ends == StrokeEnds::without_both,
           .without_last =
               stroke.ends == StrokeEnds::without_last || stroke.ends == StrokeEnds::without_both},
          slots.bytes / bytes_per_slot + stretched,
          slots.budget > stretched ? slots.budget - stretched : 0};
}

/// The segments of a figure in the order in which they are erased; they are drawn in the opposite
/// order. Empty for labels and circles, and where the figure does not show.
[[nodiscard]] std::vector<FigureSegment> figure_segments(FigureKind kind, const FigurePlace& place);

/// The points of a circle, in drawing order: a point every 0.1 rad. Points may coincide.
[[nodiscard]] std::vector<PixelPosition> circle_points(const FigurePlace& place);

}  // namespace torve
