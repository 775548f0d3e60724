// Round numbers along an axis.
#pragma once

#include <string>
#include <vector>

namespace torve {

struct Tick {
  double value = 0;
  std::string text;  // the value divided by 10^exponent
};

struct Ticks {
  std::vector<Tick> ticks;  // upwards
  int exponent = 0;
};

/// The multiples within low .. high (finite, low < high) of the smallest step out of 1, 2 and 5
/// times a power of ten with which there are at most `most` + 1 of them. The texts have as many
/// decimals as the step, and a minus sign proper.
[[nodiscard]] Ticks round_ticks(double low, double high, int most);

/// The same with 10^exponent taken out of numbers of 10,000 and more and of steps below 0.001.
[[nodiscard]] Ticks short_ticks(double low, double high, int most);

}  // namespace torve
