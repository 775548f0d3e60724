#include "app/signal/exact_phasor.hpp"

#include <array>
#include <cmath>
#include <numbers>

namespace torve {

namespace {

constexpr int half_places = angle_places / 2;
constexpr UnsignedWide lower_half = (UnsignedWide{1} << half_places) - 1;
constexpr UnsignedWide half_pi = two_pi / 4;
constexpr double unit = 0x1p-92;
static_assert(angle_places == 92);

// Beyond 1/26! less than a unit is left.
constexpr int last_power = 26;
constexpr auto inverse_factorials = [] {
  std::array<UnsignedWide, last_power + 1> inverse = {UnsignedWide{1} << angle_places};
  for (unsigned n = 1; n <= last_power; ++n)
    inverse[n] = inverse[n - 1] / n;
  return inverse;
}();

/// Of two numbers up to 1. What is left out: the product of the lower halves and a shifted rest.
UnsignedWide fixed_product(UnsignedWide a, UnsignedWide b) {
  const auto a1 = static_cast<std::uint64_t>(a >> half_places);
  const auto b1 = static_cast<std::uint64_t>(b >> half_places);
  const auto a0 = static_cast<std::uint64_t>(a & lower_half);
  const auto b0 = static_cast<std::uint64_t>(b & lower_half);
  return UnsignedWide{a1} * b1 + ((UnsignedWide{a1} * b0 + UnsignedWide{a0} * b1) >> half_places);
}

/// 1/first! - square / (first + 2)! + ..., down to `last`.
UnsignedWide series(UnsignedWide square, unsigned first, unsigned last) {
  UnsignedWide sum = inverse_factorials[last];
  for (unsigned n = last; n > first; n -= 2)
    sum = inverse_factorials[n - 2] - fixed_product(square, sum);
  return sum;
}

void split(UnsignedWide value, double& upper, double& rest) {
  constexpr int dropped = angle_places - fine_places;
  const UnsignedWide whole = (value + (UnsignedWide{1} << (dropped - 1))) >> dropped;
  upper = static_cast<double>(static_cast<std::uint64_t>(whole)) * 0x1p-26;
  rest = static_cast<double>(static_cast<Wide>(value - (whole << dropped))) * unit;
}

}  // namespace

Wide without_turns(std::uint64_t product, int size) {
  constexpr auto mantissa = static_cast<std::uint64_t>(short_pi * 0x1p51);  // exact
  constexpr double turns_of_one = short_pi / (2 * std::numbers::pi);
  const auto turns =
      static_cast<std::uint64_t>(std::llround(static_cast<double>(product) * turns_of_one / size));
  const UnsignedWide whole_turns = UnsignedWide{turns * static_cast<std::uint64_t>(size)} * two_pi;
  return static_cast<Wide>(((UnsignedWide{product} * mantissa) << 41) - whole_turns);
}

SplitSineCosine exact_phasor(std::int64_t product, int size) {
  const auto magnitude = static_cast<std::uint64_t>(product < 0 ? -product : product);
  const Wide angle = without_turns(magnitude, size) / size;
  const auto quarters = std::llround(static_cast<double>(angle) * (unit * 2 / std::numbers::pi));
  const Wide rest = angle - quarters * static_cast<Wide>(half_pi);
  const auto y = static_cast<UnsignedWide>(rest < 0 ? -rest : rest);
  const UnsignedWide square = fixed_product(y, y);
  SplitSineCosine at = {};
  split(fixed_product(y, series(square, 1, last_power - 1)), at.sine, at.sine_rest);
  split(series(square, 0, last_power), at.cosine, at.cosine_rest);
  if (rest < 0) {
    at.sine = -at.sine;
    at.sine_rest = -at.sine_rest;
  }
  turn_quarters(at.sine, at.cosine, static_cast<std::uint64_t>(quarters));
  turn_quarters(at.sine_rest, at.cosine_rest, static_cast<std::uint64_t>(quarters));
  if (product < 0) {
    at.sine = -at.sine;
    at.sine_rest = -at.sine_rest;
  }
  return at;
}

}  // namespace torve
