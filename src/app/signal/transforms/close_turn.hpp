// Sine and cosine of the true product x 3.14159 / K, closer than a double shows them.
#pragma once

#include <cstdint>

#include "app/signal/trigonometry.hpp"

namespace torve::transforms {

/// How far both parts together are from the truth at most, in length.
inline constexpr double close_turn_error = 0x1p-59;

/// product < 2^35, size < 2^18. The angle is taken from the nearest of 1024 parts of a turn, in
/// whole numbers of 2^-102, so that what is left is at most 2^-8.3; four roundings of numbers of
/// that size are 4 x 2^-62.3 a component. The parts of a turn are rounded from long double.
[[nodiscard]] SplitSineCosine close_turn(std::uint64_t product, int size);

/// The same, rounded.
[[nodiscard]] inline SineCosine rounded_turn(std::uint64_t product, int size) {
  const SplitSineCosine turn = close_turn(product, size);
  return {turn.sine, turn.cosine};
}

}  // namespace torve::transforms
