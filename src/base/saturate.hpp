// Floating point to integer without undefined results: the one place where it happens.
#pragma once

#include <limits>

namespace torve {

/// Truncates towards zero; beyond the range of int the nearest end of it, NaN gives 0.
[[nodiscard]] constexpr int saturate_to_int(double value) {
  constexpr int lowest = std::numeric_limits<int>::min();
  constexpr int highest = std::numeric_limits<int>::max();
  if (value != value) return 0;
  if (value <= lowest) return lowest;
  if (value >= highest) return highest;
  return static_cast<int>(value);
}

}  // namespace torve
