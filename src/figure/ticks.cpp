#include "figure/ticks.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace torve {

namespace {

struct Step {
  int digit = 1;  // 1, 2 or 5
  int power = 0;  // of ten
  [[nodiscard]] double size() const { return digit * std::pow(10.0, power); }
};

Step step_for(double range, int most) {
  const double least = range / most;
  constexpr double nudge = 1e-9;  // relative: a step that fits but for rounding fits
  Step step = {.power = static_cast<int>(std::floor(std::log10(least)))};
  for (const int digit : {1, 2, 5}) {
    step.digit = digit;
    if (step.size() >= least * (1 - nudge)) return step;
  }
  return {.power = step.power + 1};
}

// `count` steps as a text in units of 10^exponent.
std::string text_of(std::int64_t count, const Step& step, int exponent) {
  const int decimals = std::max(0, exponent - step.power);
  const double value =
      static_cast<double>(std::abs(count) * step.digit) * std::pow(10.0, step.power - exponent);
  std::array<char, 400> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::fixed, decimals)
                       .ptr;
  std::string text = count < 0 ? "\u2212" : "";
  return text.append(digits.data(), end);
}

Ticks ticks_of(double low, double high, const Step& step, int exponent) {
  constexpr double nudge = 1e-9;  // of a step
  const double size = step.size();
  const auto first = static_cast<std::int64_t>(std::ceil(low / size - nudge));
  const auto last = static_cast<std::int64_t>(std::floor(high / size + nudge));
  Ticks ticks = {.ticks = {}, .exponent = exponent};
  for (std::int64_t i = first; i <= last; ++i)
    ticks.ticks.push_back({static_cast<double>(i) * size, text_of(i, step, exponent)});
  return ticks;
}

}  // namespace

Ticks round_ticks(double low, double high, int most) {
  return ticks_of(low, high, step_for(high - low, most), 0);
}

Ticks short_ticks(double low, double high, int most) {
  constexpr double least_long = 1e4;
  constexpr int least_power = -3;
  const Step step = step_for(high - low, most);
  const double largest = std::max(std::fabs(low), std::fabs(high));
  const bool is_short = largest < least_long && step.power >= least_power;
  const int exponent = is_short ? 0 : static_cast<int>(std::floor(std::log10(largest)));
  return ticks_of(low, high, step, exponent);
}

}  // namespace torve
