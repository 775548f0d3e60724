// The curve of a pane that holds any number of points.
#pragma once

#include <span>

#include "app/plot/curve.hpp"

namespace torve {

/// The smallest and the largest of some values; 0 when there is none but what is no number.
struct ValueRange {
  float smallest = 0, largest = 0;
};
[[nodiscard]] ValueRange value_range(std::span<const float> values);

/// Draws the part of a curve that lies in the area, on the screen: point i at column
/// left + shift + i * spacing, `spacing` above 0. Each column of a dense curve shows its smallest
/// and its largest point; segments that leave the area are cut at its edges.
void draw_dense_curve(std::span<const float> points, const CurvePlace& place);

}  // namespace torve
