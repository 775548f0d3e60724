#include "app/plot/decibels.hpp"

#include <algorithm>
#include <cmath>

#include "app/plot/running_sums.hpp"

namespace torve {

namespace {

constexpr double last_decimal = 1e-6;  // of a power in a file
constexpr int farthest = 120;
constexpr int unit = 10;

double smallest_above_zero(std::span<const float> powers) {
  double smallest = last_decimal;
  for (const float power : powers) {
    if (power > 0) smallest = std::min(smallest, static_cast<double>(power));
  }
  return smallest;
}

}  // namespace

double decibels_below(double power, double largest) {
  return 10 * std::log10(power / largest);
}

int decibel_range(std::span<const float> powers) {
  const double largest = static_cast<double>(find_extremes(powers).maximum);
  const double depth = -decibels_below(smallest_above_zero(powers), largest);
  if (!(depth > unit)) return unit;
  return depth >= farthest ? farthest : static_cast<int>(std::ceil(depth / unit)) * unit;
}

std::vector<float> decibel_heights(std::span<const float> powers, int range) {
  const double largest = static_cast<double>(find_extremes(powers).maximum);
  std::vector<float> heights(powers.size(), 0.0F);
  for (std::size_t i = 0; i < powers.size(); ++i) {
    if (!(powers[i] > 0)) continue;
    const double height = decibels_below(static_cast<double>(powers[i]), largest) + range;
    heights[i] = static_cast<float>(std::max(0.0, height));
  }
  return heights;
}

}  // namespace torve
