// A signal as whole numbers of 16 bits.
//
// A value x(i) is offset + step q(i) + r(i): q whole, of 16 bits, the step a power of two, and r a
// rest. Recordings of 16 bits less their mean are such whole numbers, and the rests are roundings;
// of any other signal the rest is half a step at most, a 65536th of the signal's reach.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace torve {

struct WholeNumbers {
  static constexpr std::size_t least_size = 16;
  /// Values between two windows whose norms are known.
  static constexpr std::size_t stride = 32;

  double step;
  double offset;
  double norm;                       // the root of the sum of squares of x, at least
  double rest;                       // that of r
  double swing;                      // step times the sum of any q in a row, the largest size
  std::vector<std::int16_t> values;  // q, then `ahead` zeros
  std::vector<double> squares;       // sums of 32 squares of x each, then zeros

  /// At least 16 values, all of them finite; `ahead` is a multiple of 32.
  WholeNumbers(std::span<const double> x, std::size_t ahead);

  /// The roots of the sums of `count` squares of x, a multiple of 32, from each 32nd on, at least.
  [[nodiscard]] std::vector<double> norms(std::size_t count) const;
};

}  // namespace torve
