// The points of a plot: sums over neighbouring samples, and their extremes.
#pragma once

#include <span>
#include <vector>

namespace torve {

/// S(i) = the sum of the `step` values from i on, leaving out what lies behind the last one; as
/// many as there are values. Each partial sum is rounded to float, in index order. step <= 0: all
/// sums are 0.
[[nodiscard]] std::vector<float> running_sums(std::span<const float> values, int step);

struct Extremes {
  float maximum = 0;       // largest point, at least 0
  int maximum_index = -1;  // the first point that reached it; -1 when none exceeds 0
  float largest = 0;       // largest absolute value
};

/// A point that is not a number is passed over.
[[nodiscard]] Extremes find_extremes(std::span<const float> points);

}  // namespace torve
