// Sine and cosine of the true product x 3.14159 / K, closer than a double shows them.
#pragma once

#include <cstdint>

#include "app/signal/trigonometry.hpp"

namespace torve::transforms {

/// How far both parts together are from the truth at most, in length.
inline constexpr double close_turn_error = 0x1p-59;

/// product < 2^35, size < 2^18. The angle is taken from the nearest of 1024 parts of a turn, in
/// whole numbers of 2^-102 modulo 2^128, so that what is left is below 2^-8. Two roundings of
/// products of that size and one of their sum, 2^-62 each, and the parts of a turn, rounded from
/// long double, 2^-61.2 in length, come to 0.93 x 2^-59.
[[nodiscard]] SplitSineCosine close_turn(std::uint64_t product, int size);

/// The same, rounded.
[[nodiscard]] inline SineCosine rounded_turn(std::uint64_t product, int size) {
  const SplitSineCosine turn = close_turn(product, size);
  return {turn.sine, turn.cosine};
}

}  // namespace torve::transforms
