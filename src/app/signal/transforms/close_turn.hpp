// Sine and cosine of the true product x 3.14159 / K, closer than a double shows them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "app/signal/trigonometry.hpp"

namespace torve::transforms {

/// How far both parts together are from the truth at most, in length.
inline constexpr double close_turn_error = 0x1p-59;

/// product < 2^35, size < 2^18. The angle is taken from the nearest of 1024 parts of a turn, in
/// whole numbers of 2^-102 modulo 2^128, so that what is left is below 2^-8. Two roundings of
/// products of that size and one of their sum, 2^-62 each, and the parts of a turn, rounded from
/// long double, 2^-61.2 in length, come to 0.93 x 2^-59.
[[nodiscard]] SplitSineCosine close_turn(std::uint64_t product, int size);

using ChirpTurns = std::vector<SplitSineCosine>;

/// w(m) = close_turn(m^2, size) for m from 0 to count - 1 at least. They are kept for the next who
/// asks for the same size: a filter follows a spectrum.
[[nodiscard]] std::shared_ptr<const ChirpTurns> chirp_turns(int size, std::size_t count);

/// close_turn, rounded.
[[nodiscard]] inline SineCosine rounded_turn(std::uint64_t product, int size) {
  const SplitSineCosine turn = close_turn(product, size);
  return {turn.sine, turn.cosine};
}

}  // namespace torve::transforms
