#include "app/plot/running_sums.hpp"

#include <algorithm>
#include <cstddef>

#include "app/signal/clones.hpp"

namespace torve {

namespace {

constexpr std::size_t lanes = 64;  // sums side by side, each in its own order

// sums[b] = values[b] + ... + values[b + count - 1]; `values` has lanes more behind them.
TORVE_CLONES void sum_lanes(const float* values, std::size_t count, float* sums) {
  float lane[lanes] = {};
  for (std::size_t k = 0; k < count; ++k) {
    for (std::size_t b = 0; b < lanes; ++b)
      lane[b] += values[k + b];
  }
  for (std::size_t b = 0; b < lanes; ++b)
    sums[b] = lane[b];
}

}  // namespace

// A float sum is what a double sum rounds to (a double has more than twice the digits), so the
// lanes add floats. Zeros behind the last value stand for the values that are left out: a sum
// that starts at +0 is the same with a zero added.
std::vector<float> running_sums(std::span<const float> values, int step) {
  const std::size_t n = values.size();
  if (step == 1) return {values.begin(), values.end()};
  std::vector<float> sums(n + lanes, 0.0F);
  if (step > 1) {
    std::vector<float> padded(n + lanes, 0.0F);
    std::copy(values.begin(), values.end(), padded.begin());
    for (std::size_t i = 0; i < n; i += lanes) {
      sum_lanes(padded.data() + i, std::min<std::size_t>(static_cast<std::size_t>(step), n - i),
                sums.data() + i);
    }
  }
  sums.resize(n);
  return sums;
}

Extremes find_extremes(std::span<const float> points) {
  Extremes found;
  float minimum = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (points[i] > found.maximum) {
      found.maximum = points[i];
      found.maximum_index = static_cast<int>(i);
    }
    if (points[i] < minimum) minimum = points[i];
  }
  found.largest = std::max(found.maximum, -minimum);
  return found;
}

}  // namespace torve
